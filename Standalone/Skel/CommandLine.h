#pragma once

/// Runs the program and gives its exit status. Throws what the commands throw.
int RunCommandLine(int argc, const char* const* argv);
