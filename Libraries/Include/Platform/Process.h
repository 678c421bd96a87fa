#pragma once

#include <string>
#include <vector>

/// Programs started by name, searched for on PATH when the name holds no separator. No shell takes
/// part: every argument reaches the program as it stands. Children start with default signal
/// actions and none of this process's descriptors beside the standard streams.
namespace Platform {

/// A program's name and its arguments.
using Command = std::vector<std::string>;

/// Starts a program that lives on by itself, in a session of its own, with the null device on its
/// standard streams and this process's environment and folder. 0 when it was started, else the
/// system's error number: ENOENT at once when there is no such program.
[[nodiscard]] int StartDetached(const Command& command);

/// The first thing in a program that StartDetached starts: leaves the console that it shares with
/// whoever started it, so that what is typed there, or the end of the console, ends it no more.
/// Nothing in a process that was started otherwise, and where StartDetached did all that.
void LeaveStartersConsole();

/// Runs the commands side by side, the standard output of each going to the standard input of the
/// next, with the null device at both ends, and waits for all of them. True when the last one ended
/// with status 0; false also when one of them could not be started.
[[nodiscard]] bool RunPipeline(const std::vector<Command>& commands);

}  // namespace Platform
