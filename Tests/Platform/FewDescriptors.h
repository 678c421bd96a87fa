#pragma once

#include <sys/resource.h>
#include <unistd.h>

/// Lets this process open only so many descriptors more while it lives.
class FewDescriptors {
  public:
    explicit FewDescriptors(int more) {
        getrlimit(RLIMIT_NOFILE, &before);
        const int lowestFree = dup(STDIN_FILENO);
        close(lowestFree);
        rlimit few = before;
        few.rlim_cur = static_cast<rlim_t>(lowestFree + more);
        setrlimit(RLIMIT_NOFILE, &few);
    }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;
    ~FewDescriptors() { setrlimit(RLIMIT_NOFILE, &before); }

  private:
    rlimit before{};
};
