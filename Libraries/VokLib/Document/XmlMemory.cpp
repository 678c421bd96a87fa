#include "Document/XmlMemory.h"

#include <libxml/xmlmemory.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<std::size_t> failures = 0;

void* Noted(void* block) {
    if (block == nullptr) ++failures;
    return block;
}

void* Allocate(std::size_t size) {
    return Noted(std::malloc(size != 0 ? size : 1));
}

void* Reallocate(void* block, std::size_t size) {
    return Noted(std::realloc(block, size != 0 ? size : 1));
}

char* CopyText(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    void* const copy = Allocate(size);
    return copy != nullptr ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

}  // namespace

void XmlMemory::Install() {
    xmlMemSetup(std::free, Allocate, Reallocate, CopyText);
}

std::size_t XmlMemory::CountFailures() {
    return failures;
}

void XmlMemoryWatch::Check() {
    if (!HasFailed()) return;
    seen = XmlMemory::CountFailures();
    throw std::bad_alloc();
}
