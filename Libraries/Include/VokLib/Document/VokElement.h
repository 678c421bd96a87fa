#pragma once

#include <VokLib/Document/VokParse.h>
#include <VokLib/Text/VokAttributes.h>
#include <VokLib/Text/VokFile.h>
#include <VokLib/Tree/VokObj.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// One child element of a type's vocabulary. The rows of a type stand in the order in which they
/// are written.
template <class Type>
struct VokChildElement {
    std::string_view name;
    /// Reads the attributes of the start tag; may be null.
    void (*start)(Type&, VokParse&) = nullptr;
    /// Reads the text; may be null for an empty element.
    void (*data)(Type&, VokParse&) = nullptr;
    /// Writes the whole element `name`, if it is to be written; null where another row's writer
    /// does it.
    void (*write)(const Type&, VokFile&, std::string_view name) = nullptr;
    /// The row inside which alone this one is known; empty: directly inside the object's own
    /// element.
    std::string_view within = {};
    /// The end of the element; may be null.
    void (*end)(Type&, VokParse&) = nullptr;
    /// The text holds contents (VokBulk) and is only counted where contents are left out.
    bool isBulk = false;

    VokTypeId id = MakeTypeId(name);
};

/// One attribute of a type's own start tag, behind those of its base.
template <class Type>
struct VokAttributeRow {
    void (*read)(Type&, const VokAttributes&) = nullptr;
    void (*write)(const Type&, VokAttributes&) = nullptr;
};

/// The one mechanism of the element types. `Type` derives from `VokElement<Type, Base>` and states
///
///     static constexpr std::string_view kElementName = "locator";
///     static std::span<const VokChildElement<Type>> ChildElements();
///     static std::span<const VokAttributeRow<Type>> AttributeRows();
///
/// as far as it has elements and attributes of its own.
///
/// A tag is looked up only at the type's own depth 0; anything else goes to the base, and when the
/// base made no object of it, everything nested in it does too, until it ends. Each level of a
/// chain of types keeps a depth of its own.
template <class Type, class Base>
class VokElement : public Base {
  public:
    static constexpr VokTypeId TypeId() { return MakeTypeId(Type::kElementName); }

    VokElement() { this->SetTypeId(TypeId()); }

    std::string_view GetElementName() const override { return Type::kElementName; }
    bool IsA(VokTypeId type) const override { return type == TypeId() || Base::IsA(type); }

    void ParseAttributes(VokParse& parse) override {
        Base::ParseAttributes(parse);
        for (const auto& row : Type::AttributeRows())
            if (row.read != nullptr) row.read(Self(), parse.GetAttributes());
    }

    void ParseStartTag(VokParse& parse) override {
        if (parseDepth <= 0) {
            const int row = FindRow(parse.GetTag(), parse.GetTagId());
            if (row != kNone) {
                const std::int16_t outer = parseChild;
                parseChild = static_cast<std::int16_t>(row);
                if (Rows()[Index(row)].isBulk && !parse.KeepsContents()) parse.CountText();
                if (Rows()[Index(row)].start != nullptr) Rows()[Index(row)].start(Self(), parse);
                // An object that took the element over gets its end, too.
                if (parse.GetNewObject() != nullptr) parseChild = outer;
                return;
            }
        }
        Base::ParseStartTag(parse);
        if (parse.GetNewObject() == nullptr) ++parseDepth;
    }

    void ParseData(VokParse& parse) override {
        if (parseDepth != 0)
            Base::ParseData(parse);
        else if (parseChild != kNone && Rows()[Index(parseChild)].data != nullptr)
            Rows()[Index(parseChild)].data(Self(), parse);
    }

    void ParseEndTag(VokParse& parse) override {
        if (parseDepth != 0) {
            Base::ParseEndTag(parse);
            --parseDepth;
        } else if (parseChild != kNone) {
            const VokChildElement<Type>& row = Rows()[Index(parseChild)];
            if (row.end != nullptr) row.end(Self(), parse);
            parseChild = static_cast<std::int16_t>(FindOuterRow(row));
        }
    }

    void WriteAttributes(VokAttributes& attributes) const override {
        Base::WriteAttributes(attributes);
        for (const auto& row : Type::AttributeRows())
            if (row.write != nullptr) row.write(Self(), attributes);
    }

    void WriteContents(VokFile& file) const override {
        for (const VokChildElement<Type>& row : Rows())
            if (row.write != nullptr) row.write(Self(), file, row.name);
        Base::WriteContents(file);
    }

    static std::span<const VokAttributeRow<Type>> AttributeRows() { return {}; }
    static std::span<const VokChildElement<Type>> ChildElements() { return {}; }

  protected:
    /// The name of the child element that is open at this level; empty for none.
    std::string_view OpenChild() const {
        return parseChild == kNone ? std::string_view() : Rows()[Index(parseChild)].name;
    }
    int ParseDepth() const { return parseDepth; }

  private:
    static constexpr int kNone = -1;
    static constexpr std::size_t Index(int row) { return static_cast<std::size_t>(row); }
    static std::span<const VokChildElement<Type>> Rows() { return Type::ChildElements(); }
    Type& Self() { return static_cast<Type&>(*this); }
    const Type& Self() const { return static_cast<const Type&>(*this); }

    int FindRow(std::string_view tag, VokTypeId id) const {
        const auto rows = Rows();
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (rows[i].id == id && rows[i].name == tag &&
                (rows[i].within.empty() || rows[i].within == OpenChild()))
                return static_cast<int>(i);
        return kNone;
    }

    static int FindOuterRow(const VokChildElement<Type>& row) {
        const auto rows = Rows();
        for (std::size_t i = 0; !row.within.empty() && i < rows.size(); ++i)
            if (rows[i].name == row.within) return static_cast<int>(i);
        return kNone;
    }

    std::int16_t parseChild = kNone;
    int parseDepth = 0;
};
