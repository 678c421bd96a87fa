#include "WideText_win32.h"

#include <gtest/gtest.h>

namespace {

using Platform::NarrowText;
using Platform::WideText;

TEST(WideText, NamesAreUtf8) {
    EXPECT_EQ(WideText("caf\xC3\xA9 \xE9\xAA\xA8"), L"caf\u00E9 \u9AA8");
    EXPECT_EQ(NarrowText(L"caf\u00E9 \u9AA8"), "caf\xC3\xA9 \xE9\xAA\xA8");
    EXPECT_EQ(WideText(""), L"");
    EXPECT_EQ(NarrowText(L""), "");
}

TEST(WideText, WhatIsNoTextBecomesASignThatStandsForIt) {
    EXPECT_EQ(WideText("a\xFF"), L"a\uFFFD");
}

}  // namespace
