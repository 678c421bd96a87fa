#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomString.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Saving/VoktOutputPath.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"
#include "Support/ThrownText.h"

namespace {

class OutputPath : public testing::Test {
  protected:
    void StartIn(const std::string& path) {
        auto atom = std::make_unique<VoktAtomString>();
        atom->value = path;
        universe.Add(std::move(atom), "VoktTool_cwd");
    }
    template <class Work>
    std::string Failure(Work work) {
        return ThrownText<QelTools::Common::Exception>(work);
    }

    TemporaryFolder folder;
    VoktUniverse universe;
};

}  // namespace

TEST_F(OutputPath, ARelativeNameCountsFromTheStartOfTheRunAndItsFolderIsMade) {
    StartIn(folder.Path());
    EXPECT_EQ(MakeOutputPath("a/b.bin", universe), folder.Path("a/b.bin"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path("a")));
    EXPECT_FALSE(folder.Has("a/b.bin"));
}

TEST_F(OutputPath, AStartThatEndsInASeparatorGetsNoOther) {
    StartIn(folder.Path() + "/");
    EXPECT_EQ(MakeOutputPath("x.bin", universe), folder.Path("x.bin"));
}

TEST_F(OutputPath, AnAbsoluteNameIsNotPrefixed) {
    StartIn("/somewhere/else");
    EXPECT_EQ(MakeOutputPath(folder.Path("x.bin"), universe), folder.Path("x.bin"));
}

TEST_F(OutputPath, WithoutAStartTheWorkingDirectoryCounts) {
    const std::string here = (std::filesystem::current_path() / "x.bin").generic_string();
    EXPECT_EQ(MakeOutputPath("x.bin", universe), here);
    StartIn("");
    EXPECT_EQ(MakeOutputPath("x.bin", universe), here);
}

TEST_F(OutputPath, TheWholeChainOfFoldersIsMade) {
    StartIn(folder.Path());
    EXPECT_EQ(MakeOutputPath("a/b/c/d/x.bin", universe), folder.Path("a/b/c/d/x.bin"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path("a/b/c/d")));
    EXPECT_EQ(MakeOutputPath("a/b/c/d/x.bin", universe), folder.Path("a/b/c/d/x.bin"));
}

TEST_F(OutputPath, BackslashesSeparateAndComeOutAsSlashes) {
    StartIn(folder.Path());
    EXPECT_EQ(MakeOutputPath("a\\b\\x.bin", universe), folder.Path("a/b/x.bin"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path("a/b")));
}

TEST_F(OutputPath, DotsAndDoubledSeparatorsAreResolved) {
    StartIn(folder.Path());
    EXPECT_EQ(MakeOutputPath("./a//b/../x.bin", universe), folder.Path("a/x.bin"));
    EXPECT_FALSE(folder.Has("a/b"));
}

TEST_F(OutputPath, AnEmptyNameWithoutAStartHasNoFullPath) {
    EXPECT_EQ(Failure([&] { MakeOutputPath("", universe); }), "_fullpath failed");
}

TEST_F(OutputPath, ANameAtTheRootNeedsNoFolder) {
    const std::string root = std::filesystem::current_path().root_name().string();
    EXPECT_EQ(MakeOutputPath("/x.bin", universe), root + "/x.bin");
}

TEST_F(OutputPath, AFileInThePlaceOfTheFolderIsNamed) {
    StartIn(folder.Path());
    folder.WriteFile("taken", "kept");
    EXPECT_EQ(Failure([&] { MakeOutputPath("taken/x.bin", universe); }),
              "Cannot create folder '" + WithSeparators(folder.Path("taken")) +
                  "' since a file of that name already exists");
    EXPECT_EQ(folder.ReadFile("taken"), "kept");
}

TEST_F(OutputPath, AFolderThatCannotBeMadeIsNamed) {
    folder.WriteFile("taken", "");
    EXPECT_EQ(Failure([&] { CreateFolder(folder.Path("taken/a/b")); }),
              "Failed to create folder " + (folder.Path("taken/a/b")));
}

TEST_F(OutputPath, AFolderThatExistsIsFine) {
    EXPECT_NO_THROW(CreateFolder(folder.Path()));
    EXPECT_NO_THROW(CreateFolder("/"));
}

TEST_F(OutputPath, ADriveNeedsNoMaking) {
    EXPECT_NO_THROW(CreateFolder("Q:"));
    EXPECT_FALSE(std::filesystem::exists("Q:"));
}
