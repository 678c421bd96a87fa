#pragma once

#include <optional>
#include <string>

/// Adds a line to the debug log of the hash library, in the form "program(process,time): text".
/// Does nothing unless QEL_HASH_PROXY_DEBUG_MODE was set at the first call; "file:" and a name
/// there let the lines go to that file, which the processes of a build share. A line is cut at 511
/// characters.
[[gnu::format(printf, 1, 2)]] void ProxyLog(const char* format, ...);

/// Makes this the first call, for a process that then leaves its working directory: the file's name
/// may be relative.
void PrepareProxyLog();

/// The full name of the file to which the lines go; nothing when they go to none.
const std::optional<std::string>& ProxyLogFile();
