#pragma once

#include <signal.h>
#include <unistd.h>

/// A pipe from which nobody ever reads. It breaks with the object.
class UnreadPipe {
  public:
    UnreadPipe() {
        signal(SIGPIPE, SIG_IGN);
        if (pipe(ends) != 0) _exit(1);
    }
    UnreadPipe(const UnreadPipe&) = delete;
    UnreadPipe& operator=(const UnreadPipe&) = delete;
    ~UnreadPipe() {
        close(ends[0]);
        close(ends[1]);
    }

    int WriteEnd() const { return ends[1]; }

  private:
    int ends[2];
};
