#include <Platform/SharedLibrary.h>

#include <dlfcn.h>

#include <stdexcept>

namespace Platform {

void* FunctionOfLibrary(const std::string& library, const std::string& function) {
    void* const handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const address = handle != nullptr ? dlsym(handle, function.c_str()) : nullptr;
    if (address == nullptr) throw std::runtime_error(dlerror());
    return address;
}

}  // namespace Platform
