#pragma once

#include "Support/TemporaryFolder.h"

#include <Platform/Paths.h>

#include <filesystem>
#include <stdexcept>

/// Makes a folder whose name is longer than the system tells the working directory of the process
/// while it lives.
class DeepWorkingFolder {
  public:
    DeepWorkingFolder() {
        std::string name;
        for (int i = 0; i < 84; ++i) name += "\xE9\xAA\xA8";  // fewer letters than bytes
        std::filesystem::current_path(Platform::ToPath(folder.Path()));
        for (int level = 0; Platform::CurrentDirectory(); ++level) {
            if (level == 100) throw std::logic_error("every working directory can be told here");
            std::filesystem::create_directory(Platform::ToPath(name));
            std::filesystem::current_path(Platform::ToPath(name));
        }
    }
    DeepWorkingFolder(const DeepWorkingFolder&) = delete;
    DeepWorkingFolder& operator=(const DeepWorkingFolder&) = delete;
    ~DeepWorkingFolder() { std::filesystem::current_path(before); }

  private:
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
};
