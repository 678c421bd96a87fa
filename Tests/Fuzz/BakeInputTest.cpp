#include "Support/BakeInput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

TEST(BakeInput, ADocumentAloneIsBakedWithConstraintsInBothByteOrders) {
    const BakeInput input = ReadBakeInput("<QEL/>");
    EXPECT_EQ(input.document, "<QEL/>");
    EXPECT_TRUE(input.makesTwo);
    EXPECT_TRUE(input.updatesOld);
    EXPECT_EQ(input.flags,
              (std::vector<std::string>{"-ojc", "true", "-bothendian", "-autoupdate", "true"}));
}

TEST(BakeInput, TwoBytesReachEveryFlag) {
    std::set<std::string> reached;
    for (int first = 0x80; first < 0x100; ++first)
        for (int second = 0; second < 0x100; ++second) {
            const std::string bytes = {static_cast<char>(first), static_cast<char>(second), '<'};
            const BakeInput input = ReadBakeInput(bytes);
            EXPECT_EQ(input.document, "<");
            reached.insert(input.flags.begin(), input.flags.end());
            if (input.writesLog) reached.insert("-log");
            const auto has = [&](const std::string& flag, const std::string& value) {
                const auto at = std::find(input.flags.begin(), input.flags.end(), flag);
                return at != input.flags.end() && at[1] == value;
            };
            EXPECT_EQ(input.turnsAnimation,
                      has("-changeUpAxisAnimation", "true") &&
                          (has("-changeUpAxis", "y") || has("-changeUpAxis", "z")));
        }
    for (const char* flag :
         {"-multiRoot", "-outputDrivenKeys", "-ojc", "-changeUpAxis", "-changeUpAxisAnimation",
          "-bothendian", "-be", "-le", "-ls", "-bs", "-verboseSkeleton", "-autoupdate",
          "-quietload", "-verboseload", "-tt", "-log"})
        EXPECT_EQ(reached.count(flag), 1u) << flag;
}

std::string Keys(const std::string& times) {
    return "<keyTimes>" + times + "</keyTimes>";
}

bool TurnsAnimation(const std::string& document) {
    const std::string bytes = "\xF4 " + document;
    const BakeInput input = ReadBakeInput(bytes);
    EXPECT_EQ(input.document, document);
    const auto at = std::find(input.flags.begin(), input.flags.end(), "-changeUpAxisAnimation");
    EXPECT_EQ(*(at + 1), input.turnsAnimation ? "true" : "false");
    return input.turnsAnimation;
}

TEST(BakeInput, AnAnimationOfMinutesIsBakedButNotTurned) {
    EXPECT_TRUE(TurnsAnimation("<QEL/>"));
    EXPECT_TRUE(TurnsAnimation(Keys("0 60") + Keys("-500\n60")));
    EXPECT_FALSE(TurnsAnimation(Keys("0 60") + Keys("0 61")));
    EXPECT_FALSE(TurnsAnimation(Keys("0 1000 1")));
    EXPECT_FALSE(TurnsAnimation("<keyTimes >0 9e4"));
    EXPECT_FALSE(TurnsAnimation(Keys("0 1e5")));
    EXPECT_FALSE(TurnsAnimation(Keys("- 1.5.5, 1000")));
}

TEST(BakeInput, AnAnimationThatIsRefusedForItsLengthIsTurned) {
    EXPECT_TRUE(TurnsAnimation(Keys("0 100001")));
    EXPECT_TRUE(TurnsAnimation(Keys("nan 1e39 INF")));
    EXPECT_FALSE(TurnsAnimation(Keys("1e39 1000")));
    EXPECT_TRUE(TurnsAnimation("keyTimes"));
}

}  // namespace
