#include <BiffLib/CData.h>

#include <algorithm>
#include <array>
#include <bit>
#include <ostream>

namespace Biff {

namespace {

constexpr std::size_t kBatchBytes = 4096;
static_assert(kBatchBytes >= CData::kMaxElementSize);

bool DiffersFromHost(std::uint32_t endian) {
    return (endian == kBigEndian) != (std::endian::native == std::endian::big);
}

// Writes one run with each element reversed as one unit; `from` is the first byte of the run.
void WriteReversed(std::ostream& stream, const std::uint8_t* from, const CData::Run& run) {
    std::array<char, kBatchBytes> batch;
    const std::size_t size = run.elementSize;
    const std::size_t perBatch = size == 0 ? 0 : kBatchBytes / size;
    std::size_t left = perBatch == 0 ? 0 : run.count;
    while (left != 0) {
        const std::size_t elements = std::min(left, perBatch);
        char* to = batch.data();
        for (std::size_t i = 0; i < elements; ++i, from += size, to += size)
            std::reverse_copy(from, from + size, to);
        stream.write(batch.data(), static_cast<std::streamsize>(elements * size));
        left -= elements;
    }
}

}  // namespace

void CData::Write(std::ostream& stream, std::uint32_t endian) {
    if (bytes.empty()) return;
    if (!DiffersFromHost(endian)) {
        stream.write(reinterpret_cast<const char*>(bytes.data()),
                     static_cast<std::streamsize>(bytes.size()));
        return;
    }
    const std::uint8_t* from = bytes.data();
    for (const Run& run : runs) {
        WriteReversed(stream, from, run);
        from += std::size_t{run.elementSize} * run.count;
    }
}

std::uint32_t CData::SizeAt(std::uint32_t) const {
    return static_cast<std::uint32_t>(bytes.size());
}

}  // namespace Biff
