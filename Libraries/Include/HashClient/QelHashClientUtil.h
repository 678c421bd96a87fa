#pragma once

#include <cstdint>

/// The hash registry's client for callers that work with exceptions: each operation throws a
/// QelTools::Common::Exception without a position where the library gives another result than Ok.
namespace QelHashClientUtil {

void Initialise();
void Shutdown();
void SetApplicationName(const char* applicationName);

/// The 32-bit hash of `string`. The message of a collision names both strings and the category.
std::uint32_t AddString(const char* category, const char* string);

}  // namespace QelHashClientUtil
