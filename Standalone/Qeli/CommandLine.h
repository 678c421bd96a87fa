#pragma once

/// Parses the command line and runs its command. Returns the exit status: 0 for success, 1 for a
/// document that cannot be read or written, 2 for wrong usage. The scene library must be up.
int RunCommandLine(int argc, const char* const* argv);
