#include "Faults/FaultyRun.h"
#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace {

constexpr const char* kDocument =
    "<QEL xmlns=\"http://qel.example/ns/qeli/1_28_1/qeli\" filenameform=\"qelirelative\">"
    "<scene><joint name=\"root\"/></scene></QEL>";

/// Conversions and bakes of an ordinary user over a file whose permissions are unusual.
class ProgramsPermissions : public testing::Test {
  protected:
    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "only the superuser can set this up";
        chmod(folder.Path().c_str(), 0777);
        folder.WriteFile("in.qeli", kDocument);
        if (!OrdinaryUserMayRun()) GTEST_SKIP() << "an ordinary user cannot reach the programs";
    }

    void SetUpFile(uid_t owner, mode_t mode, gid_t group = getegid()) const {
        const std::string out = folder.WriteFile("out", "old");
        ASSERT_EQ(chown(out.c_str(), owner, group), 0);
        ASSERT_EQ(chmod(out.c_str(), mode), 0);
    }

    FaultyResult Convert() const { return Run("qeli", {"convert", "in.qeli", "out"}); }
    FaultyResult Bake() const { return Run("rigbake", {"-in", "in.qeli", "-out", "out"}); }

    mode_t Mode() const {
        struct stat status {};
        stat(folder.Path("out").c_str(), &status);
        return status.st_mode & 07777;
    }

    static constexpr uid_t kNobody = 65534;
    static constexpr uid_t kAnother = 1;
    const TemporaryFolder folder;

  private:
    FaultyResult Run(const char* program, const std::vector<std::string>& arguments) const {
        const OrdinaryUser user;
        return RunWithFault(folder.Path(), program, arguments, {});
    }
};

TEST_F(ProgramsPermissions, AFileThatItsOwnerMayOnlyWriteIsReplaced) {
    for (const mode_t mode : {0200u, 0222u, 04755u}) {
        SetUpFile(kNobody, mode);
        const FaultyResult run = Convert();
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_NE(folder.ReadFile("out"), "old");
        EXPECT_EQ(Mode(), mode);
        SetUpFile(kNobody, mode);
        EXPECT_EQ(Bake().status, 0);
        EXPECT_EQ(Mode(), mode);
    }
}

TEST_F(ProgramsPermissions, AFileThatOnlyItsGroupMayWriteIsReplacedAgainAndAgain) {
    for (const mode_t mode : {0460u, 0060u}) {
        SetUpFile(kAnother, mode);
        for (int i = 0; i < 2; ++i) {
            const FaultyResult run = Convert();
            EXPECT_EQ(run.status, 0) << run.errors;
            EXPECT_EQ(Mode(), 0660u);
            EXPECT_EQ(Bake().status, 0);
            EXPECT_EQ(Mode(), 0660u);
        }
    }
}

TEST_F(ProgramsPermissions, TheRightsOfAGroupThatCannotBeKeptGoToNoOther) {
    constexpr gid_t kAnotherGroup = 54321;
    SetUpFile(kNobody, 0664, kAnotherGroup);
    const FaultyResult run = Convert();
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Mode(), 0644u);
    SetUpFile(kAnother, 0662, kAnotherGroup);
    EXPECT_EQ(Bake().status, 0);
    EXPECT_EQ(Mode(), 0622u);
}

TEST_F(ProgramsPermissions, AFileThatMayNotBeWrittenIsRefused) {
    for (const mode_t mode : {0000u, 0444u, 0040u}) {
        SetUpFile(kNobody, mode);
        const FaultyResult run = Convert();
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors, "out: error: The file cannot be written: Permission denied\n");
        EXPECT_EQ(folder.ReadFile("out"), "old");
        EXPECT_EQ(Bake().status, 1);
        EXPECT_EQ(folder.ReadFile("out"), "old");
    }
}

}  // namespace
