#include <Platform/BlockSize.h>

#include <malloc.h>

namespace Platform {

std::size_t BlockSize(void* block) {
    return _msize(block);
}

}  // namespace Platform
