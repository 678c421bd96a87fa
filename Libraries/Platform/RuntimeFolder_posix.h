#pragma once

#include <Platform/MessagePipe.h>

#include <sys/un.h>

#include <cstdint>
#include <string>

namespace Platform {

/// A file descriptor of ours, closed when it goes out of use.
class OwnedDescriptor {
  public:
    OwnedDescriptor() = default;
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() { Reset(); }

    int Get() const { return value; }
    int Release();
    void Reset(int descriptor = -1);

  private:
    int value = -1;
};

/// Opens the folder in which the user's pipes stand. With `create` a missing one is made for the
/// user alone. 0 or the system's error number.
std::uint32_t OpenRuntimeFolder(const PipeAddress& address, bool create, OwnedDescriptor& folder);

/// The address of a socket in an open folder. It is short however long the folder's path is.
sockaddr_un SocketAddress(const OwnedDescriptor& folder, const std::string& name);

}  // namespace Platform
