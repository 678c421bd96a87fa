#include "Update/VersionChain.h"

#include <VokLib/Tree/VokWorld.h>

#include <QelTools/Exception.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct Version {
    std::string_view name;
    bool onlyAdds;  // to the version before it
};

constexpr Version kVersions[] = {
    {"1_0_3", false}, {"1_0_4", false}, {"1_0_5", false}, {"1_0_7", false}, {"1_2_0", false},
    {"1_2_1", true},  {"1_4_0", true},  {"1_5_0", false}, {"1_5_3", false}, {"1_8_0", true},
    {"1_8_2", false}, {"1_9_0", false}, {"1_10_0", true}, {"1_14_1", true}, {"1_15_0", false},
    {"1_16_0", true}, {"1_17_0", true}, {"1_20_0", true}, {"1_20_3", true}, {"1_22_0", true},
    {"1_22_1", true}, {"1_22_2", true}, {"1_22_4", true}, {"1_22_5", true}, {"1_23_0", true},
    {"1_23_1", true}, {"1_24_1", true}, {"1_27_1", true}, {"1_27_2", true}, {"1_27_3", true},
    {"1_28_1", true},
};

std::string DocumentUri(std::string_view version, std::string_view document) {
    return std::string(QelNamespaceRoot) + "/qeli/" + std::string(version) + "/" +
           std::string(document);
}

}  // namespace

bool VersionChain::IsSupersetOnly(const std::string& version) {
    const std::string_view oldest = kVersions[0].name;
    const std::string wanted = version.empty() ? DocumentUri(oldest, "qeli") : version;
    const auto found = std::find_if(
        std::begin(kVersions), std::end(kVersions),
        [&wanted](const Version& entry) { return DocumentUri(entry.name, "qeli") == wanted; });
    // The search for a version that nobody knows ends at the oldest one, which no older one leads
    // to.
    if (found == std::end(kVersions))
        QelTools::Common::ThrowException(
            "File \"" + DocumentUri(oldest, "update.xml") +
            "\" required by update process is not compiled into VokLib. This probably means that "
            "you are running an old version of a tool on a more recent .qeli file.");
    return std::all_of(std::next(found), std::end(kVersions),
                       [](const Version& later) { return later.onlyAdds; });
}
