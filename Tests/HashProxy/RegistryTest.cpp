#include "Registry.h"

#include <HashClient/LocalHash.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <thread>

#include "HashProxy/Collision.h"
#include "HashProxy/ProxyFolder.h"

namespace {

class RegistryTest : public testing::Test {
  protected:
    RegistryTest() { std::filesystem::create_directory(folder.Path("data")); }

    static Registry::Answer Add(Registry& registry, const std::string& string,
                                const std::string& category = "joint") {
        return registry.Add({"app.exe", "res\xE9", category, string});
    }

    /// The text of the failure to open the file.
    std::string Refusal(const std::string& path) {
        try {
            Registry registry(path);
        } catch (const QelTools::Common::Exception& failure) {
            return failure.what();
        }
        return "none";
    }

    static std::string Column(const std::string& path, const std::string& expression) {
        Database database(path);
        Statement statement(database, "SELECT " + expression + " FROM strings");
        std::string text;
        while (statement.Step()) text += (text.empty() ? "" : "|") + statement.Text(0);
        return text;
    }

    ProxyFolder folder;
    const std::string file = folder.Database();
};

TEST_F(RegistryTest, AStringHasTheHashOfARunWithoutARegistry) {
    Registry registry(file);
    for (const std::string string : {"joint", "", "\xE9t\xE9", "\x80\xFF"}) {
        const Registry::Answer answer = Add(registry, string);
        EXPECT_EQ(answer.hash, QelHashClient::LocalHash(string));
        EXPECT_FALSE(answer.other.has_value());
    }
    EXPECT_EQ(Add(registry, "joint").hash, 0x620A83F8u);
}

TEST_F(RegistryTest, ARepeatedStringIsNoCollision) {
    Registry registry(file);
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(Add(registry, "hips\xE9").other.has_value());
    EXPECT_EQ(Column(file, "count(*)"), "1");
}

TEST_F(RegistryTest, OfTwoStringsWithOneHashTheFirstStays) {
    for (const std::string prefix : {"", "\xE9"}) {
        const auto [one, two] = CollidingNames(prefix);
        ASSERT_FALSE(one.empty());
        Registry registry(file);
        EXPECT_FALSE(Add(registry, one).other.has_value());
        for (int i = 0; i < 2; ++i) {
            const Registry::Answer answer = Add(registry, two);
            EXPECT_EQ(answer.hash, QelHashClient::LocalHash(two));
            EXPECT_EQ(answer.other, one);
        }
        EXPECT_FALSE(Add(registry, one).other.has_value());
        // Each category is a world of its own.
        EXPECT_FALSE(Add(registry, two, "drivenkeychannel").other.has_value());
        EXPECT_EQ(Add(registry, one, "drivenkeychannel").other, two);
    }
}

TEST_F(RegistryTest, StringsStayForTheNextProcess) {
    const auto [one, two] = CollidingNames();
    {
        Registry registry(file);
        Add(registry, two);
    }
    Registry registry(file);
    EXPECT_EQ(Add(registry, one).other, two);
}

TEST_F(RegistryTest, WhoBroughtAStringFirstStandsBesideIt) {
    const ScopedEnvironment user(kUserVariable, "somebody");
    Registry registry(file);
    Add(registry,
        "h\xFC"
        "fte");
    registry.Add({"other.exe", "", "joint",
                  "h\xFC"
                  "fte"});
    EXPECT_EQ(Column(file,
                     "category || ',' || string || ',' || application || ',' || resource || "
                     "',' || user || ',' || hash"),
              "joint,h\xFC"
              "fte,app.exe,res\xE9,somebody," +
                  std::to_string(QelHashClient::LocalHash("h\xFC"
                                                          "fte")));
    EXPECT_EQ(Column(file, "hex(string)"), "68C3BC667465");
    EXPECT_EQ(Column(file, "abs(julianday('now') - julianday(added)) < 1.0 / 24"), "1");
}

TEST_F(RegistryTest, TwoProcessesOnOneFileSeeEachOther) {
    const auto [one, two] = CollidingNames();
    Registry first(file);
    Registry second(file);
    EXPECT_FALSE(Add(first, one).other.has_value());
    EXPECT_EQ(Add(second, two).other, one);
    EXPECT_FALSE(Add(second, "hips").other.has_value());
    EXPECT_FALSE(Add(first, "hips").other.has_value());
}

TEST_F(RegistryTest, ADatabaseThatIsLockedForAMomentIsWaitedFor) {
    Registry registry(file);
    Database other(file);
    other.Run("BEGIN IMMEDIATE");
    std::thread end([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        other.Run("COMMIT");
    });
    EXPECT_FALSE(Add(registry, "hips").other.has_value());
    end.join();
}

TEST_F(RegistryTest, AFileThatHoldsSomethingElseIsRefused) {
    const std::string otherDatabase = folder.Path("other.sqlite");
    Database(otherDatabase).Run("CREATE TABLE a (b)");
    EXPECT_EQ(Refusal(otherDatabase),
              "The hash registry's database: the file holds something else");
    EXPECT_EQ(Database(otherDatabase).Number("SELECT count(*) FROM sqlite_schema"), 1);
    const std::string text = folder.Path("text");
    std::ofstream(text) << std::string(2000, 'a');
    EXPECT_EQ(Refusal(text), "The hash registry's database: file is not a database");
    EXPECT_EQ(Refusal(folder.Path()), "The hash registry's database: unable to open database file");
    EXPECT_EQ(Refusal(file), "none");
    Database(file).Run("PRAGMA user_version = 2");
    EXPECT_EQ(Refusal(file), "The hash registry's database: the file holds something else");
}

TEST_F(RegistryTest, ADatabaseThatRefusesIsAFailureAndNoAnswer) {
    Registry registry(file);
    EXPECT_FALSE(Add(registry, "hips").other.has_value());
    Database(file).Run(
        "CREATE TRIGGER refuse BEFORE INSERT ON strings BEGIN "
        "SELECT RAISE(ABORT, 'no more'); END");
    for (int i = 0; i < 2; ++i) EXPECT_THROW(Add(registry, "spine"), QelTools::Common::Exception);
    EXPECT_FALSE(Add(registry, "hips").other.has_value());
    Database(file).Run("DROP TRIGGER refuse");
    EXPECT_FALSE(Add(registry, "spine").other.has_value());
    EXPECT_EQ(Column(file, "count(*)"), "2");
}

TEST_F(RegistryTest, AStringThatIsLostBehindTheInsertIsAFailure) {
    Registry registry(file);
    Database(file).Run(
        "CREATE TRIGGER lose AFTER INSERT ON strings BEGIN DELETE FROM strings; END");
    EXPECT_THROW(Add(registry, "spine"), QelTools::Common::Exception);
}

TEST_F(RegistryTest, WhatSomebodyElseWroteIsShownAsFarAsItGoes) {
    Registry registry(file);
    const std::uint32_t hash = QelHashClient::LocalHash("hips");
    Database(file).Run("INSERT INTO strings VALUES ('joint', " + std::to_string(hash) +
                       ", 'a\xC3\xA9\xE2\x82\xAC\xC4\x80z\xC3', '', '', '', '')");
    EXPECT_EQ(Add(registry, "hips").other, "a\xE9??z?");
}

TEST_F(RegistryTest, ARemovedFileIsReplacedByANewOne) {
    if (kIsWindows) GTEST_SKIP() << "this system lets nobody remove a file that is open";
    const auto [one, two] = CollidingNames();
    Registry registry(file);
    EXPECT_FALSE(Add(registry, one).other.has_value());
    for (const char* const end : {"", "-wal", "-shm"}) std::filesystem::remove(file + end);
    EXPECT_FALSE(Add(registry, two).other.has_value());
    EXPECT_EQ(Column(file, "string"), two);
    for (const char* const end : {"", "-wal", "-shm"}) std::filesystem::remove(file + end);
    std::ofstream(file) << std::string(2000, 'a');
    for (int i = 0; i < 2; ++i) EXPECT_THROW(Add(registry, one), QelTools::Common::Exception);
    std::filesystem::remove(file);
    EXPECT_FALSE(Add(registry, one).other.has_value());
    registry.Flush();
    EXPECT_EQ(Column(file, "string"), one);
}

TEST_F(RegistryTest, AFlushChangesNothing) {
    Registry registry(file);
    registry.Flush();
    Add(registry, "hips");
    registry.Flush();
    EXPECT_EQ(Column(file, "string"), "hips");
    EXPECT_EQ(Refusal(file), "none");
}

}  // namespace
