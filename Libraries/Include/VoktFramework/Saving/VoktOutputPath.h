#pragma once

#include <string>

class VoktUniverse;

/// An output name as it was typed, with backslashes turned into the separator of a system that
/// knows only one.
std::string OutputSystemPath(std::string path);

/// The name under which the output `path` is opened: absolute, with forward slashes, relative names
/// counting from the folder that the run was started in (the atom "VoktTool_cwd"). Backslashes
/// separate folders as slashes do. The folder that the file stands in is made. Throws a
/// QelTools::Common::Exception when the path cannot be made absolute or the folder cannot be made.
std::string MakeOutputPath(const std::string& path, const VoktUniverse& universe);

/// Makes `folder` with all missing parents; one that exists is fine. Throws a
/// QelTools::Common::Exception where a regular file has the name or the system refuses.
void CreateFolder(const std::string& folder);
