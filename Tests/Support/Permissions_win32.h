#pragma once

#include <string>

/// Who may do what with a file or folder, in the words of the system's security descriptors.
void SetPermissions(const std::string& path, const char* words);

/// The same of a file, in the system's own words; empty when it does not tell.
std::string PermissionsOf(const std::string& path);
