#pragma once

#include <Platform/Paths.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Document.h"
#include "Support/RunProgram.h"
#include "Support/TemporaryFolder.h"

/// A fresh folder in which programs run.
class RunFolder : public TemporaryFolder {
  public:
    std::filesystem::path GetPath() const { return Platform::ToPath(Path()); }

    /// Runs a program in this folder, as ProgramCall tells. What a run of rigbake bakes is checked.
    ProgramResult Run(const std::string& program, const std::vector<std::string>& arguments,
                      const std::map<std::string, std::string>& environment = {},
                      const std::string& redirections = {}) const;
    ProgramResult Rigbake(const std::vector<std::string>& arguments) const {
        return Run("rigbake", arguments);
    }
};

/// A document of one joint "root" in its hierarchy.
std::string OneJointDocument();

/// Replaces the source position at the end of a report line by "<PLACE>", for its line number moves
/// with the code.
std::string MaskPlaces(std::string text);
/// Takes off the first line, which names the program's path.
std::string WithoutBanner(const std::string& text);
