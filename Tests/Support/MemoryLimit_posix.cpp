#include "Support/MemoryLimit.h"

#include <sys/resource.h>

void LimitMemory(std::size_t megabytes) {
    rlimit limit{};
    if (megabytes == 0 || getrlimit(RLIMIT_DATA, &limit) != 0) return;
    const rlim_t wanted = static_cast<rlim_t>(megabytes) * 1024 * 1024;
    if (limit.rlim_cur != RLIM_INFINITY && limit.rlim_cur <= wanted) return;
    limit.rlim_cur = wanted;
    setrlimit(RLIMIT_DATA, &limit);
}
