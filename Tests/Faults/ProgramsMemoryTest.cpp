#include "Faults/FaultyRun.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace {

struct Work {
    const char* name;
    const char* program;
    std::vector<std::string> arguments;
    const char* words;         ///< for a lack of memory, or kWords
    std::size_t step = 16384;  ///< by which it gets less
};

constexpr const char* kWords = "Cannot allocate memory";

std::ostream& operator<<(std::ostream& out, const Work& work) {
    return out << work.name;
}

/// So deep that the update takes a thread with a large stack.
std::string DeepOldDocument() {
    std::string open, close;
    for (int i = 0; i < 1500; ++i) {
        open += "<node name=\"j\">";
        close += "</node>";
    }
    return "<?xml version=\"1.0\"?><QEL xmlns=\"http://qel.example/ns/qeli/1_14_1/qeli\" "
           "filenameform=\"qelirelative\"><scene>" +
           open + close + "</scene></QEL>";
}

/// Runs of a program that may take only so much memory.
class ProgramsMemory : public testing::TestWithParam<Work> {
  protected:
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
        while (enough - tooLittle > GetParam().step) {
            const std::size_t middle = (enough + tooLittle) / 2;
            (Run(middle).status == 0 ? enough : tooLittle) = middle;
        }
        return enough;
    }

    void ExpectTold(const FaultyResult& run) const {
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(folder.ReadFile("out"), "old");
        const std::string told = run.output + run.errors;
        EXPECT_TRUE(told.find(GetParam().words) != std::string::npos ||
                    told.find(kWords) != std::string::npos)
            << told;
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
    folder.WriteFile("old", DeepOldDocument());
    const FaultyResult undisturbed = Run(0);
    ASSERT_EQ(undisturbed.status, 0);
    const std::ptrdiff_t fileCount = CountFiles();
    const std::string wanted = folder.ReadFile("out");
    int told = 0;
    for (std::size_t memory = Need() + 8 * GetParam().step; !HasFailure();
         memory -= GetParam().step) {
        SCOPED_TRACE(memory);
        const FaultyResult run = Run(memory);
        if (run.status == kNotLoaded) break;
        EXPECT_EQ(run.signal, 0);
        EXPECT_EQ(CountFiles(), fileCount);
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
    testing::Values(
        Work{"Bake", "rigbake", {"-in", "in", "-out", "out"}, "std::bad_alloc"},
        Work{"BakeWithALog",
             "rigbake",
             {"-in", "in", "-out", "out", "-logfile", "log"},
             "std::bad_alloc"},
        Work{"Conversion", "qeli", {"convert", "in", "out"}, kWords},
        Work{"Update", "qeli", {"convert", "old", "out"}, "for lack of memory", 2u << 20},
        Work{"Check", "skel", {"check", "skeleton"}, kWords}),
    [](const testing::TestParamInfo<Work>& work) { return std::string(work.param.name); });

}  // namespace
