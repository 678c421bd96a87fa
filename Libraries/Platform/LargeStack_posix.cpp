#include <Platform/LargeStack.h>

#include "Thread_posix.h"

#include <cerrno>
#include <exception>
#include <new>
#include <system_error>

namespace Platform {

void RunOnLargeStack(std::size_t stackBytes, const std::function<void()>& action) {
    std::exception_ptr failure;
    Thread thread;
    const int error = thread.Start(stackBytes, [&] {
        try {
            action();
        } catch (...) {
            failure = std::current_exception();
        }
    });
    if (error == ENOMEM) throw std::bad_alloc();
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "A thread cannot be started");
    thread.Join();
    if (failure) std::rethrow_exception(failure);
}

}  // namespace Platform
