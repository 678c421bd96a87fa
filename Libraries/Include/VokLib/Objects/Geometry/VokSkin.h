#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>
#include <VokLib/Tree/VokBulk.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

/// How a mesh follows its joints: for each vertex a row of influences with their weights.
class VokSkin : public VokElement<VokSkin, VokObj> {
  public:
    static constexpr std::string_view kElementName = "skin";
    static std::span<const VokChildElement<VokSkin>> ChildElements();
    static std::span<const VokAttributeRow<VokSkin>> AttributeRows();

    struct Influence {
        VokObjLinkHandle target;
        std::optional<VokMatrix> bindInverse;
    };
    /// The index of an influence and its weight.
    using Weight = std::pair<int, float>;

    std::size_t GetInfluenceCount() const { return influences.size(); }
    /// Throws "Influence index out of range".
    Influence& GetInfluence(std::size_t index);
    const Influence& GetInfluence(std::size_t index) const;
    Influence& AddInfluence();

    std::size_t GetRowCount() const;
    /// `index` must be below GetRowCount().
    std::span<const Weight> GetRow(std::size_t index) const;
    void AddRow(std::span<const Weight> row);

    std::string type;
    std::optional<VokBulk<unsigned>>
        components;  ///< the vertices that the rows belong to, if not all in order

  private:
    static void BeginWeights(VokSkin& skin, VokParse& parse);
    static void PassWeights(VokSkin& skin, VokParse& parse);
    static void ReadWeights(VokSkin& skin, VokParse& parse);
    static void WriteInfluences(const VokSkin& skin, VokFile& file, std::string_view name);
    static void WriteWeights(const VokSkin& skin, VokFile& file, std::string_view name);

    std::vector<Influence> influences;
    VokBulk<Weight> weights{this};     // all rows back to back
    std::vector<std::size_t> rowEnds;  // where each row ends in `weights`
    std::vector<Weight> rowBuffer;     // while rows are read
    long long claimedCount = 0;        // of the element that is being read
};
