#include "LimitedBuffer.h"

#include "Growth.h"

LimitedBuffer::int_type LimitedBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

std::streamsize LimitedBuffer::xsputn(const char* text, std::streamsize size) {
    if (static_cast<std::size_t>(size) > left) throw GrowthBeyondLimit();
    left -= static_cast<std::size_t>(size);
    return target.sputn(text, size);
}
