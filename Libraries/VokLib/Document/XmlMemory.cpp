#include "Document/XmlMemory.h"

#include <Platform/BlockSize.h>

#include <libxml/xmlmemory.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>

namespace {

/// What libxml2 and libxslt get when there is no more memory, so that they come to where somebody
/// asks: the latter does not look whether it got any. It costs nothing as long as nobody touches
/// it.
constexpr std::size_t kReserveBytes = 16u << 20;
constexpr std::size_t kAlignment = 16;
alignas(kAlignment) std::byte reserve[kReserveBytes];
std::atomic<std::size_t> reserveUsed = 0;

XmlMemoryAlarm::Stop stopAtFailure = nullptr;
void* stopUser = nullptr;

/// In front of each block of the reserve.
struct alignas(kAlignment) BlockHead {
    std::size_t size;
};

bool IsOfReserve(const void* block) {
    return std::less_equal<>()(static_cast<const void*>(reserve), block) &&
           std::less<>()(block, static_cast<const void*>(reserve + kReserveBytes));
}

std::size_t WholeSize(std::size_t size) {
    return sizeof(BlockHead) + (size + kAlignment - 1) / kAlignment * kAlignment;
}

void* TakeFromReserve(std::size_t size) {
    XmlMemory::NoteFailure();
    if (stopAtFailure != nullptr) stopAtFailure(stopUser);
    if (size > kReserveBytes) return nullptr;
    const std::size_t whole = WholeSize(size);
    std::size_t at = reserveUsed;
    do {
        if (kReserveBytes - at < whole) return nullptr;
    } while (!reserveUsed.compare_exchange_weak(at, at + whole));
    ::new (reserve + at) BlockHead{size};
    return reserve + at + sizeof(BlockHead);
}

void* Allocate(std::size_t size) {
    void* const block = std::malloc(size != 0 ? size : 1);
    return block != nullptr ? block : TakeFromReserve(size);
}

BlockHead& HeadOf(void* block) {
    return *std::launder(
        reinterpret_cast<BlockHead*>(static_cast<std::byte*>(block) - sizeof(BlockHead)));
}

/// What is given back as the last that was taken can be taken again, which serves all that is held
/// for the length of a question.
void GiveToReserve(void* block) {
    const std::size_t whole = WholeSize(HeadOf(block).size);
    const auto at = static_cast<std::size_t>(static_cast<std::byte*>(block) - reserve);
    std::size_t end = at - sizeof(BlockHead) + whole;
    reserveUsed.compare_exchange_strong(end, end - whole);
}

void Free(void* block) {
    if (IsOfReserve(block))
        GiveToReserve(block);
    else
        std::free(block);
}

std::size_t SizeOf(void* block) {
    if (!IsOfReserve(block)) return Platform::BlockSize(block);
    return HeadOf(block).size;
}

void* Reallocate(void* block, std::size_t size) {
    if (block == nullptr) return Allocate(size);
    if (!IsOfReserve(block))
        if (void* const grown = std::realloc(block, size != 0 ? size : 1)) return grown;
    void* const moved = IsOfReserve(block) ? Allocate(size) : TakeFromReserve(size);
    if (moved == nullptr) return nullptr;
    std::memcpy(moved, block, std::min(size, SizeOf(block)));
    Free(block);
    return moved;
}

char* CopyText(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    void* const copy = Allocate(size);
    return copy != nullptr ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

}  // namespace

void XmlMemory::Install() {
    xmlMemSetup(Free, Allocate, Reallocate, CopyText);
}

void XmlMemoryWatch::Fail() {
    seen = XmlMemory::CountFailures();
    throw std::bad_alloc();
}

XmlMemoryAlarm::XmlMemoryAlarm(Stop stop, void* user) {
    stopAtFailure = stop;
    stopUser = user;
}

XmlMemoryAlarm::~XmlMemoryAlarm() {
    stopAtFailure = nullptr;
}
