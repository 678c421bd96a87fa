#include <Platform/FileIdentity.h>
#include <Platform/Paths.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using Platform::FullPath;
using Platform::LeadToOneFile;

TEST(FileIdentity, AnotherSpellingLeadsToTheSameFile) {
    const TemporaryFolder folder;
    const std::string file = folder.WriteFile("file", "");
    fs::create_directory(folder.Path("sub"));
    fs::create_hard_link(file, folder.Path("hard"));
    for (const char* name : {"file", "./file", "sub/../file", "FILE", "sub\\..\\File", "hard"})
        EXPECT_TRUE(LeadToOneFile(file, folder.Path(name))) << name;
}

TEST(FileIdentity, FilesOfOneContentAreTwo) {
    const TemporaryFolder folder;
    EXPECT_FALSE(LeadToOneFile(folder.WriteFile("a", "x"), folder.WriteFile("b", "x")));
    EXPECT_FALSE(LeadToOneFile(folder.Path("a"), folder.Path("none")));
    EXPECT_FALSE(LeadToOneFile(folder.Path("none"), folder.Path("a")));
}

TEST(FileIdentity, NamesThatLeadNowhereYetAreOneFileWhenTheyWouldMakeOne) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path("sub"));
    const std::string free = folder.Path("sub/free");
    for (const char* name : {"sub/free", "sub/./free", "SUB/Free", "sub\\\\free"})
        EXPECT_TRUE(LeadToOneFile(free, folder.Path(name))) << name;
    EXPECT_TRUE(LeadToOneFile(folder.Path("no/such/free"), folder.Path("no/./such/free")));
    EXPECT_FALSE(LeadToOneFile(free, folder.Path("free")));
}

TEST(FileIdentity, FoldersThatAreStillToBeMadeAreReachedBySeveralNames) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path("sub"));
    const auto full = [&folder](const char* name) { return FullPath(folder.Path(name)).value(); };
    const std::string plain = full("no/such/free");
    for (const std::string prefix : {"\\\\?\\", "\\\\.\\", "//?/"}) {
        EXPECT_TRUE(LeadToOneFile(plain, prefix + plain)) << prefix;
        EXPECT_TRUE(LeadToOneFile(prefix + plain, plain)) << prefix;
        EXPECT_TRUE(LeadToOneFile(full("sub/free"), prefix + full("SUB/Free"))) << prefix;
        EXPECT_FALSE(LeadToOneFile(plain, prefix + plain + "r")) << prefix;
        EXPECT_FALSE(LeadToOneFile(plain, prefix + full("no/other/free"))) << prefix;
        EXPECT_FALSE(LeadToOneFile(plain, prefix + full("sub/no/such/free"))) << prefix;
    }
}

TEST(FileIdentity, LettersBeyondAsciiHaveTheirCase) {
    const TemporaryFolder folder;
    const std::string free = folder.Path("\xC3\x8A.bin");
    EXPECT_TRUE(LeadToOneFile(free, folder.Path("\xC3\xAA.bin")));
    EXPECT_FALSE(LeadToOneFile(free, folder.Path("\xC3\x9A.bin")));
}

TEST(FileIdentity, DevicesTakeWhatSeveralNamesSend) {
    EXPECT_FALSE(LeadToOneFile("NUL", "NUL"));
}

TEST(FileIdentity, FoldersAreNoFiles) {
    const TemporaryFolder folder;
    EXPECT_FALSE(LeadToOneFile(folder.Path(), folder.Path()));
}

}  // namespace
