#pragma once

#include <unistd.h>

#include <cstdio>
#include <iostream>

/// Makes another descriptor standard output while it lives. The descriptor stays the caller's.
class StandardOutput {
  public:
    explicit StandardOutput(int descriptor) {
        Flush();
        saved = dup(STDOUT_FILENO);
        dup2(descriptor, STDOUT_FILENO);
    }
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;
    ~StandardOutput() {
        Flush();
        dup2(saved, STDOUT_FILENO);
        close(saved);
        std::clearerr(stdout);
        std::cout.clear();
    }

  private:
    static void Flush() {
        std::cout.flush();
        std::fflush(stdout);
    }

    int saved = -1;
};
