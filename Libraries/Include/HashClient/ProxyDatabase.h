#pragma once

#include <optional>
#include <string>
#include <vector>

/// The full name of the file in which the registry remembers strings: QEL_HASH_DATABASE, else one
/// in the user's data folder; nothing where there is no such folder. A proxy that is up already may
/// have another.
std::optional<std::string> ProxyDatabaseFile();

/// It, and the files that its library keeps beside it: where it is a link, beside the link and
/// beside what that leads to, for systems differ.
std::vector<std::string> ProxyDatabaseFiles();
