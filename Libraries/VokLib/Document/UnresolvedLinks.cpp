#include "Document/UnresolvedLinks.h"

#include <VokLib/Document/VokParseFailure.h>
#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Links/VokUnresolvedLinks.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

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
                          VokParseFailure& failure) {
    VokObjLinkStore& store = VokObjLinkStore::Get();
    VokUnresolvedLinks failed;
    const auto note = [&failed](const VokObjLink& link) { failed.Add(link); };
    if (store.ResolveLinks(&world, note, false) == 0) return;
    const std::size_t count = failed.Count();
    if (!HasLooseLinks(outdatedVersion)) {
        std::vector<std::string> links;
        failed.VisitTexts(VokParseFailure::kMostLinks,
                          [&links](const std::string& text) { links.push_back(text); });
        // Together, for memory can end in between.
        failure.unresolvedLinks = std::move(links);
        failure.unresolvedCount = count;
        ThrowVokException("Unresolved VokObjLinks");
    }

    const std::string rule(65, '-');
    std::cerr << rule << '\n'
              << "Warning: The automatic update process found links within the file\n"
              << "         that would be invalid in a newer, stricter qeli version.\n"
              << "         These links have been removed.\n"
              << rule << '\n';
    const std::size_t shown = failed.VisitTexts(
        count, [](const std::string& text) { std::cerr << "Unresolved link: " << text << '\n'; });
    if (count > shown) std::cerr << "Unresolved link: and " << count - shown << " more\n";
    store.RemoveUnresolved();
}
