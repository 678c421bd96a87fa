#include <Platform/LackOfMemory.h>

#include "EndAtOnce.h"

#include <exception>
#include <new>

namespace Platform {

namespace {

StandardStream lastStream = StandardStream::kErrors;
const char* lastWords = "";
std::terminate_handler otherwise = nullptr;

/// An exception for which there was no memory is none by the time that the program ends for it.
bool IsLackOfMemory() {
    if (std::current_exception() == nullptr) return true;
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return true;
    } catch (...) {
        return false;
    }
}

[[noreturn]] void End() {
    if (IsLackOfMemory()) EndAtOnce(lastStream, lastWords);
    otherwise();
    EndAtOnce(StandardStream::kErrors, "");
}

}  // namespace

EndWhereMemoryDoes::EndWhereMemoryDoes(StandardStream stream, const char* words) {
    lastStream = stream;
    lastWords = words;
    const std::terminate_handler before = std::set_terminate(End);
    if (before != End) otherwise = before;
}

}  // namespace Platform
