#include "Document/UnresolvedLinks.h"

#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <iostream>
#include <set>

namespace {

/// The versions whose exporters did not check links.
bool HasLooseLinks(const std::string& version) {
    static constexpr const char* kVersions[] = {"1_0_3", "1_0_4", "1_0_5",
                                                "1_0_7", "1_2_0", "1_2_1"};
    return std::any_of(std::begin(kVersions), std::end(kVersions), [&](const char* number) {
        return version == std::string(QelNamespaceRoot) + "/qeli/" + number + "/qeli";
    });
}

}  // namespace

void ResolveDocumentLinks(VokWorld& world, const std::string& outdatedVersion,
                          std::vector<std::string>& unresolved) {
    VokObjLinkStore& store = VokObjLinkStore::Get();
    std::set<std::string> failed;
    if (store.ResolveLinks(&world, &failed, false) == 0) return;
    if (!HasLooseLinks(outdatedVersion)) {
        unresolved.assign(failed.begin(), failed.end());
        ThrowVokException("Unresolved VokObjLinks");
    }

    const std::string rule(65, '-');
    std::cerr << rule << '\n'
              << "Warning: The automatic update process found links within the file\n"
              << "         that would be invalid in a newer, stricter qeli version.\n"
              << "         These links have been removed.\n"
              << rule << '\n';
    for (const std::string& link : failed) std::cerr << "Unresolved link: " << link << '\n';
    store.RemoveUnresolved();
}
