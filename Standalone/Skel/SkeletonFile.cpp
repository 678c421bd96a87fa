#include "SkeletonFile.h"

#include <Platform/ErrorText.h>
#include <Platform/Folders.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

constexpr std::size_t kMagicBytes = 4;
constexpr std::size_t kBlockBytes = std::size_t{1} << 16;
/// Header, joints, transforms, hashes, levels of detail, procedural data and its items: the tables
/// of any file that a person looks at.
constexpr std::size_t kMostFaultsShown = 64;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void FailToRead(const std::string& path, int error) {
    throw SkeletonFileFault(path + ": error: The file cannot be read" +
                            (error != 0 ? ": " + Platform::ErrorText(error) : std::string()));
}

File Open(const std::string& path) {
    if (Platform::IsFolder(path)) FailToRead(path, EISDIR);
    errno = 0;
    File file(std::fopen(path.c_str(), "rb"));
    if (!file) FailToRead(path, errno);
    return file;
}

/// What is no skeleton file by its magic is not read further, be it endless.
std::vector<char> ReadFile(const std::string& path) {
    const File file = Open(path);
    std::vector<char> bytes(kMagicBytes);
    errno = 0;
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    const bool isSkeleton =
        bytes.size() == kMagicBytes && std::memcmp(bytes.data(), "SK08", 4) == 0;
    while (isSkeleton && bytes.size() <= SKELETON_LONGEST_FILE_) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kBlockBytes);
        const std::size_t read = std::fread(bytes.data() + size, 1, kBlockBytes, file.get());
        bytes.resize(size + read);
        if (read < kBlockBytes) break;
    }
    if (std::ferror(file.get()) != 0) FailToRead(path, errno);
    return bytes;
}

std::string FaultLines(const std::string& path, std::span<const skeleton_fault> faults,
                       std::size_t count) {
    std::string lines;
    for (const skeleton_fault& fault : faults) {
        char place[24];
        std::snprintf(place, sizeof place, "0x%04lX", static_cast<unsigned long>(fault.offset));
        if (!lines.empty()) lines += '\n';
        lines += path + ": " + place + ": " + fault.text;
    }
    if (count > faults.size())
        lines += "\n" + path + ": and " + std::to_string(count - faults.size()) + " more";
    return lines;
}

}  // namespace

SkeletonFile SkeletonFile::Load(const std::string& path) {
    return {path, ReadFile(path)};
}

SkeletonFile::SkeletonFile(const std::string& path, std::span<const char> bytes)
    : image(bytes.size() / sizeof(Line) + 1), size(bytes.size()) {
    std::vector<skeleton_fault> faults(kMostFaultsShown);
    const std::size_t count =
        skeleton_find_faults(bytes.data(), size, faults.data(), faults.size());
    faults.resize(std::min(count, faults.size()));
    if (count != 0) throw SkeletonFileFault(FaultLines(path, faults, count));
    std::memcpy(image.data(), bytes.data(), size);
    const bool isReversed = skeleton_is_reversed(image.data(), size) != 0;
    isBigEndian = isReversed == (std::endian::native == std::endian::little);
    if (isReversed) skeleton_swap(image.data(), size, nullptr);
}

bool LooksLikeSkeleton(const std::string& path) {
    const File file = Platform::IsFolder(path) ? File() : File(std::fopen(path.c_str(), "rb"));
    char magic[kMagicBytes];
    return file && std::fread(magic, 1, kMagicBytes, file.get()) == kMagicBytes &&
           std::memcmp(magic, "SK08", kMagicBytes) == 0;
}
