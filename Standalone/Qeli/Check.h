#pragma once

#include <string>
#include <vector>

/// Loads each document and says on standard output that it is fine, its version and what that
/// takes, or on standard error what is wrong with it. Returns whether all are fine.
bool Check(const std::vector<std::string>& paths);
