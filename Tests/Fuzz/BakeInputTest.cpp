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

}  // namespace
