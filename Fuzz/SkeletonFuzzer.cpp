// A skeleton file of any origin is refused, or can be walked without a check, shown whole and
// turned into the other byte order and back.

#include "Dump.h"
#include "Runtime/WalkSkeleton.h"

#include <cstdlib>
#include <cstring>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (skeleton_find_faults(data, size, nullptr, 0) != 0) return 0;
    const std::span bytes(reinterpret_cast<const char*>(data), size);
    const SkeletonFile file("fuzz.bin", bytes);
    if (skeleton_verify(&file.Header(), size, nullptr) == 0) std::abort();
    WalkSkeleton(file.Header());
    const Description::Skeleton skeleton = Description::Describe(file, Names());
    std::ostringstream text;
    DumpText(skeleton, text);
    DumpJson(skeleton).dump();

    std::string turned(bytes.begin(), bytes.end());
    for (int i = 0; i < 2; ++i)
        if (skeleton_swap(turned.data(), size, nullptr) == 0) std::abort();
    if (std::memcmp(turned.data(), data, size) != 0) std::abort();
    return 0;
}
