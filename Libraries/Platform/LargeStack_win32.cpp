#include <Platform/LargeStack.h>

#include "ErrorNumber_win32.h"

#include <float.h>
#include <windows.h>

#include <cerrno>
#include <exception>
#include <new>
#include <system_error>

namespace Platform {

namespace {

struct Job {
    const std::function<void()>& action;
    std::exception_ptr failure;
};

// This system starts a thread with less precision in its long numbers than the language's library
// starts the first one; which thread calculates must make no difference.
DWORD WINAPI Run(void* user) {
    _fpreset();
    Job& job = *static_cast<Job*>(user);
    try {
        job.action();
    } catch (...) {
        job.failure = std::current_exception();
    }
    return 0;
}

}  // namespace

void RunOnLargeStack(std::size_t stackBytes, const std::function<void()>& action) {
    Job job{action, nullptr};
    const HANDLE thread =
        CreateThread(nullptr, stackBytes, Run, &job, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) {
        if (LastErrorNumber() == ENOMEM) throw std::bad_alloc();
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                                "A thread cannot be started");
    }
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    if (job.failure) std::rethrow_exception(job.failure);
}

}  // namespace Platform
