#pragma once

#include <string>

/// Prints the files that a document depends on, one a line, on standard output. A name that no line
/// holds is refused.
void PrintFiles(const std::string& path);

/// Writes them, the document first, as a rule for Make and Ninja that remakes `target`. A name that
/// no rule holds is refused before anything is written.
void WriteDependencyFile(const std::string& path, const std::string& out,
                         const std::string& target);
