#include <Platform/BlockSize.h>

#include <malloc.h>

namespace Platform {

std::size_t BlockSize(void* block) {
    return malloc_usable_size(block);
}

}  // namespace Platform
