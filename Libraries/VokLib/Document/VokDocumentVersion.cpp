#include <VokLib/Document/VokDocumentVersion.h>

#include <VokLib/Tree/VokWorld.h>

#include "Document/ParseCallbacks.h"

std::string VokDocumentVersion::GetNumber() const {
    const std::string start = std::string(QelNamespaceRoot) + "/qeli/";
    constexpr std::string_view kEnd = "/qeli";
    const bool isOurs =
        name.size() > start.size() + kEnd.size() && name.starts_with(start) && name.ends_with(kEnd);
    return isOurs ? name.substr(start.size(), name.size() - start.size() - kEnd.size()) : name;
}

const VokDocumentVersion& GetDocumentVersion(const VokParse& reader) {
    return VokParseCallbacks::VersionOf(reader);
}
