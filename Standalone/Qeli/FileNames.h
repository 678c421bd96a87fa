#pragma once

#include <cstddef>
#include <string>
#include <vector>

class VokWorld;

/// The files that the loaded document `typedPath` depends on, each once, as a program opens them
/// that runs where this one does: relative to the working directory when the document's own path
/// is, absolute when that is absolute. The document itself is not among them.
/// Throws a DocumentFailure where their names come to more than `mostBytes`.
std::vector<std::string> DependedFiles(const VokWorld& world, const std::string& typedPath,
                                       std::size_t mostBytes);

/// Makes `newPath` the name of the document that was loaded from `oldPath` and rewrites its
/// relative file names so that they lead to the same files from there. In the same folder every
/// name stays as it is. Returns the characters by which the names became longer, and throws a
/// GrowthBeyondLimit when they are more than `mostAdded`. Throws a VokException for a name that
/// cannot be rewritten, a DocumentFailure where `newPath` has no full name.
std::size_t MoveDocument(VokWorld& world, const std::string& oldPath, const std::string& newPath,
                         std::size_t mostAdded);
