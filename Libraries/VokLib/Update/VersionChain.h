#pragma once

#include <string>

/// The versions of the format, from the first to the current one.
namespace VersionChain {

/// True when every version behind that of the namespace `version` only added to the format, so that
/// its documents can be read as they stand. An empty version is the oldest, from before versioning.
/// A namespace that names no version of the chain throws a QelTools Exception.
bool IsSupersetOnly(const std::string& version);

}  // namespace VersionChain
