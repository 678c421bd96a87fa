#pragma once

#include <stdlib.h>

#include <string>

/// Names another folder for temporary files while it lives.
class TemporaryFolderName {
  public:
    explicit TemporaryFolderName(const std::string& folder) {
        const char* const value = getenv("TMPDIR");
        wasSet = value != nullptr;
        if (wasSet) before = value;
        setenv("TMPDIR", folder.c_str(), 1);
    }
    TemporaryFolderName(const TemporaryFolderName&) = delete;
    TemporaryFolderName& operator=(const TemporaryFolderName&) = delete;
    ~TemporaryFolderName() {
        if (wasSet)
            setenv("TMPDIR", before.c_str(), 1);
        else
            unsetenv("TMPDIR");
    }

  private:
    bool wasSet = false;
    std::string before;
};
