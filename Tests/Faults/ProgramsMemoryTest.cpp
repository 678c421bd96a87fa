#include "Faults/FaultyRun.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace {

struct Work {
    const char* program;
    std::vector<std::string> arguments;
    const char* words;  ///< for a lack of memory
};

std::ostream& operator<<(std::ostream& out, const Work& work) {
    return out << work.program;
}

/// Runs of a program that may take only so much memory.
class ProgramsMemory : public testing::TestWithParam<Work> {
  protected:
    static constexpr std::size_t kStep = 16 * 1024;
    /// What the loader ends with.
    static constexpr int kNotLoaded = 127;

    FaultyResult Run(std::size_t memory) const {
        folder.WriteFile("out", "old");
        Fault fault;
        fault.memory = memory;
        return RunWithFault(folder.Path(), GetParam().program, GetParam().arguments, fault);
    }

    /// The least that is enough.
    std::size_t Need() const {
        std::size_t tooLittle = 0;
        std::size_t enough = std::size_t{1} << 30;
        while (enough - tooLittle > kStep) {
            const std::size_t middle = (enough + tooLittle) / 2;
            (Run(middle).status == 0 ? enough : tooLittle) = middle;
        }
        return enough;
    }

    void ExpectTold(const FaultyResult& run) const {
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(folder.ReadFile("out"), "old");
        EXPECT_NE((run.output + run.errors).find(GetParam().words), std::string::npos)
            << run.output << run.errors;
    }

    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder.Path()),
                             std::filesystem::directory_iterator());
    }

    const TemporaryFolder folder;
};

TEST_P(ProgramsMemory, IsEnoughOrItsLackIsTold) {
    std::filesystem::copy_file(RIGBAKE_SOURCE_ROOT "/Tests/Documents/skeleton-parts.qeli",
                               folder.Path("in"));
    std::filesystem::copy_file(RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/parts-little",
                               folder.Path("skeleton"));
    const FaultyResult undisturbed = Run(0);
    ASSERT_EQ(undisturbed.status, 0);
    const std::string wanted = folder.ReadFile("out");
    int told = 0;
    for (std::size_t memory = Need() + 8 * kStep; !HasFailure(); memory -= kStep) {
        SCOPED_TRACE(memory);
        const FaultyResult run = Run(memory);
        if (run.status == kNotLoaded) break;
        EXPECT_EQ(run.signal, 0);
        EXPECT_EQ(CountFiles(), 3);
        if (run.status == 0) {
            EXPECT_EQ(run.output, undisturbed.output);
            EXPECT_TRUE(folder.ReadFile("out") == wanted);
        } else {
            ExpectTold(run);
            ++told;
        }
    }
    EXPECT_GT(told, 10);
}

INSTANTIATE_TEST_SUITE_P(
    Of, ProgramsMemory,
    testing::Values(Work{"rigbake", {"-in", "in", "-out", "out"}, "std::bad_alloc"},
                    Work{"qeli", {"convert", "in", "out"}, "Cannot allocate memory"},
                    Work{"skel", {"check", "skeleton"}, "Cannot allocate memory"}),
    [](const testing::TestParamInfo<Work>& work) { return std::string(work.param.program); });

}  // namespace
