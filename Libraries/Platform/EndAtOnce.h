#pragma once

#include <Platform/LackOfMemory.h>

namespace Platform {

/// Removes what is unfinished, writes the words and ends the process with status 1, without taking
/// memory and without ending anything else in order.
[[noreturn]] void EndAtOnce(StandardStream stream, const char* words);

}  // namespace Platform
