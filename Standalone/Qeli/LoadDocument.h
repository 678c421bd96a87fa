#pragma once

#include <string>

class VokWorld;

/// Reads the document at `path` into a new world, old versions included. Throws a DocumentFailure
/// that names `shownPath`, the place and the object.
void LoadDocument(VokWorld& world, const std::string& path, const std::string& shownPath);
inline void LoadDocument(VokWorld& world, const std::string& path) {
    LoadDocument(world, path, path);
}
