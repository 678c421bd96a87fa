#include "House/TestNames.h"

#include <gtest/gtest.h>

#include "House/SourceRules.h"

namespace {

using Faults = std::vector<std::string>;

TEST(TestNames, EveryNameLeadsFromASourceToItsTestAndBack) {
    std::set<std::string> paths;
    for (const SourceFile& file : ReadCheckout(RIGBAKE_SOURCE_ROOT)) paths.insert(file.path);
    EXPECT_GT(paths.size(), 500u);
    for (const std::string& fault : TestNameFaults(paths, SourcesHeldElsewhere()))
        ADD_FAILURE() << fault;
}

TEST(TestNames, ATestStandsInTheFolderOfItsThing) {
    const std::set<std::string> sources = {"Libraries/Include/VokLib/Text/Words.h",
                                           "Libraries/VokLib/Tree/Leaf.cpp",
                                           "Tests/VokLib/Tree/LeafTest.cpp"};
    const auto faultsWith = [&sources](const std::string& test) {
        std::set<std::string> paths = sources;
        paths.insert(test);
        return TestNameFaults(paths, {});
    };
    EXPECT_EQ(faultsWith("Tests/VokLib/Text/WordsTest.cpp"), Faults());
    EXPECT_EQ(faultsWith("Tests/VokLib/Text/WordsHostileTest.cpp"), Faults());
    EXPECT_EQ(faultsWith("Tests/VokLib/Tree/WordsTest.cpp"),
              Faults{"Tests/VokLib/Tree/WordsTest.cpp: its name begins with the name of no header "
                     "or source of VokLib/Tree"});
    EXPECT_EQ(faultsWith("Tests/VokLib/Text/WordTest.cpp"),
              Faults{"Tests/VokLib/Text/WordTest.cpp: its name begins with the name of no header "
                     "or source of VokLib/Text"});
}

TEST(TestNames, ATestMayBeForOnePlatform) {
    EXPECT_EQ(
        TestNameFaults({"Libraries/Platform/Pipe_win32.cpp", "Libraries/Platform/Io_posix.cpp",
                        "Tests/Platform/PipeTest_win32.cpp"},
                       {{"Platform/PipeTest", {"Platform/Io"}}}),
        Faults());
    EXPECT_EQ(TestNameFaults({"Tests/Platform/PipeTest_win32.cpp"}, {}).size(), 1u);
}

TEST(TestNames, ASourceWithoutATestIsAFault) {
    EXPECT_EQ(TestNameFaults({"Libraries/BiffLib/Block.cpp"}, {}),
              Faults{"BiffLib/Block.cpp has no test: add Tests/BiffLib/BlockTest.cpp, or name the "
                     "test that holds it in Tests/House/SourcesHeldElsewhere.cpp"});
    // A test of a facet is one of its thing; one of another thing is none.
    EXPECT_EQ(
        TestNameFaults({"Libraries/BiffLib/Block.cpp", "Tests/BiffLib/BlockWideTest.cpp"}, {}),
        Faults());
    EXPECT_EQ(TestNameFaults({"Libraries/BiffLib/Block.cpp", "Libraries/BiffLib/BlockFile.cpp",
                              "Tests/BiffLib/BlockFileTest.cpp"},
                             {})
                  .size(),
              1u);
}

TEST(TestNames, APartNamedAfterItsThingIsHeldByTheThingsTest) {
    EXPECT_EQ(
        TestNameFaults({"Libraries/Include/BiffLib/Block.h", "Libraries/BiffLib/BlockWrite.cpp",
                        "Libraries/BiffLib/Block_posix.cpp", "Tests/BiffLib/BlockTest.cpp"},
                       {}),
        Faults());
}

TEST(TestNames, WholeRunsAreTestsOfPrograms) {
    const std::set<std::string> main = {"Standalone/Oven/main.cpp"};
    for (const std::string folder : {"EndToEnd", "Faults"}) {
        EXPECT_EQ(TestNameFaults({*main.begin(), "Tests/" + folder + "/OvenRunTest.cpp",
                                  "Tests/" + folder + "/ProgramsRunTest.cpp"},
                                 {}),
                  Faults());
        EXPECT_EQ(TestNameFaults({*main.begin(), "Tests/" + folder + "/RunTest.cpp"}, {}).size(),
                  1u);
    }
}

TEST(TestNames, HeadersOfTheRuntimeAndHelpersOfTheTestsAreThings) {
    EXPECT_EQ(
        TestNameFaults({"Runtime/skeleton/skeleton_read.h", "Tests/Runtime/SkeletonReadTest.cpp",
                        "Tests/House/Rules.h", "Tests/House/RulesTest.cpp",
                        "Tests/Support/Folder.h", "Tests/Support/FolderTest.cpp"},
                       {}),
        Faults());
}

TEST(TestNames, TheListOfSourcesHeldElsewhereIsTrue) {
    const std::set<std::string> paths = {
        "Libraries/BiffLib/Block.cpp", "Libraries/BiffLib/Part.cpp", "Tests/BiffLib/BlockTest.cpp"};
    EXPECT_EQ(TestNameFaults(paths, {{"BiffLib/BlockTest", {"BiffLib/Part"}}}), Faults());
    EXPECT_EQ(TestNameFaults(paths, {{"BiffLib/GoneTest", {"BiffLib/Part"}}}),
              Faults{"the list names BiffLib/GoneTest, but there is no such test"});
    EXPECT_EQ(TestNameFaults(paths, {{"BiffLib/BlockTest", {"BiffLib/Part", "BiffLib/Gone"}}}),
              Faults{"the list names BiffLib/Gone, but there is no such source"});
    EXPECT_EQ(TestNameFaults(paths, {{"BiffLib/BlockTest", {"BiffLib/Part", "BiffLib/Block"}}}),
              Faults{"the list names BiffLib/Block, but it has a test of its own"});
}

}  // namespace
