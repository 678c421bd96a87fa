#pragma once

#include <VokLib/Document/VokElement.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// The times at which the sampled channel above has a corner or a step, in document order.
class VokAnimDiscontinuities : public VokElement<VokAnimDiscontinuities, VokObj> {
  public:
    static constexpr std::string_view kElementName = "animDiscontinuities";
    static std::span<const VokChildElement<VokAnimDiscontinuities>> ChildElements();
    static std::span<const VokAttributeRow<VokAnimDiscontinuities>> AttributeRows();

    enum class Kind : std::uint32_t { Corner = 0, Step = 1, Unset = 2 };

    struct Discontinuity {
        Kind kind;
        float time;  ///< seconds
        std::span<const float>
            before;  ///< GetComponentCount() floats; zeros unless a step gives them
        std::span<const float> after;
    };

    void ParseStartTag(VokParse& parse) override;

    std::size_t GetCount() const { return entries.size(); }
    /// A view that holds until an entry is added or the component count changes. `index` must be
    /// below GetCount().
    Discontinuity GetDiscontinuity(std::size_t index) const;
    /// The values of entry `index`, for changing them.
    std::span<float> GetBefore(std::size_t index) { return Slice(2 * index); }
    std::span<float> GetAfter(std::size_t index) { return Slice(2 * index + 1); }
    /// Appends an entry whose values are zeros; one that stays Unset is not written.
    void Add(Kind kind = Kind::Unset, float time = 0);
    /// Of entry `index`.
    void SetTime(std::size_t index, float time) { entries[index].time = time; }

    /// Floats per value.
    unsigned GetComponentCount() const { return componentCount; }
    /// Keeps the leading floats of every value and fills new ones with zeros. A count of 0 throws
    /// "AnimationDiscontinuities component count must be non-zero.".
    void SetComponentCount(unsigned count);

  private:
    struct Entry {
        Kind kind;
        float time;
    };
    std::span<float> Slice(std::size_t index) {
        return std::span(pool).subspan(index * componentCount, componentCount);
    }
    std::span<const float> Slice(std::size_t index) const {
        return std::span(pool).subspan(index * componentCount, componentCount);
    }
    template <Kind EntryKind>
    static void ReadEntry(VokAnimDiscontinuities& discontinuities, VokParse& parse);
    template <std::size_t Side>
    static void ReadSlice(VokAnimDiscontinuities& discontinuities, VokParse& parse);
    static void WriteEntries(const VokAnimDiscontinuities& discontinuities, VokFile& file,
                             std::string_view name);

    std::vector<Entry> entries;
    std::vector<float> pool;  // before and after of entry i are slices 2i and 2i + 1
    unsigned componentCount = 1;
};
