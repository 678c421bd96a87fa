#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <vector>

/// The lists of a progressive mesh, carried as they stand.
class VokPmDataQEL : public VokElement<VokPmDataQEL, VokObj> {
  public:
    static constexpr std::string_view kElementName = "pmdataQEL";
    static std::span<const VokChildElement<VokPmDataQEL>> ChildElements();
    static std::span<const VokAttributeRow<VokPmDataQEL>> AttributeRows();

    void ParseData(VokParse& parse) override;

    VokObjLinkHandle target{this};
    std::vector<int> vs;
    std::vector<int> vt;
    std::vector<int> faces;
    std::vector<float> costs;
    std::vector<int> splits;
    std::vector<int> fixFaces;

    long long claimedCount = 0;  ///< of the list that is being read
};
