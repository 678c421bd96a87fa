#pragma once

#include "Registry.h"

#include <Platform/MessagePipeServer.h>

#include <functional>

/// Answers the clients of `server` until none was connected for `idleMilliseconds`. A client whose
/// request is malformed, or cannot be answered, is disconnected; the reason goes to `report`.
void Serve(Platform::MessagePipeServer& server, Registry& registry, int idleMilliseconds,
           const std::function<void(const std::string&)>& report);
