#include "Faults/FaultyRun.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <string>
#include <vector>

namespace {

/// A program whose answer is what it prints.
struct Question {
    const char* name;
    const char* program;
    std::vector<std::string> arguments;
};

std::ostream& operator<<(std::ostream& out, const Question& question) {
    return out << question.name;
}

const std::string kSource = RIGBAKE_SOURCE_ROOT;
const std::string kScene = kSource + "/Tests/Documents/skeleton-parts.qeli";
const std::string kLittle = kSource + "/Fuzz/Seeds/Skeleton/parts-little";
const std::string kBig = kSource + "/Fuzz/Seeds/Skeleton/parts-big";
const std::string kOther = kSource + "/Fuzz/Seeds/Skeleton/roots";

class FaultyAnswer : public testing::TestWithParam<Question> {
  protected:
    FaultyResult Run(const Fault& fault) const {
        return RunWithFault(folder.Path(), GetParam().program, GetParam().arguments, fault);
    }

    /// About `runs` runs with a fault at each of as many places from the first to the last.
    void FailSome(Fault fault, long runs, const std::vector<std::string>& words) {
        const FaultyResult undisturbed = Run({fault.kind});
        ASSERT_EQ(undisturbed.errors, "");
        const long step = std::max(1L, undisturbed.count / runs);
        for (fault.number = 1; fault.number <= undisturbed.count; fault.number += step) {
            SCOPED_TRACE("number " + std::to_string(fault.number));
            const FaultyResult run = Run(fault);
            ASSERT_EQ(run.signal, 0);
            if (run.errors.empty()) {
                ASSERT_EQ(run.status, undisturbed.status);
                ASSERT_EQ(run.output, undisturbed.output);
                continue;
            }
            ASSERT_EQ(run.status, 1) << run.errors;
            const bool isTold = std::any_of(words.begin(), words.end(), [&](const auto& text) {
                return run.errors.find(text) != std::string::npos;
            });
            ASSERT_TRUE(isTold) << run.errors;
        }
    }

  private:
    const TemporaryFolder folder;
};

TEST_P(FaultyAnswer, TooLittleMemoryIsTold) {
    for (const bool isLasting : {false, true})
        FailSome({Fault::Kind::Allocation, 0, isLasting}, 40, {"Cannot allocate memory"});
}

TEST_P(FaultyAnswer, AFailedCallIsTold) {
    // The tests of names and the reader have words of their own; an answer that is refused once has
    // lost the reason.
    FailSome({Fault::Kind::Call, 0, false, EIO}, 60,
             {"Input/output error", "is not readable.", "File open error: ", "File read error: ",
              "This is no regular file", "The file cannot be written"});
}

INSTANTIATE_TEST_SUITE_P(
    Of, FaultyAnswer,
    testing::Values(Question{"Check", "qeli", {"check", kScene}},
                    Question{"Tree", "qeli", {"tree", kScene}},
                    Question{"Files", "qeli", {"files", kScene}},
                    Question{"SkelCheck", "skel", {"check", kBig}},
                    Question{"Dump", "skel", {"dump", kLittle, "--names", kScene}},
                    Question{"DumpJson", "skel", {"dump", "--json", kBig}},
                    Question{"Diff", "skel", {"diff", kLittle, kOther}},
                    Question{"DiffJson", "skel", {"diff", "--json", kBig, kOther}},
                    Question{"Page", "skel", {"picture", kBig, "page.html"}},
                    Question{"HeaderOfFile", "skel", {"header", kBig}},
                    Question{"HeaderOfScene", "skel", {"header", kScene}}),
    [](const auto& question) { return question.param.name; });

}  // namespace
