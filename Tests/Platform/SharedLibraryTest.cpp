#include <Platform/SharedLibrary.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(SharedLibrary, WhatIsNotThereIsNamed) {
    try {
        Platform::FunctionOfLibrary("libNoSuchLibrary.so.9", "f");
        FAIL();
    } catch (const std::runtime_error& failure) {
        EXPECT_NE(std::string(failure.what()).find("libNoSuchLibrary.so.9"), std::string::npos);
    }
}

}  // namespace
