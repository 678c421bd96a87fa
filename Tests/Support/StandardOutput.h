#pragma once

#include "Support/Descriptors.h"

#include <cstdio>
#include <iostream>

/// Makes another descriptor standard output while it lives. The descriptor stays the caller's.
class StandardOutput {
  public:
    explicit StandardOutput(int descriptor) : saved(Duplicate(kDescriptor)) {
        Flush();
        Duplicate(descriptor, kDescriptor);
    }
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;
    ~StandardOutput() {
        Flush();
        Duplicate(saved, kDescriptor);
        CloseDescriptor(saved);
        std::clearerr(stdout);
        std::cout.clear();
    }

    static constexpr int kDescriptor = 1;

  private:
    static void Flush() {
        std::cout.flush();
        std::fflush(stdout);
    }

    int saved;
};
