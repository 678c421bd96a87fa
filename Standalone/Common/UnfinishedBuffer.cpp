#include "UnfinishedBuffer.h"

namespace {

constexpr int kBlockBytes = 1 << 16;

}  // namespace

UnfinishedBuffer::UnfinishedBuffer(Platform::UnfinishedFile& receiver)
    : file(receiver), block(std::make_unique_for_overwrite<char[]>(kBlockBytes)) {
    setp(block.get(), block.get() + kBlockBytes);
}

UnfinishedBuffer::int_type UnfinishedBuffer::overflow(int_type character) {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(character);
        pbump(1);
    }
    return traits_type::not_eof(character);
}

int UnfinishedBuffer::sync() {
    if (error == 0) error = file.Write(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(block.get(), block.get() + kBlockBytes);
    return error == 0 ? 0 : -1;
}
