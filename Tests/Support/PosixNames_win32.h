#pragma once

#include <cstdlib>

/// Tests set variables of the environment in the words of POSIX; included in front of every test
/// where the system has none of them. An empty value takes a variable away here.
inline int setenv(const char* name, const char* value, int) {
    return _putenv_s(name, value);
}

inline int unsetenv(const char* name) {
    return _putenv_s(name, "");
}
