#include "Faults/FaultyRun.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

constexpr int kLinks = 6;

/// Links without a target, each with a text of its own in memory.
std::string LinksDocument() {
    std::string members;
    for (int i = 0; i < kLinks; ++i)
        members += "<member path=\"||a joint that is not there " + std::to_string(i) + "\"/>";
    return "<QEL xmlns=\"http://qel.example/ns/qeli/1_28_1/qeli\" filenameform=\"qelirelative\">"
           "<objset name=\"set\">" +
           members + "</objset></QEL>";
}

TEST(QeliFault, LinksWithoutATargetAreToldTogetherOrNotAtAll) {
    const TemporaryFolder folder;
    folder.WriteFile("in", LinksDocument());
    const auto run = [&folder](long number) {
        Fault fault;
        fault.number = number;
        return RunWithFault(folder.Path(), "qeli", {"check", "in"}, fault);
    };
    const FaultyResult undisturbed = run(0);
    const auto lines = [](const FaultyResult& result) {
        return std::count(result.errors.begin(), result.errors.end(), '\n');
    };
    ASSERT_EQ(lines(undisturbed), 1 + kLinks) << undisturbed.errors;
    int told = 0;
    for (long number = 1; number <= undisturbed.count && !HasFailure(); ++number) {
        SCOPED_TRACE(number);
        const FaultyResult disturbed = run(number);
        EXPECT_EQ(disturbed.status, 1);
        if (disturbed.errors == undisturbed.errors) continue;
        EXPECT_NE(disturbed.errors.find("Cannot allocate memory"), std::string::npos)
            << disturbed.errors;
        EXPECT_EQ(disturbed.errors.find(" more"), std::string::npos) << disturbed.errors;
        EXPECT_TRUE(lines(disturbed) == 1 || lines(disturbed) == 1 + kLinks) << disturbed.errors;
        ++told;
    }
    EXPECT_GT(told, 10 * kLinks);
}

}  // namespace
