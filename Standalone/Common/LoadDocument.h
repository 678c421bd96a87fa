#pragma once

#include <VokLib/Document/VokDocumentVersion.h>

#include <cstddef>
#include <string>

class VokWorld;

struct LoadedDocument {
    VokDocumentVersion version;
    std::size_t bytes;  ///< of the document, in its current version
};

/// Reads the document at `path` into a new world, old versions included. Throws a DocumentFailure
/// that names `shownPath`, the place and the object.
LoadedDocument LoadDocument(VokWorld& world, const std::string& path, const std::string& shownPath);
inline LoadedDocument LoadDocument(VokWorld& world, const std::string& path) {
    return LoadDocument(world, path, path);
}
