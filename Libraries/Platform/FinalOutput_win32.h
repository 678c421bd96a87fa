#pragma once

#include <windows.h>

namespace Platform {

/// What standard output leads to in the end: its own handle, or while a capture stands between, the
/// one that the capture keeps.
HANDLE FinalOutput();

/// What the capture keeps; null when it ends.
void SetFinalOutput(HANDLE handle);

/// True where what is printed, to standard output in the end or to standard error, goes into this
/// file.
bool IsPrintedInto(HANDLE file);

}  // namespace Platform
