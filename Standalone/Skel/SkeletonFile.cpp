#include "SkeletonFile.h"

#include <Platform/ErrorText.h>
#include <Platform/Folders.h>
#include <Platform/OpenForReading.h>
#include <Platform/Paths.h>
#include <Platform/ReadBytes.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>

namespace {

constexpr std::size_t kMagicBytes = 4;
constexpr std::size_t kBlockBytes = std::size_t{1} << 16;
/// A file that is broken in more of its tables is not mended line by line.
constexpr std::size_t kMostFaultsShown = 256;

constexpr std::size_t kTooLong = std::size_t{SKELETON_LONGEST_FILE_} + 1;

using File = Platform::OpenedFile;

[[noreturn]] void FailToRead(const std::string& path, int error) {
    throw SkeletonFileFault(path + ": error: The file cannot be read" +
                            (error != 0 ? ": " + Platform::ErrorText(error) : std::string()));
}

File Open(const std::string& path) {
    if (Platform::IsFolder(path)) FailToRead(path, EISDIR);
    errno = 0;
    File file = Platform::OpenForReading(path);
    if (!file) FailToRead(path, errno);
    return file;
}

/// Tells a length that no skeleton file has before it is read; what has no length, such as a pipe,
/// may go on for ever.
std::size_t ExpectedSize(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(Platform::ToPath(path), error);
    return error ? 0 : static_cast<std::size_t>(std::min<std::uintmax_t>(size, kTooLong));
}

std::string FaultLines(const std::string& path, std::span<const skeleton_fault> faults,
                       std::size_t count) {
    std::string lines;
    for (const skeleton_fault& fault : faults) {
        if (!lines.empty()) lines += '\n';
        lines += path + ": " + OffsetText(fault.offset) + ": " + fault.text;
    }
    if (count > faults.size())
        lines += "\n" + path + ": and " + std::to_string(count - faults.size()) + " more";
    return lines;
}

}  // namespace

SkeletonFile SkeletonFile::Load(const std::string& path) {
    try {
        return {path, Read(path)};
    } catch (const std::bad_alloc&) {
        FailToRead(path, ENOMEM);
    }
}

/// What is no skeleton file by its magic or its length is not read further.
SkeletonFile::Image SkeletonFile::Read(const std::string& path) {
    const File file = Open(path);
    Image image;
    image.MakeRoom(kMagicBytes);
    errno = 0;
    image.size = Platform::ReadBytes(file.get(), image.Bytes(), kMagicBytes);
    const bool isSkeleton =
        image.size == kMagicBytes && std::memcmp(image.Bytes(), "SK08", kMagicBytes) == 0;
    const std::size_t expected = ExpectedSize(path);
    if (isSkeleton && expected == kTooLong)
        throw SkeletonFileFault(path + ": " + OffsetText(SKELETON_LONGEST_FILE_) +
                                ": the file is longer than its offsets reach");
    std::size_t room = std::max(expected + 1, kBlockBytes);
    while (isSkeleton && image.size < kTooLong) {
        image.MakeRoom(room);
        image.size +=
            Platform::ReadBytes(file.get(), image.Bytes() + image.size, room - image.size);
        if (image.size < room) break;
        room = std::min(2 * room, kTooLong);
    }
    if (std::ferror(file.get()) != 0) FailToRead(path, errno);
    return image;
}

SkeletonFile::Image SkeletonFile::Copy(std::span<const char> bytes) {
    Image image;
    image.MakeRoom(bytes.size());
    image.size = bytes.size();
    std::copy(bytes.begin(), bytes.end(), image.Bytes());
    return image;
}

SkeletonFile::SkeletonFile(const std::string& path, std::span<const char> bytes)
    : SkeletonFile(path, Copy(bytes)) {}

SkeletonFile::SkeletonFile(const std::string& path, Image bytes) : image(std::move(bytes)) {
    std::vector<skeleton_fault> faults(kMostFaultsShown);
    const std::size_t count =
        skeleton_find_faults(image.Bytes(), image.size, faults.data(), faults.size());
    faults.resize(std::min(count, faults.size()));
    if (count != 0) throw SkeletonFileFault(FaultLines(path, faults, count));
    const bool isReversed = skeleton_is_reversed(image.Bytes(), image.size) != 0;
    isBigEndian = isReversed == (std::endian::native == std::endian::little);
    if (isReversed) skeleton_swap(image.Bytes(), image.size, nullptr);
}

bool LooksLikeSkeleton(const std::string& path) {
    const File file = Open(path);
    char magic[kMagicBytes];
    errno = 0;
    const std::size_t size = Platform::ReadBytes(file.get(), magic, kMagicBytes);
    if (std::ferror(file.get()) != 0) FailToRead(path, errno);
    return size == kMagicBytes && std::memcmp(magic, "SK08", kMagicBytes) == 0;
}

std::string OffsetText(std::size_t offset) {
    char place[24];
    std::snprintf(place, sizeof place, "0x%04lX", static_cast<unsigned long>(offset));
    return place;
}
