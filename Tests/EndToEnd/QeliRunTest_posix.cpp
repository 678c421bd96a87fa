#include "EndToEnd/ProgramRun.h"
#include "Support/DeepWorkingFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

TEST(QeliRunTest, ACompleteNameIsReadAlsoWhereTheWorkingDirectoryIsGone) {
    const RunFolder folder;
    const std::string scene = folder.WriteFile("scene.qeli", OneJointDocument());
    const std::string output = folder.Path("output");
    const std::string command = "mkdir '" + folder.Path("gone") + "' && cd '" +
                                folder.Path("gone") + "' && rmdir '" + folder.Path("gone") +
                                "' && '" RIGBAKE_PROGRAMS "/qeli' check '" + scene + "' >'" +
                                output + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.ReadFile("output"), scene + ": OK, version 1_28_1\n");
}

TEST(QeliRunTest, ANameThatNeedsAWorkingDirectoryIsRefusedWhereItCannotBeTold) {
    const RunFolder folder;
    const std::string complete = folder.WriteFile("scene.qeli", OneJointDocument());
    const DeepWorkingFolder deep;
    std::filesystem::copy(complete, "scene.qeli");
    const auto status = [&](const std::string& arguments) {
        return std::system(("'" RIGBAKE_PROGRAMS "/qeli' " + arguments + " 2>'" +
                            folder.Path("errors") + "' >'" + folder.Path("output") + "'")
                               .c_str());
    };
    // What starts the program may have words of its own about such a place in front.
    const auto hasSaid = [&](const std::string& words) {
        const std::string errors = folder.ReadFile("errors");
        return errors.ends_with(words + "\n") ? testing::AssertionSuccess()
                                              : testing::AssertionFailure() << errors;
    };
    EXPECT_NE(status("files scene.qeli"), 0);
    EXPECT_EQ(folder.ReadFile("output"), "");
    EXPECT_TRUE(hasSaid("scene.qeli: error: Failed to retrieve current working directory"));
    EXPECT_NE(status("convert '" + complete + "' out.qeli"), 0);
    EXPECT_TRUE(
        hasSaid("out.qeli: error: The file cannot be written: Failed to retrieve current "
                "working directory, or its full name is longer than this system's names may be"));
    EXPECT_FALSE(std::filesystem::exists("out.qeli"));
}

}  // namespace
