#include "Support/MemoryLimit.h"

// There is no such limit for a process that already runs outside a job.
void LimitMemory(std::size_t) {}
