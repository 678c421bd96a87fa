#include "ImageBuffer.h"

#include <algorithm>

namespace Biff {

ImageBuffer::int_type ImageBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    const char byte = traits_type::to_char_type(character);
    xsputn(&byte, 1);
    return character;
}

std::streamsize ImageBuffer::xsputn(const char* text, std::streamsize size) {
    const auto length = static_cast<std::size_t>(size);
    const std::size_t over = std::min(length, image.size() - at);
    std::copy_n(text, over, image.begin() + static_cast<std::ptrdiff_t>(at));
    image.insert(image.end(), text + over, text + length);
    at += length;
    return size;
}

ImageBuffer::pos_type ImageBuffer::seekoff(off_type offset, std::ios_base::seekdir direction,
                                           std::ios_base::openmode which) {
    if (direction == std::ios_base::cur) offset += start + static_cast<off_type>(at);
    if (direction == std::ios_base::end) offset += start + static_cast<off_type>(image.size());
    return seekpos(pos_type(offset), which);
}

ImageBuffer::pos_type ImageBuffer::seekpos(pos_type position, std::ios_base::openmode) {
    const off_type offset = off_type(position) - start;
    if (offset < 0 || offset > static_cast<off_type>(image.size())) return pos_type(off_type(-1));
    at = static_cast<std::size_t>(offset);
    return position;
}

}  // namespace Biff
