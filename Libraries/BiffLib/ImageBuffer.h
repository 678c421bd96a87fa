#pragma once

#include <cstddef>
#include <streambuf>
#include <vector>

namespace Biff {

/// A file's bytes in memory, from the position `start` of the file on. Positions and seeks cost
/// nothing here, and the finished image goes out in one piece, so that a pipe takes it as well as a
/// disk.
class ImageBuffer final : public std::streambuf {
  public:
    ImageBuffer(off_type startPosition, std::size_t expectedSize) : start(startPosition) {
        image.reserve(expectedSize);
    }

    const std::vector<char>& Image() const { return image; }

  protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

  private:
    const off_type start;
    std::vector<char> image;
    std::size_t at = 0;
};

}  // namespace Biff
