#include "Faults/FaultyRun.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kFile = RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/parts-big";

/// Runs of skel in which each allocation of a hundred fails, with all behind it. `tells` are the
/// words for it.
void FailSome(const std::vector<std::string>& arguments, const std::vector<std::string>& tells) {
    const TemporaryFolder folder;
    const auto run = [&](const Fault& fault) {
        return RunWithFault(folder.Path(), "skel", arguments, fault);
    };
    const long count = run({Fault::Kind::Allocation}).count;
    ASSERT_GT(count, 100);
    bool hasFailed = false;
    for (long number = 1; number <= count; number += 1 + count / 100) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        const FaultyResult result = run({Fault::Kind::Allocation, number, true});
        EXPECT_EQ(result.signal, 0);
        if (result.status == 0) continue;
        hasFailed = true;
        EXPECT_EQ(result.status, 1);
        bool isTold = false;
        for (const std::string& text : tells) isTold = isTold || result.errors == text + "\n";
        EXPECT_TRUE(isTold) << result.errors;
    }
    EXPECT_TRUE(hasFailed);
}

}  // namespace

TEST(SkelFault, TooLittleMemoryIsTold) {
    FailSome({"dump", "--json", kFile},
             {"skel: error: Cannot allocate memory",
              kFile + ": error: The file cannot be read: Cannot allocate memory"});
}

TEST(SkelFault, AFileForWhichThereIsNoMemoryIsNamed) {
    const TemporaryFolder folder;
    bool isNamed = false;
    const long count =
        RunWithFault(folder.Path(), "skel", {"check", kFile}, {Fault::Kind::Allocation}).count;
    for (long number = count; number > 0 && !isNamed; --number)
        isNamed =
            RunWithFault(folder.Path(), "skel", {"check", kFile}, {Fault::Kind::Allocation, number})
                .errors == kFile + ": error: The file cannot be read: Cannot allocate memory\n";
    EXPECT_TRUE(isNamed);
}
