#pragma once

namespace Platform {

/// The descriptor that standard output leads to in the end: its own, or while a capture stands
/// between, the one that the capture keeps.
int FinalOutput();

/// What the capture keeps; STDOUT_FILENO when it ends.
void SetFinalOutput(int descriptor);

/// Whether what the program prints, on standard output or standard error, goes into the very file
/// that `descriptor` leads to.
bool IsPrintedInto(int descriptor);

}  // namespace Platform
