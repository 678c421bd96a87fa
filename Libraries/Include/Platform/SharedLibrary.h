#pragma once

#include <string>

namespace Platform {

/// The address of a function in a shared library, which is loaded now if it was not before and
/// stays for the rest of the run. Throws a std::runtime_error with the system's words when there is
/// no such library or function, std::bad_alloc where the system says that it lacked memory.
void* FunctionOfLibrary(const std::string& library, const std::string& function);

}  // namespace Platform
