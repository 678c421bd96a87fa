#pragma once

#include <exception>
#include <string>

/// The text of the exception of kind `Exception` that leaves `work`; empty when none leaves it. Any
/// other kind passes on to the test, which it fails.
template <class Exception = std::exception, class Work>
std::string ThrownText(Work&& work) {
    try {
        work();
    } catch (const Exception& failure) {
        return failure.what();
    }
    return {};
}
