#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>
#include <VokLib/Tree/VokBulk.h>

/// The lists of a progressive mesh, carried as they stand.
class VokPmDataQEL : public VokElement<VokPmDataQEL, VokObj> {
  public:
    static constexpr std::string_view kElementName = "pmdataQEL";
    static std::span<const VokChildElement<VokPmDataQEL>> ChildElements();
    static std::span<const VokAttributeRow<VokPmDataQEL>> AttributeRows();

    void ParseData(VokParse& parse) override;

    VokObjLinkHandle target{this};
    VokBulk<int> vs{this};
    VokBulk<int> vt{this};
    VokBulk<int> faces{this};
    VokBulk<float> costs{this};
    VokBulk<int> splits{this};
    VokBulk<int> fixFaces{this};

    long long claimedCount = 0;  ///< of the list that is being read
};
