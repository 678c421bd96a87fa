#pragma once

#include <VokLib/Document/VokElement.h>

#include <cstddef>
#include <string>
#include <vector>

/// What a shape changes: lists of vertices and how each moves.
class VokBlendTarget : public VokElement<VokBlendTarget, VokObj> {
  public:
    static constexpr std::string_view kElementName = "blendtarget";
    static std::span<const VokChildElement<VokBlendTarget>> ChildElements();

    struct Diff {
        std::string name;
        std::vector<unsigned> indices;
        std::vector<float> deltas;
    };

    std::size_t GetDiffCount() const { return diffs.size(); }
    /// Throws "Diff index out of range", and "No diffs" when there are none.
    const Diff& GetDiff(std::size_t index) const;
    Diff& AddDiff() { return diffs.emplace_back(); }

  private:
    static void WriteDiffs(const VokBlendTarget& target, VokFile& file, std::string_view name);

    std::vector<Diff> diffs;
    long long claimedCount = 0;  // of the list that is being read
};
