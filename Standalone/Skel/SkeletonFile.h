#pragma once

#include <skeleton/skeleton.h>

#include <exception>
#include <span>
#include <string>
#include <vector>

/// A skeleton file that cannot be used. The text is complete, with its place:
///
///     rig.bin: 0x01A4: joints[7].parent is 9, not below 7
class SkeletonFileFault : public std::exception {
  public:
    explicit SkeletonFileFault(std::string words) : text(std::move(words)) {}
    const char* what() const noexcept override { return text.c_str(); }

  private:
    std::string text;
};

/// A sound skeleton file in memory, in this machine's byte order whatever its own is.
class SkeletonFile {
  public:
    /// Throws a SkeletonFileFault for a file that cannot be read, memory included, or that is not
    /// sound: a line for the first fault of each of its tables.
    static SkeletonFile Load(const std::string& path);
    /// The same for bytes that stand for the file of this name.
    SkeletonFile(const std::string& path, std::span<const char> bytes);

    const skeleton_header& Header() const {
        return *reinterpret_cast<const skeleton_header*>(image.lines.data());
    }
    /// In this machine's byte order.
    std::span<const char> Bytes() const { return {image.Bytes(), image.size}; }
    bool IsBigEndian() const { return isBigEndian; }
    std::size_t Size() const { return image.size; }

  private:
    struct alignas(16) Line {
        char bytes[16];
    };
    struct Image {
        std::vector<Line> lines;
        std::size_t size = 0;  ///< in bytes

        // The first of all lines' bytes, not of one line's alone.
        char* Bytes() { return reinterpret_cast<char*>(lines.data()); }
        const char* Bytes() const { return reinterpret_cast<const char*>(lines.data()); }
        void MakeRoom(std::size_t bytes) { lines.resize(bytes / sizeof(Line) + 1); }
    };

    SkeletonFile(const std::string& path, Image bytes);
    static Image Read(const std::string& path);
    static Image Copy(std::span<const char> bytes);

    Image image;
    bool isBigEndian = false;
};

/// True for a file that starts like a skeleton file, sound or not. What cannot be read throws a
/// SkeletonFileFault.
bool LooksLikeSkeleton(const std::string& path);

/// "0x01A4": a place in a file.
std::string OffsetText(std::size_t offset);
