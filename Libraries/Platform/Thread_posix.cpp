#include "Thread_posix.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace Platform {

namespace {

using Action = std::function<void()>;

void* Run(void* user) {
    const std::unique_ptr<Action> action(static_cast<Action*>(user));
    (*action)();
    return nullptr;
}

/// A whole number of pages, and enough for a thread at all.
std::size_t AllowedSize(std::size_t stackBytes) {
    constexpr std::size_t kLeast = 256u << 10;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return (std::max(stackBytes, kLeast) + page - 1) / page * page;
}

/// Room for a stack, and for what the library puts beside it.
bool IsRoomFor(std::size_t stackBytes) {
    const std::size_t size = stackBytes + (64u << 10);
    void* const room =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    return room != MAP_FAILED && munmap(room, size) == 0;
}

}  // namespace

int Thread::Start(std::size_t stackBytes, std::function<void()> action) {
    auto owned = std::make_unique<Action>(std::move(action));
    const std::size_t size = AllowedSize(stackBytes);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    int error = pthread_attr_setstacksize(&attributes, size);
    if (error == 0) error = pthread_create(&thread, &attributes, Run, owned.get());
    pthread_attr_destroy(&attributes);
    if (error == EAGAIN && !IsRoomFor(size)) return ENOMEM;
    if (error == 0) static_cast<void>(owned.release());
    return error;
}

}  // namespace Platform
