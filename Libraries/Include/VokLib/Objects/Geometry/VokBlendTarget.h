#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Tree/VokBulk.h>

#include <cstddef>
#include <string>
#include <vector>

/// What a shape changes: lists of vertices and how each moves.
class VokBlendTarget : public VokElement<VokBlendTarget, VokObj> {
  public:
    static constexpr std::string_view kElementName = "blendtarget";
    static std::span<const VokChildElement<VokBlendTarget>> ChildElements();

    struct Diff {
        explicit Diff(const VokObj* owner) : indices(owner), deltas(owner) {}
        std::string name;
        VokBulk<unsigned> indices;
        VokBulk<float> deltas;
    };

    std::size_t GetDiffCount() const { return diffs.size(); }
    /// Throws "Diff index out of range", and "No diffs" when there are none.
    const Diff& GetDiff(std::size_t index) const;
    Diff& AddDiff() { return diffs.emplace_back(this); }

  private:
    static void WriteDiffs(const VokBlendTarget& target, VokFile& file, std::string_view name);

    std::vector<Diff> diffs;
    long long claimedCount = 0;  // of the list that is being read
};
