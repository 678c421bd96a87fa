#pragma once

#include <unistd.h>

#include <utility>

namespace Platform {

/// A descriptor of ours, closed when it goes out of use.
class OwnedDescriptor {
  public:
    OwnedDescriptor() = default;
    explicit OwnedDescriptor(int descriptor) : value(descriptor) {}
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() { Reset(); }

    int Get() const { return value; }
    int Release() { return std::exchange(value, -1); }
    void Reset(int descriptor = -1) {
        if (value >= 0) close(value);
        value = descriptor;
    }

  private:
    int value = -1;
};

}  // namespace Platform
