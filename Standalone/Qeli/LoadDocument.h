#pragma once

#include <VokLib/Document/VokDocumentVersion.h>

#include <string>

class VokWorld;

/// Reads the document at `path` into a new world, old versions included, and tells its version.
/// Throws a DocumentFailure that names `shownPath`, the place and the object.
VokDocumentVersion LoadDocument(VokWorld& world, const std::string& path,
                                const std::string& shownPath);
inline VokDocumentVersion LoadDocument(VokWorld& world, const std::string& path) {
    return LoadDocument(world, path, path);
}
