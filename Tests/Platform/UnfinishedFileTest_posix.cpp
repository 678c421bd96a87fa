#include <Platform/ErrorText.h>
#include <Platform/TemporaryFile.h>
#include <Platform/UnfinishedFile.h>

#include "Platform/SystemCalls.h"
#include "Platform/TemporaryFolderName.h"
#include "Support/AccessLists_posix.h"
#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

std::string ContentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

class UnfinishedFile : public testing::Test {
  protected:
    /// Starts a file beside `path`, writes "new" and publishes it.
    int Replace(const std::string& path) {
        if (const int error = file.CreateBeside(path); error != 0) return error;
        if (const int error = file.Write("new", 3); error != 0) return error;
        return file.Publish();
    }

    /// How many files stand in the folder, hidden ones too.
    long CountFiles() const {
        return std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator());
    }

    TemporaryFolder folder;
    Platform::UnfinishedFile file;
};

TEST_F(UnfinishedFile, TheNameLeadsToTheOldContentUntilAllIsWritten) {
    const std::string out = folder.WriteFile("out", "old");
    ASSERT_EQ(file.CreateBeside(out), 0);
    EXPECT_EQ(file.Write("n", 1), 0);
    EXPECT_EQ(file.Write("ew", 2), 0);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(ContentOf(file.GetName()), "new");
    EXPECT_EQ(file.Publish(), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, TheAccessListStays) {
    const std::string out = folder.WriteFile("out", "old");
    if (!SetAccessList(out, AccessListForOneUser())) GTEST_SKIP() << "no access lists here";
    ASSERT_EQ(ModeOf(out), 0660u);
    EXPECT_EQ(Replace(out), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(AccessListOf(out), AccessListForOneUser());
    EXPECT_EQ(ModeOf(out), 0660u);
}

TEST_F(UnfinishedFile, TheFoldersListForNewFilesIsNoneForOneThatIsReplaced) {
    const std::string out = folder.WriteFile("out", "old");
    chmod(out.c_str(), 0660);
    if (!SetAccessList(folder.Path(), AccessListForOneUser(), kAccessListOfNewFiles))
        GTEST_SKIP() << "no access lists here";
    EXPECT_EQ(Replace(out), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(AccessListOf(out), "");
    EXPECT_EQ(ModeOf(out), 0660u);
    EXPECT_EQ(Replace(folder.Path("fresh")), 0);
    EXPECT_EQ(AccessListOf(folder.Path("fresh")), AccessListForOneUser());
}

TEST_F(UnfinishedFile, AListStaysWithAFileThatBecomesItsWritersOwn) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can set this up";
    chmod(folder.Path().c_str(), 0777);
    const std::string out = folder.WriteFile("out", "old");
    if (!SetAccessList(out, AccessListForOneUser())) GTEST_SKIP() << "no access lists here";
    const OrdinaryUser user;
    EXPECT_EQ(Replace(out), 0);
    EXPECT_EQ(AccessListOf(out), AccessListForOneUser());
    EXPECT_EQ(ModeOf(out), 0660u);
}

TEST_F(UnfinishedFile, AFreeNameIsTaken) {
    EXPECT_EQ(Replace(folder.Path("out")), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(UnfinishedFile, AFreeNameIsTakenInAFolderThatLetsNoNameGo) {
    SystemCalls calls;
    calls.inFrontOfRenaming = [] { return EPERM; };
    EXPECT_EQ(Replace(folder.Path("out")), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, AFileIsNotReplacedInAFolderThatLetsNoNameGo) {
    const std::string out = folder.WriteFile("out", "old");
    SystemCalls calls;
    calls.behindLookingCloser = [](struct statx& status) {
        EXPECT_EQ(status.stx_mode & S_IFMT, S_IFDIR);
        status.stx_attributes |= STATX_ATTR_APPEND;
    };
    EXPECT_EQ(file.CreateBeside(out), EPERM);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 1);
    EXPECT_EQ(Replace(folder.Path("new")), 0);
}

TEST_F(UnfinishedFile, NothingIsLeftInAFolderThatLetsNoNameGoWhenTheFreeNameIsTakenMeanwhile) {
    SystemCalls calls;
    calls.behindLookingCloser = [](struct statx& status) {
        status.stx_attributes |= STATX_ATTR_APPEND;
    };
    ASSERT_EQ(file.CreateBeside(folder.Path("out")), 0);
    ASSERT_EQ(file.Write("new", 3), 0);
    folder.WriteFile("out", "of another");
    EXPECT_EQ(file.Publish(), EPERM);
    EXPECT_EQ(folder.ReadFile("out"), "of another");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, AFreeNameStaysFreeWhenAFailureShowsAtTheEnd) {
    SystemCalls calls;
    calls.inFrontOfClosing = [](int) { return EDQUOT; };
    EXPECT_EQ(Replace(folder.Path("out")), EDQUOT);
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(UnfinishedFile, TheOldFileStaysWhenAFailureShowsAtTheEnd) {
    const std::string out = folder.WriteFile("out", "old");
    SystemCalls calls;
    calls.inFrontOfClosing = [](int) { return EDQUOT; };
    EXPECT_EQ(Replace(out), EDQUOT);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, WhatTakesTheFreeNameMeanwhileIsReplaced) {
    ASSERT_EQ(file.CreateBeside(folder.Path("out")), 0);
    ASSERT_EQ(file.Write("new", 3), 0);
    folder.WriteFile("out", "another");
    EXPECT_EQ(file.Publish(), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, WhatIsNotPublishedIsGone) {
    const std::string out = folder.WriteFile("out", "old");
    {
        Platform::UnfinishedFile given;
        ASSERT_EQ(given.CreateBeside(out), 0);
        ASSERT_EQ(given.Write("new", 3), 0);
    }
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, TwoFilesAreUnfinishedAtOnce) {
    Platform::UnfinishedFile other;
    ASSERT_EQ(file.CreateBeside(folder.Path("one")), 0);
    ASSERT_EQ(other.CreateBeside(folder.Path("two")), 0);
    ASSERT_EQ(file.Write("1", 1), 0);
    ASSERT_EQ(other.Write("2", 1), 0);
    EXPECT_EQ(other.Publish(), 0);
    EXPECT_EQ(file.Publish(), 0);
    EXPECT_EQ(folder.ReadFile("one"), "1");
    EXPECT_EQ(folder.ReadFile("two"), "2");
}

TEST_F(UnfinishedFile, APathWithoutAFolderMeansTheWorkingDirectory) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    const int error = Replace("out");
    fs::current_path(before);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
}

TEST_F(UnfinishedFile, ANewFileGetsThePermissionsOfAnyOther) {
    const mode_t mask = umask(027);
    const int error = Replace(folder.Path("out"));
    umask(mask);
    ASSERT_EQ(error, 0);
    EXPECT_EQ(ModeOf(folder.Path("out")), 0640u);
}

TEST_F(UnfinishedFile, ThePermissionsOfTheOldFileAreKept) {
    const std::string out = folder.WriteFile("out", "old");
    chmod(out.c_str(), 0764);
    ASSERT_EQ(Replace(out), 0);
    EXPECT_EQ(ModeOf(out), 0764u);
}

TEST_F(UnfinishedFile, TheRightsOfTheOwnerStayWithTheOwnerOnly) {
    const std::string out = folder.WriteFile("out", "old");
    chmod(folder.Path().c_str(), 0777);
    chmod(out.c_str(), 06777);
    ASSERT_EQ(Replace(out), 0);
    EXPECT_EQ(ModeOf(out), 06777u);
    if (geteuid() != 0) GTEST_SKIP() << "for another user than the owner there is no superuser";
    {
        const OrdinaryUser user;
        ASSERT_EQ(Replace(out), 0);
    }
    EXPECT_EQ(ModeOf(out), 0777u);
}

TEST_F(UnfinishedFile, TheContentIsOnTheDiskBeforeItTakesTheName) {
    const std::string out = folder.WriteFile("out", "old");
    SystemCalls calls;
    int flushes = 0;
    calls.inFrontOfFlushing = [&](int) {
        ++flushes;
        EXPECT_EQ(folder.ReadFile("out"), "old");
        return 0;
    };
    EXPECT_EQ(Replace(out), 0);
    EXPECT_EQ(flushes, 1);
    calls.inFrontOfFlushing = [](int) { return EIO; };
    folder.WriteFile("out", "old");
    EXPECT_EQ(Replace(out), EIO);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, WhoMayWriteAFileOfAnotherAsOneOfItsGroupMayWriteTheNewOne) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can set this up";
    const std::string out = folder.WriteFile("out", "old");
    chmod(folder.Path().c_str(), 0777);
    chmod(out.c_str(), 0060);
    ASSERT_EQ(chown(out.c_str(), 1, getegid()), 0);
    {
        const OrdinaryUser user;
        ASSERT_EQ(Replace(out), 0);
    }
    EXPECT_EQ(ModeOf(out), 0660u);
}

/// A file of a group of which the ordinary user is no member.
class UnfinishedFileOfAnotherGroup : public UnfinishedFile {
  protected:
    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "only the superuser can set this up";
        chmod(folder.Path().c_str(), 0777);
        folder.WriteFile("out", "old");
    }

    void ReplaceAsOrdinaryUser(uid_t owner) {
        ASSERT_EQ(chown(out.c_str(), owner, kAnotherGroup), 0);
        const OrdinaryUser user;
        ASSERT_EQ(Replace(out), 0);
    }

    static constexpr gid_t kAnotherGroup = 54321;
    static constexpr uid_t kNobody = 65534;
    const std::string out = folder.Path("out");
};

TEST_F(UnfinishedFileOfAnotherGroup, HandsItsRightsToNoOtherGroup) {
    struct Case {
        mode_t before;
        mode_t after;
    };
    constexpr uid_t kAnotherUser = 1;
    for (const uid_t owner : {kNobody, kAnotherUser})
        for (const auto& [before, after] : {Case{0660, 0600}, Case{0664, 0644}, Case{0675, 0655},
                                            Case{0662, 0622}, Case{0604, 0604}, Case{0666, 0666}}) {
            chmod(out.c_str(), before);
            ReplaceAsOrdinaryUser(owner);
            EXPECT_EQ(ModeOf(out), after) << owner << std::oct << " " << before;
        }
}

TEST_F(UnfinishedFileOfAnotherGroup, KeepsItsListButForTheRightsOfTheGroup) {
    if (!SetAccessList(out, AccessListForOneUser(6, 4))) GTEST_SKIP() << "no access lists here";
    for (const uid_t owner : {kNobody, 1u}) {
        ASSERT_TRUE(SetAccessList(out, AccessListForOneUser(6, 4)));
        ReplaceAsOrdinaryUser(owner);
        EXPECT_EQ(AccessListOf(out), AccessListForOneUser(4, 4));
        EXPECT_EQ(ModeOf(out), 0664u);
    }
    ASSERT_TRUE(SetAccessList(out, AccessListForOneUser(4, 6)));
    ReplaceAsOrdinaryUser(kNobody);
    EXPECT_EQ(AccessListOf(out), AccessListForOneUser(4, 6));
}

TEST_F(UnfinishedFileOfAnotherGroup, KeepsTheGroupsRightsWhereItsFolderGivesTheGroup) {
    ASSERT_EQ(chown(folder.Path().c_str(), 0, kAnotherGroup), 0);
    ASSERT_EQ(chmod(folder.Path().c_str(), 02777), 0);
    chmod(out.c_str(), 0660);
    ReplaceAsOrdinaryUser(1);
    EXPECT_EQ(ModeOf(out), 0660u);
}

TEST_F(UnfinishedFileOfAnotherGroup, KeepsThemWithTheSuperuser) {
    ASSERT_EQ(chown(out.c_str(), 1, kAnotherGroup), 0);
    chmod(out.c_str(), 0660);
    ASSERT_EQ(Replace(out), 0);
    EXPECT_EQ(ModeOf(out), 0660u);
}

TEST_F(UnfinishedFile, PermissionsThatForbidReadingAndWritingComeInTheEnd) {
    const std::string out = folder.WriteFile("out", "old");
    chmod(folder.Path().c_str(), 0777);
    if (geteuid() == 0) {
        ASSERT_EQ(chown(out.c_str(), 65534, getegid()), 0);
    }
    for (const mode_t mode : {0200u, 0222u, 0000u, 04755u, 02711u}) {
        chmod(out.c_str(), mode);
        {
            const OrdinaryUser user;
            ASSERT_EQ(file.CreateBeside(out), 0);
            std::ofstream(file.GetName()) << "new";
            EXPECT_EQ(ContentOf(file.GetName()), "new");
            EXPECT_EQ(file.Publish(), 0);
        }
        EXPECT_EQ(ModeOf(out), mode);
        chmod(out.c_str(), 0644);
    }
    const std::string fresh = folder.Path("fresh");
    const mode_t mask = umask(0777);
    {
        const OrdinaryUser user;
        EXPECT_EQ(file.CreateBeside(fresh), 0);
        std::ofstream(file.GetName()) << "new";
        EXPECT_EQ(ContentOf(file.GetName()), "new");
        EXPECT_EQ(file.Publish(), 0);
    }
    umask(mask);
    EXPECT_EQ(ModeOf(fresh), 0u);
}

TEST_F(UnfinishedFile, ASignalDoesNotRemoveWhatAnotherMadeUnderAFreshName) {
    folder.WriteFile("out", "old");
    const auto replace = [this] {
        folder.WriteFile(".unfinished-" + std::to_string(getpid()) + "-0", "of another");
        SystemCalls calls;
        int links = 0;
        calls.inFrontOfLinking = [&links] { return ++links == 2 ? raise(SIGTERM) : 0; };
        static_cast<void>(Replace(folder.Path("out")));
    };
    EXPECT_EXIT(replace(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 2);
}

/// Systems that make files without a name and cannot give them one.
class UnfinishedFileWithoutLinks : public UnfinishedFile {
  protected:
    UnfinishedFileWithoutLinks() {
        calls.inFrontOfLinking = [] { return EPERM; };
    }

    /// Replaces "out" by more than is copied at once.
    int ReplaceByMuch() {
        const std::string out = folder.Path("out");
        if (const int error = file.CreateBeside(out); error != 0) return error;
        if (const int error = file.Write(kMuch.data(), kMuch.size()); error != 0) return error;
        return file.Publish();
    }

    const std::string kMuch = std::string(100000, 'x') + "end";
    SystemCalls calls;
};

TEST_F(UnfinishedFileWithoutLinks, GetACopyUnderANameWithAllPermissions) {
    chmod(folder.WriteFile("out", "old").c_str(), 04751);
    ASSERT_EQ(ReplaceByMuch(), 0);
    EXPECT_EQ(folder.ReadFile("out"), kMuch);
    EXPECT_EQ(ModeOf(folder.Path("out")), 04751u);
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFileWithoutLinks, GetACopyThatIsOnTheDiskBeforeItTakesTheName) {
    folder.WriteFile("out", "old");
    struct stat flushed {};
    calls.inFrontOfFlushing = [&](int descriptor) { return fstat(descriptor, &flushed); };
    ASSERT_EQ(ReplaceByMuch(), 0);
    struct stat published {};
    stat(folder.Path("out").c_str(), &published);
    EXPECT_EQ(flushed.st_ino, published.st_ino);
    EXPECT_EQ(flushed.st_size, published.st_size);
}

TEST_F(UnfinishedFileWithoutLinks, KeepTheOldFileWhenTheCopyFails) {
    folder.WriteFile("out", "old");
    int reads = 0;
    calls.inFrontOfReadingAt = [&] { return ++reads == 2 ? EIO : 0; };
    EXPECT_EQ(ReplaceByMuch(), EIO);
    EXPECT_EQ(reads, 2);
    EXPECT_EQ(folder.ReadFile("out"), "old");
    EXPECT_EQ(CountFiles(), 1);
    reads = 0;
    calls.inFrontOfReadingAt = [&] { return ++reads == 2 ? EINTR : 0; };
    EXPECT_EQ(ReplaceByMuch(), 0);
    EXPECT_EQ(folder.ReadFile("out"), kMuch);
}

TEST_F(UnfinishedFile, AsManyLinksAreFollowedAsTheSystemFollows) {
    std::string last = "free";
    for (int i = 1; i <= 40; ++i) {
        const std::string link = "link" + std::to_string(i);
        fs::create_symlink(last, folder.Path(link));
        last = link;
    }
    fs::create_symlink(last, folder.Path("more"));
    EXPECT_EQ(Replace(folder.Path("link40")), 0);
    EXPECT_EQ(folder.ReadFile("free"), "new");
    EXPECT_EQ(file.CreateBeside(folder.Path("more")), ELOOP);
}

TEST_F(UnfinishedFile, ALinkGoesOnLeadingToTheFile) {
    folder.WriteFile("real", "old");
    fs::create_directory(folder.Path("links"));
    fs::create_symlink("../real", folder.Path("links/first"));
    fs::create_symlink("first", folder.Path("links/second"));
    ASSERT_EQ(Replace(folder.Path("links/second")), 0);
    EXPECT_EQ(folder.ReadFile("real"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.Path("links/first")));
    EXPECT_TRUE(fs::is_symlink(folder.Path("links/second")));
}

TEST_F(UnfinishedFile, ALinkToAFreeNameMakesThatFile) {
    fs::create_symlink("real", folder.Path("out"));
    ASSERT_EQ(Replace(folder.Path("out")), 0);
    EXPECT_EQ(folder.ReadFile("real"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.Path("out")));
}

TEST_F(UnfinishedFile, ACircleOfLinksIsTheSystemsErrorAndStays) {
    fs::create_symlink("b", folder.Path("a"));
    fs::create_symlink("a", folder.Path("b"));
    EXPECT_EQ(file.CreateBeside(folder.Path("a")), ELOOP);
    EXPECT_TRUE(fs::is_symlink(folder.Path("a")));
}

TEST_F(UnfinishedFile, AnotherNameOfTheOldFileKeepsTheOldContent) {
    const std::string out = folder.WriteFile("out", "old");
    fs::create_hard_link(out, folder.Path("other"));
    ASSERT_EQ(Replace(out), 0);
    EXPECT_EQ(folder.ReadFile("out"), "new");
    EXPECT_EQ(folder.ReadFile("other"), "old");
}

TEST_F(UnfinishedFile, AFolderIsNotReplaced) {
    fs::create_directory(folder.Path("out"));
    EXPECT_EQ(Replace(folder.Path("out")), EISDIR);
    EXPECT_TRUE(fs::is_directory(folder.Path("out")));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(UnfinishedFile, WhatIsMissingGivesTheSystemsErrorNumber) {
    EXPECT_EQ(file.CreateBeside(folder.Path("none/out")), ENOENT);
}

TEST_F(UnfinishedFile, AFolderWithoutWritePermissionGivesTheSystemsErrorNumber) {
    chmod(folder.Path().c_str(), 0555);
    int error = 0;
    {
        const OrdinaryUser user;
        error = file.CreateBeside(folder.Path("out"));
    }
    chmod(folder.Path().c_str(), 0755);
    EXPECT_EQ(error, EACCES);
}

TEST_F(UnfinishedFile, ATemporaryFileStandsInTheFolderForThemAndGoes) {
    {
        const TemporaryFolderName name(folder.Path());
        Platform::UnfinishedFile temporary;
        EXPECT_EQ(temporary.CreateTemporary(), 0);
        EXPECT_EQ(temporary.Write("text", 4), 0);
        EXPECT_EQ(ContentOf(temporary.GetName()), "text");
        EXPECT_EQ(ModeOf(temporary.GetName()), 0600u);
    }
    EXPECT_EQ(CountFiles(), 0);
    const TemporaryFolderName name(folder.Path("none"));
    EXPECT_EQ(file.CreateTemporary(), ENOENT);
    EXPECT_EQ(Platform::TemporaryFolder(), folder.Path("none"));
}

TEST(ErrorText, TheWordsAreTheSystemsOwn) {
    EXPECT_EQ(Platform::ErrorText(ENOENT), "No such file or directory");
}

}  // namespace
