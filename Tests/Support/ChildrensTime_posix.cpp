#include "Support/ChildrensTime_posix.h"

#include <sys/resource.h>

double ChildrensTime() {
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    return static_cast<double>(used.ru_utime.tv_sec) +
           static_cast<double>(used.ru_utime.tv_usec) * 1e-6;
}
