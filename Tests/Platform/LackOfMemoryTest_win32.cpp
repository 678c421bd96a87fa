#include <Platform/LackOfMemory.h>
#include <Platform/OutputCapture.h>
#include <Platform/UnfinishedFile.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <io.h>
#include <stdlib.h>

#include <exception>
#include <filesystem>
#include <new>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

using testing::ExitedWithCode;

/// What the system's library ends a process with that aborts.
constexpr int kAborted = 3;

class LackOfMemoryDeathTest : public testing::Test {
  protected:
    LackOfMemoryDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    template <class End>
    static void EndIn(End end) {
        const Platform::EndWhereMemoryDoes ending(Platform::StandardStream::kErrors, "the words\n");
        [&]() noexcept { end(); }();
    }
};

TEST_F(LackOfMemoryDeathTest, NoExceptionAtAllIsOne) {
    EXPECT_EXIT(EndIn([] { std::terminate(); }), ExitedWithCode(1), "the words");
}

TEST_F(LackOfMemoryDeathTest, AnExceptionThatSaysSoIsOne) {
    EXPECT_EXIT(EndIn([] { throw std::bad_array_new_length(); }), ExitedWithCode(1), "the words");
}

TEST_F(LackOfMemoryDeathTest, AnyOtherExceptionEndsAsEver) {
    EXPECT_EXIT(EndIn([] { throw std::runtime_error("what it says"); }), ExitedWithCode(kAborted),
                "what it says");
}

TEST_F(LackOfMemoryDeathTest, TheWordsPassAStandardOutputThatIsCaptured) {
    const TemporaryFolder folder;
    const auto end = [&folder] {
        // What is looked at here is what comes to standard error.
        _dup2(2, 1);
        Platform::OutputCapture capture;
        if (capture.Start(folder.Path("log")) != Platform::OutputCapture::StartResult::kStarted)
            _exit(98);
        const Platform::EndWhereMemoryDoes ending(Platform::StandardStream::kOutput, "the words\n");
        std::terminate();
    };
    EXPECT_EXIT(end(), ExitedWithCode(1), "the words");
}

TEST_F(LackOfMemoryDeathTest, WhatIsUnfinishedGoes) {
    const TemporaryFolder folder;
    const std::string before = getenv("TMP");
    // The process that ends makes its own folder below this one.
    _putenv_s("TMP", folder.Path().c_str());
    EXPECT_EXIT(
        {
            Platform::UnfinishedFile file;
            if (file.CreateTemporary() != 0 || !fs::exists(file.GetName())) _exit(98);
            EndIn([] { std::terminate(); });
        },
        ExitedWithCode(1), "the words");
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder.Path()))
        EXPECT_TRUE(entry.is_directory()) << entry.path();
    _putenv_s("TMP", before.c_str());
}

}  // namespace
