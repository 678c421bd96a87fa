#include "CommandLineText_win32.h"

#include <gtest/gtest.h>
#include <windows.h>
// Behind the header on which it stands.
#include <shellapi.h>

namespace {

/// The words that a program gets from a command line, by the system's own rules.
Platform::Command Words(const std::string& line) {
    const std::wstring wide(line.begin(), line.end());
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(wide.c_str(), &count);
    Platform::Command command;
    for (int i = 0; i < count; ++i) {
        const std::wstring word = words[i];
        command.emplace_back();
        for (const wchar_t c : word) command.back() += static_cast<char>(c);
    }
    LocalFree(words);
    return command;
}

TEST(CommandLineText, TheWordsComeOutAsTheyWentIn) {
    for (const char* word :
         {"plain", "", "two words", "tab\there", "\"", "a\"b", "\\", "a\\b", "a b\\", "a b\\\\",
          "a\\\"b c", "\\\\server\\share", "a b\\\"", "%PATH%", "a&b|c>d", "^", "'"}) {
        const Platform::Command command = {"program", word, "last"};
        EXPECT_EQ(Words(Platform::CommandLineText(command)), command) << word;
    }
}

TEST(CommandLineText, WhatNeedsNoQuotesHasNone) {
    EXPECT_EQ(Platform::CommandLineText({"QelHashProxy.exe"}), "QelHashProxy.exe");
}

}  // namespace
