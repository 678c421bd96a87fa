#pragma once

#include <string>
#include <vector>

/// A source file: its path from the repository's root, with forward slashes, and its text.
struct SourceFile {
    std::string path;
    std::string text;
};

/// Every C++ source and header of the checkout, in order of path.
std::vector<SourceFile> ReadCheckout(const std::string& root);

/// What a file does against the rules of the house, one line of text for each fault, with the
/// file's path in front: includes of libraries above its own, operating system headers and platform
/// conditionals where they do not belong, hash tables that a document can make slow, more lines
/// than a reader can hold.
std::vector<std::string> FaultsOf(const SourceFile& file);
