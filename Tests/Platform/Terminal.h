#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <unistd.h>

/// A terminal of so many columns with nobody in front of it.
class Terminal {
  public:
    explicit Terminal(unsigned short columns) : controller(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (grantpt(controller) != 0 || unlockpt(controller) != 0) return;
        descriptor = open(ptsname(controller), O_RDWR | O_NOCTTY);
        winsize size{};
        size.ws_col = columns;
        ioctl(descriptor, TIOCSWINSZ, &size);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        close(descriptor);
        close(controller);
    }

    /// Why a test that needs a terminal is skipped where the system gives none, as in a build root
    /// without /dev/pts.
    static constexpr const char* kNone = "this machine gives no terminal";

    /// Below 0 when the system gave none.
    int Descriptor() const { return descriptor; }

  private:
    int controller;
    int descriptor = -1;
};
