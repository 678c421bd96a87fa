#pragma once

/// Whether the machine has a timer, a mutex or a pipe that takes a client under this name.
bool TimerIsThere(const char* name);
bool MutexIsThere(const char* name);
bool PipeIsThere(const char* name);
