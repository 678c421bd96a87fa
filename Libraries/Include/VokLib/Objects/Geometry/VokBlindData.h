#pragma once

#include <QelTools/KeyedHash.h>
#include <VokLib/Document/VokElement.h>
#include <VokLib/Tree/VokBulk.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// What a column of blind data holds.
enum class BlindDataType : std::uint32_t { Invalid, Bool, Int, Enum, Float };

/// One column of a table of blind data: a value for each row.
class BlindDataBase {
  public:
    BlindDataBase(std::string columnName, BlindDataType columnType, const VokObj* table);
    virtual ~BlindDataBase();

    const std::string& GetName() const { return name; }
    BlindDataType GetType() const { return type; }
    virtual std::size_t GetCount() const = 0;

    /// A column of another kind throws "Attempt to set int blind data on non-int array" and the
    /// like. An index past the end makes the column longer.
    virtual void SetInt(std::size_t index, int value);
    virtual void SetFloat(std::size_t index, float value);
    virtual void SetBool(std::size_t index, bool value);

    /// Reads `count` values from the element's text.
    virtual void Read(VokParse& parse, long long count) = 0;
    virtual void WriteValues(VokFile& file) const = 0;

  protected:
    const VokObj* owner;

  private:
    std::string name;
    BlindDataType type;
};

/// The values of a column: int (which holds enumerations, too), float or bool.
template <class T>
class BlindData : public BlindDataBase {
  public:
    using BlindDataBase::BlindDataBase;
    std::size_t GetCount() const override { return values.Get().size(); }
    void SetInt(std::size_t index, int value) override;
    void SetFloat(std::size_t index, float value) override;
    void SetBool(std::size_t index, bool value) override;
    void Read(VokParse& parse, long long count) override;
    void WriteValues(VokFile& file) const override;

    VokBulk<T> values{owner};
};

/// A typed table that is attached to the polygons, edges or vertices of a mesh, which makes and
/// owns it.
class VokBlindData : public VokElement<VokBlindData, VokObj> {
  public:
    static constexpr std::string_view kElementName = "blindData";
    static std::span<const VokChildElement<VokBlindData>> ChildElements();
    static std::span<const VokAttributeRow<VokBlindData>> AttributeRows();

    enum class Component : std::uint32_t { Invalid, Poly, Edge, Vert };

    /// Throws "Attempt to write invalid blind data" when a column has another length than the
    /// table.
    void WriteContents(VokFile& file) const override;

    /// A new column. A name in use with another type throws "Attempt to re-use blind data name with
    /// different type"; a type that no column can have throws "Unknown blind data type".
    BlindDataBase& AddColumn(const std::string& columnName, BlindDataType type);
    std::size_t GetColumnCount() const { return columns.size(); }
    /// `index` must be below GetColumnCount().
    BlindDataBase& GetColumn(std::size_t index) const { return *columns[index]; }
    /// The column as one of `T`; throws "Blind data type mismatch".
    template <class T>
    BlindData<T>& GetColumnOf(std::size_t index) const;

    Component component = Component::Invalid;
    unsigned numComponents = 0;
    bool namesComponents = false;  ///< the rows belong to `components` and not to all in order
    VokBulk<int> components{this};

  private:
    std::vector<std::unique_ptr<BlindDataBase>> columns;
    // Of the names in use; never walked.
    std::unordered_map<std::string, BlindDataType, QelTools::Common::KeyedHash> columnTypes;
};
