#pragma once

#include <VoktFramework/Saving/VoktBinaryFilename.h>

#include <string>

/// Binary files are known by their leaf name, whatever folder they stand in.
class VoktBinaryFilenameQEL : public VoktBinaryFilename {
  public:
    ~VoktBinaryFilenameQEL() noexcept(false) override;

    /// `out` becomes what follows the last '/', then what follows the last '\\'; it stays as it is
    /// when `path` has no separator.
    void ToBinaryFilename(std::string& out, const std::string& path) override;
};
