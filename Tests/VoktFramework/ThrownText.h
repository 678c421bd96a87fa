#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <string>

/// The text of the exception of kind `Exception` that leaves `work`; fails the test when none does.
template <class Exception, class Work>
std::string ThrownText(Work work) {
    try {
        work();
    } catch (const Exception& failure) {
        return failure.what();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}
