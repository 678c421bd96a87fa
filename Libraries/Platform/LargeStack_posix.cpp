#include <Platform/LargeStack.h>

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <system_error>

namespace Platform {

namespace {

struct Job {
    const std::function<void()>& action;
    std::exception_ptr failure;
};

void* Run(void* user) {
    Job& job = *static_cast<Job*>(user);
    try {
        job.action();
    } catch (...) {
        job.failure = std::current_exception();
    }
    return nullptr;
}

/// A whole number of pages, and enough for a thread at all.
std::size_t AllowedSize(std::size_t stackBytes) {
    constexpr std::size_t kLeast = 1u << 20;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return ((stackBytes < kLeast ? kLeast : stackBytes) + page - 1) / page * page;
}

}  // namespace

void RunOnLargeStack(std::size_t stackBytes, const std::function<void()>& action) {
    Job job{action, nullptr};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    int error = pthread_attr_setstacksize(&attributes, AllowedSize(stackBytes));
    pthread_t thread{};
    if (error == 0) error = pthread_create(&thread, &attributes, Run, &job);
    pthread_attr_destroy(&attributes);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "A thread cannot be started");
    pthread_join(thread, nullptr);
    if (job.failure) std::rethrow_exception(job.failure);
}

}  // namespace Platform
