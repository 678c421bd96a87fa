#include <Platform/SharedLibrary.h>

#include <dlfcn.h>

#include <new>
#include <stdexcept>

namespace Platform {

void* FunctionOfLibrary(const std::string& library, const std::string& function) {
    void* const handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const address = handle != nullptr ? dlsym(handle, function.c_str()) : nullptr;
    if (address != nullptr) return address;
    std::string words = dlerror();
    if (words.ends_with("cannot map zero-fill pages")) throw std::bad_alloc();
    // The loader keeps the reason to itself.
    if (words.ends_with("failed to map segment from shared object"))
        words += ", for lack of memory or because nothing may be run from that disk";
    throw std::runtime_error(words);
}

}  // namespace Platform
