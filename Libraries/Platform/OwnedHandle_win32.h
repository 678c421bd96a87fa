#pragma once

#include <windows.h>

#include <utility>

namespace Platform {

/// A handle of ours, closed when it goes out of use.
class OwnedHandle {
  public:
    OwnedHandle() = default;
    explicit OwnedHandle(HANDLE handle) : value(handle) {}
    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;
    ~OwnedHandle() { Reset(); }

    HANDLE Get() const { return value; }
    bool IsValid() const { return value != nullptr && value != INVALID_HANDLE_VALUE; }
    HANDLE Release() { return std::exchange(value, nullptr); }
    void Reset(HANDLE handle = nullptr) {
        if (IsValid()) CloseHandle(value);
        value = handle;
    }

  private:
    HANDLE value = nullptr;
};

}  // namespace Platform
