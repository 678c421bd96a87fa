#pragma once

#include <Platform/MessagePipe.h>

#include "OwnedDescriptor_posix.h"

#include <sys/un.h>

#include <cstdint>
#include <string>

namespace Platform {

/// Opens the folder in which the user's pipes stand. With `create` a missing one is made for the
/// user alone. 0 or the system's error number.
std::uint32_t OpenRuntimeFolder(const PipeAddress& address, bool create, OwnedDescriptor& folder);

/// The address of a socket in an open folder. It is short however long the folder's path is.
sockaddr_un SocketAddress(const OwnedDescriptor& folder, const std::string& name);

}  // namespace Platform
