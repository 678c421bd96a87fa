#include <Platform/SharedLibrary.h>

#include <Platform/ErrorText.h>
#include <windows.h>

#include <cerrno>
#include <stdexcept>

namespace Platform {

void* FunctionOfLibrary(const std::string& library, const std::string& function) {
    const HMODULE handle = LoadLibraryA(library.c_str());
    const FARPROC address = handle != nullptr ? GetProcAddress(handle, function.c_str()) : nullptr;
    if (address == nullptr) throw std::runtime_error(library + ": " + ErrorText(ENOENT));
    return reinterpret_cast<void*>(address);
}

}  // namespace Platform
