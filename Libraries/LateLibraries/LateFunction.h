#pragma once

#include <Platform/SharedLibrary.h>

/// Where the function that a header declares as `declared` was found; null before that.
template <auto declared>
inline decltype(declared) lateFunction = nullptr;

/// Throws a std::runtime_error with the system's words when `library` or its function `name` is not
/// there.
template <auto declared>
void FindLateFunction(const char* library, const char* name) {
    lateFunction<declared> =
        reinterpret_cast<decltype(declared)>(Platform::FunctionOfLibrary(library, name));
}
