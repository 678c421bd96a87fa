#include <Platform/FileIdentity.h>

#include "Platform/SystemCalls.h"
#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using Platform::LeadToOneFile;
using Platform::NamesStandardOutput;

/// Names that the system takes for standard output, whatever that is.
const std::string kStandardOutputsNames[] = {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1",
                                             "/proc/thread-self/fd/1",
                                             "/proc/" + std::to_string(getpid()) + "/fd/1"};

TEST(FileIdentity, AnotherSpellingOrLinkLeadsToTheSameFile) {
    const TemporaryFolder folder;
    const std::string file = folder.WriteFile("file", "");
    fs::create_directory(folder.Path("sub"));
    fs::create_symlink("file", folder.Path("link"));
    fs::create_hard_link(file, folder.Path("hard"));
    for (const char* name : {"file", "./file", "sub/../file", "link", "hard"})
        EXPECT_TRUE(LeadToOneFile(file, folder.Path(name))) << name;
}

TEST(FileIdentity, FilesOfOneContentAreTwo) {
    const TemporaryFolder folder;
    EXPECT_FALSE(LeadToOneFile(folder.WriteFile("a", "x"), folder.WriteFile("b", "x")));
    EXPECT_FALSE(LeadToOneFile(folder.Path("a"), folder.Path("none")));
    EXPECT_FALSE(LeadToOneFile(folder.Path("none"), folder.Path("a")));
}

TEST(FileIdentity, FilesOfOneNumberOnTwoDisksAreTwo) {
    const TemporaryFolder folder;
    const std::string a = folder.WriteFile("a", "");
    const std::string b = folder.WriteFile("b", "");
    SystemCalls calls;
    calls.behindLooking = [&](const char* path, struct stat& status) {
        status.st_ino = 7;
        status.st_dev = path == a ? 1 : 2;
    };
    EXPECT_FALSE(LeadToOneFile(a, b));
    EXPECT_TRUE(LeadToOneFile(a, a));
}

TEST(FileIdentity, NamesThatLeadNowhereYetAreOneFileWhenTheyWouldMakeOne) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path("sub"));
    fs::create_directory_symlink("sub", folder.Path("alias"));
    fs::create_symlink("sub/free", folder.Path("link"));
    const std::string free = folder.Path("sub/free");
    for (const char* name : {"sub/free", "sub/./free", "alias/free", "link", "sub//free"})
        EXPECT_TRUE(LeadToOneFile(free, folder.Path(name))) << name;
    EXPECT_TRUE(LeadToOneFile(folder.Path("no/such/free"), folder.Path("no/./such/free")));
    EXPECT_FALSE(LeadToOneFile(free, folder.Path("free")));
}

TEST(FileIdentity, DevicesTakeWhatSeveralNamesSend) {
    EXPECT_FALSE(LeadToOneFile("/dev/null", "/dev/null"));
}

TEST(FileIdentity, WhatCannotBeFollowedIsNoFile) {
    const TemporaryFolder folder;
    fs::create_symlink("loop", folder.Path("loop"));
    EXPECT_FALSE(LeadToOneFile(folder.Path("loop"), folder.Path("loop")));
}

TEST(FileIdentity, StandardOutputHasNamesOfItsOwn) {
    const TemporaryFolder folder;
    fs::create_symlink("/dev/stdout", folder.Path("link"));
    fs::create_symlink("link", folder.Path("further"));
    for (const std::string& name : kStandardOutputsNames)
        EXPECT_TRUE(NamesStandardOutput(name)) << name;
    EXPECT_TRUE(NamesStandardOutput(folder.Path("link")));
    EXPECT_TRUE(NamesStandardOutput(folder.Path("further")));
    folder.WriteFile("1", "");
    for (const std::string name : {"1", "11", "none", "none/1"})
        EXPECT_FALSE(NamesStandardOutput(folder.Path(name))) << name;
    for (const std::string name : {"/dev/fd/2", "/dev/stderr", "/dev/null", ""})
        EXPECT_FALSE(NamesStandardOutput(name)) << name;
}

TEST(FileIdentity, TheFileThatStandardOutputGoesToIsNoNameOfIt) {
    const TemporaryFolder folder;
    const std::string file = folder.WriteFile("file", "");
    const int descriptor = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    bool isName = true;
    {
        const StandardOutput output(descriptor);
        isName = NamesStandardOutput(file);
    }
    EXPECT_FALSE(isName);
    close(descriptor);
}

}  // namespace
