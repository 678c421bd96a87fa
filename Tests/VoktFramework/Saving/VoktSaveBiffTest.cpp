#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomBiff.h>
#include <VoktFramework/Atoms/VoktAtomString.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktMakeWriteableHandler.h>
#include <VoktFramework/Saving/VoktSaveBiff.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"
#include "Support/ThrownText.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kLittle = "\x04\x03\x02\x01";
constexpr const char* kBig = "\x01\x02\x03\x04";

class Saver : public VoktSaveBiff {
  public:
    Saver() : VoktSaveBiff(0) {}
    using VoktSaveBiff::biffName;
    using VoktSaveBiff::endian;
    using VoktSaveBiff::forceWrite;
};

class SaveBiff : public testing::Test {
  protected:
    SaveBiff() {
        auto start = std::make_unique<VoktAtomString>();
        start->value = folder.Path();
        universe.Add(std::move(start), "VoktTool_cwd");
    }
    void AddBiff(const std::string& name, std::uint32_t word) {
        auto atom = std::make_unique<VoktAtomBiff>();
        atom->block.AppendU32(word);
        universe.Add(std::move(atom), name);
    }
    void Read(const std::vector<std::string>& words) {
        VoktCommandLineSyntax syntax;
        saver.AddFlags(syntax);
        std::vector<const char*> argv;
        for (const std::string& word : words) argv.push_back(word.c_str());
        syntax.Parse(static_cast<int>(argv.size()), argv.data(), 0);
        saver.ReadFlags(syntax);
        saver.Validate();
    }
    void Run(const std::vector<std::string>& words) {
        Read(words);
        saver.Process(universe);
    }
    template <class Work>
    std::string Failure(Work work) {
        return ThrownText<QelTools::Common::Exception>(work);
    }

    TemporaryFolder folder;
    VoktUniverse universe;

  private:
    // Its destructor may throw, which a member's of a test must not.
    std::unique_ptr<Saver> ownedSaver = std::make_unique<Saver>();

  protected:
    Saver& saver = *ownedSaver;
};

// A layout of one word stands in the universe.
class SaveOneWord : public SaveBiff {
  protected:
    SaveOneWord() { AddBiff("skeleton", 0x01020304); }
};

// The id of the error that leaves `work`; 0 when none does.
template <class Work>
int ThrownId(Work work) {
    try {
        work();
    } catch (const VoktError& error) {
        return error.GetId();
    }
    return 0;
}

}  // namespace

TEST_F(SaveOneWord, LittleEndianIsTheDefault) {
    Run({"-out", "x.bin"});
    EXPECT_EQ(folder.ReadFile("x.bin"), kLittle);
}

TEST_F(SaveOneWord, BigEndianOnDemand) {
    Run({"-o", "x.bin", "-be"});
    EXPECT_EQ(folder.ReadFile("x.bin"), kBig);
}

TEST_F(SaveOneWord, BothFormsGetTheirSuffixBehindTheWholeName) {
    Run({"-out", "x.bin", "-bothendian"});
    EXPECT_EQ(folder.ReadFile("x.binLE"), kLittle);
    EXPECT_EQ(folder.ReadFile("x.binBE"), kBig);
    EXPECT_FALSE(folder.Has("x.bin"));
}

TEST_F(SaveOneWord, SuffixesCanBeChosen) {
    Run({"-out", "x", "-ble", "-littlesuffix", ".pc", "-bs", ""});
    EXPECT_EQ(folder.ReadFile("x.pc"), kLittle);
    EXPECT_EQ(folder.ReadFile("x"), kBig);
}

TEST_F(SaveOneWord, EqualSuffixesAreRefusedForBothForms) {
    const std::string text = "Big- and little-endian suffixes are the same.\n";
    EXPECT_EQ(Failure([&] { Read({"-out", "x", "-ble", "-ls", "a", "-bs", "a"}); }), text);
    EXPECT_EQ(Failure([&] { Read({"-out", "x", "-ble", "-ls", "", "-bs", ""}); }), text);
}

TEST_F(SaveOneWord, SuffixesDoNotMatterForOneForm) {
    Run({"-out", "x", "-ls", "a", "-bs", "a"});
    EXPECT_EQ(folder.ReadFile("x"), kLittle);
}

TEST_F(SaveOneWord, BothWinsOverBigAndBigOverLittle) {
    Read({"-out", "x", "-bothendian", "-bigendian", "-littleendian"});
    EXPECT_EQ(saver.endian, 3u);
    Saver other;
    other.SetFlag("-out", "x");
    VoktCommandLineSyntax syntax;
    other.AddFlags(syntax);
    const char* argv[] = {"-be", "-le", "-out", "x"};
    syntax.Parse(4, argv, 0);
    other.ReadFlags(syntax);
    EXPECT_EQ(other.endian, 2u);
}

TEST_F(SaveOneWord, AnUnknownByteOrderIsAFault) {
    Read({"-out", "x"});
    saver.endian = 4;
    EXPECT_EQ(Failure([&] { saver.Process(universe); }), "Internal error - please report as a bug");
}

TEST_F(SaveOneWord, MissingFoldersAreMade) {
    Run({"-out", "a/b\\c/x.bin"});
    EXPECT_EQ(folder.ReadFile("a/b/c/x.bin"), kLittle);
}

TEST_F(SaveOneWord, AFolderInThePlaceOfTheFileCannotBeOpened) {
    fs::create_directory(folder.Path("x"));
    Read({"-out", "x"});
    try {
        saver.Process(universe);
        FAIL() << "nothing was thrown";
    } catch (const VoktError& error) {
        EXPECT_EQ(error.GetId(), 204);
        EXPECT_EQ(error.GetCauseMessage(), "Failed to open file for Biff write.");
    }
}

TEST_F(SaveOneWord, AFileInThePlaceOfTheFolderIsNamed) {
    folder.WriteFile("taken", "");
    Read({"-out", "taken/x"});
    EXPECT_EQ(Failure([&] { saver.Process(universe); }),
              "Cannot create folder '" + WithSeparators(folder.Path("taken")) +
                  "' since a file of that name already exists");
}

TEST_F(SaveOneWord, AFullDiskIsAFailure) {
    if (!fs::is_character_file("/dev/full")) GTEST_SKIP() << "there is no device that is full";
    Read({"-out", "/dev/full"});
    EXPECT_EQ(Failure([&] { saver.Process(universe); }),
              "Failed to write \"/dev/full\": No space left on device.");
}

TEST_F(SaveOneWord, AFailureBetweenTheTwoFilesLeavesTheFirst) {
    fs::create_directory(folder.Path("xBE"));
    Read({"-out", "x", "-ble"});
    EXPECT_THROW(saver.Process(universe), VoktError);
    EXPECT_EQ(folder.ReadFile("xLE"), kLittle);
}

TEST_F(SaveOneWord, AReadOnlyOutputIsRefused) {
    fs::permissions(folder.Path(), fs::perms::all);
    const OrdinaryUser user;
    const std::string locked = folder.WriteFile("locked", "kept");
    fs::permissions(locked, fs::perms::owner_read);
    const std::string text = "Output file \"" + locked + "\" is not writeable.\n";
    EXPECT_EQ(Failure([&] { Read({"-out", locked}); }), text);
    EXPECT_EQ(Failure([&] { Read({"-out", locked, "-forceWrite", "0"}); }), text);
    EXPECT_EQ(Failure([&] {
                  Read({"-out", folder.Path() + "\\locked"});
              }),
              "Output file \"" + folder.Path() + "\\locked\" is not writeable.\n");
    EXPECT_EQ(folder.ReadFile("locked"), "kept");
}

TEST_F(SaveOneWord, AnOutputThatCannotBeReadEitherIsOpenedByForceAlone) {
    if (kIsWindows) GTEST_SKIP() << "a file always grants its owner to read here";
    fs::permissions(folder.Path(), fs::perms::all);
    const OrdinaryUser user;
    const std::string closed = folder.WriteFile("closed", "old");
    fs::permissions(closed, fs::perms::none);
    EXPECT_EQ(ThrownId([&] { Run({"-out", closed}); }), 204);
    EXPECT_EQ(fs::status(closed).permissions(), fs::perms::none);
    Run({"-out", closed, "-forceWrite", "1"});
    EXPECT_EQ(folder.ReadFile("closed"), kLittle);
}

TEST_F(SaveOneWord, ForceLeavesTheRightsOfAFileThatCanBeWritten) {
    if (kIsWindows) GTEST_SKIP() << "a file has one right here, that to write";
    const std::string open = folder.WriteFile("open", "old");
    const fs::perms writable =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    fs::permissions(open, writable);
    {
        // Of somebody else's file the rights cannot be changed at all.
        const OrdinaryUser user;
        Run({"-out", open, "-forceWrite", "1"});
    }
    EXPECT_EQ(fs::status(open).permissions(), writable);
    EXPECT_EQ(fs::file_size(open), 4u);
}

TEST_F(SaveOneWord, AReadOnlyOutputIsWrittenByForce) {
    fs::permissions(folder.Path(), fs::perms::all);
    const OrdinaryUser user;
    const std::string locked = folder.WriteFile("locked", "old");
    fs::permissions(locked, fs::perms::owner_read | fs::perms::group_exec);
    Run({"-out", locked, "-forceWrite", "1"});
    EXPECT_EQ(folder.ReadFile("locked"), kLittle);
    // Systems with one right for a file give it to all.
    if (!kIsWindows) {
        EXPECT_EQ(fs::status(locked).permissions(),
                  fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_exec);
    }
}

TEST_F(SaveOneWord, ANewFileIsWrittenByForceAsWell) {
    Run({"-out", "new", "-fw", "true"});
    EXPECT_EQ(folder.ReadFile("new"), kLittle);
}

TEST_F(SaveBiff, WithoutALayoutThereIsNothingToSave) {
    Read({"-out", "x"});
    EXPECT_EQ(Failure([&] { saver.Process(universe); }), "VoktSaveBiff unable to find a Biff");
    EXPECT_FALSE(folder.Has("x"));
}

TEST_F(SaveBiff, SeveralLayoutsNeedAName) {
    AddBiff("a", 1);
    AddBiff("b", 0x01020304);
    Read({"-out", "x"});
    EXPECT_EQ(Failure([&] { saver.Process(universe); }), "FetchByType() found non-unique object");
    saver.biffName = "b";
    saver.Process(universe);
    EXPECT_EQ(folder.ReadFile("x"), kLittle);
    saver.biffName = "c";
    EXPECT_EQ(Failure([&] { saver.Process(universe); }), "VoktSaveBiff unable to find a Biff");
}

TEST_F(SaveBiff, AnOutputMustBeNamed) {
    EXPECT_EQ(Failure([&] { Read({"-out", ""}); }), "No output filename provided.\n");
    EXPECT_EQ(ThrownText<VoktCommandLineSyntax::Exception>([&] { Read({}); }),
              "A required flag \"-out\" was not set.");
}

TEST_F(SaveBiff, OnlyZeroAndLowerCaseFalseDoNotForce) {
    for (const char* value : {"0", "false"}) {
        saver.forceWrite = true;
        saver.SetFlag("-forceWrite", value);
        EXPECT_FALSE(saver.forceWrite) << value;
    }
    for (const char* value : {"1", "true", "FALSE", ""}) {
        saver.forceWrite = false;
        saver.SetFlag("-forceWrite", value);
        EXPECT_TRUE(saver.forceWrite) << value;
    }
}

TEST_F(SaveBiff, AnUnknownFlagIsReportedByName) {
    try {
        saver.SetFlag("-fw", "1");
        FAIL() << "nothing was thrown";
    } catch (const VoktError& error) {
        EXPECT_EQ(error.GetId(), 200);
        EXPECT_EQ(error.GetCauseMessage(), "-fw");
    }
}

TEST(SaveBiffFlags, HiddenFlagsAreNotDeclared) {
    VoktCommandLineSyntax syntax;
    VoktSaveBiff saver(1);
    saver.AddFlags(syntax);
    const char* argv[] = {"-out"};
    EXPECT_EQ(ThrownText<VoktCommandLineSyntax::Exception>([&] { syntax.Parse(1, argv, 0); }),
              "Unknown flag \"-out\".");
}
