#pragma once

#include <VokLib/Base/VokException.h>

#include <string>

class VokObj;

/// Throws a VokException with the caller's position and the path of `object`, which may be null.
/// The path stays empty where it cannot be told, for the first failure must reach the caller.
[[noreturn]] void ThrowVokException(
    std::string message, const VokObj* object,
    const QelTools::Common::SourcePlace& place = QelTools::Common::SourcePlace::Current());
