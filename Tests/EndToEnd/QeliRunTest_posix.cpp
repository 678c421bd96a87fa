#include "EndToEnd/ProgramRun.h"

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

}  // namespace
