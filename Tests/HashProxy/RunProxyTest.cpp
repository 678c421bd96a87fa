#include <Platform/MessagePipeServer.h>
#include <gtest/gtest.h>

#include <atomic>
#include <list>

#include "Database.h"
#include "HashProxy/Collision.h"
#include "HashProxy/RunProxy.h"

using namespace std::string_literals;
using Platform::MessagePipe;

namespace {

std::string LogText(const std::string& file) {
    return WithLineFeeds(ProxyFolder::Content(file));
}

int Count(const std::string& text, const std::string& words) {
    int count = 0;
    for (std::size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1))
        ++count;
    return count;
}

}  // namespace

TEST_F(RunProxy, AnswersByteForByte) {
    Start();
    const auto pipe = Connected();
    // The four strings, 4, 2, 6 and 5 bytes, end at byte 41.
    const std::string request =
        "\0\0\0\0\x29\0\0\0\x10\0\0\0\x10\0\0\0\x0E\0\0\0\x10\0\0\0app\0r\0joint\0hips\0"s;
    EXPECT_EQ(Ask(*pipe, request), "\0\0\0\x80\x10\0\0\0\xD0\x56\x1C\x81\0\0\0\0"s);
    EXPECT_EQ(Ask(*pipe, kGoodbye), "\2\0\0\x80\x08\0\0\0"s);
    // The connection lasts until the client closes it.
    EXPECT_EQ(Ask(*pipe, request), "\0\0\0\x80\x10\0\0\0\xD0\x56\x1C\x81\0\0\0\0"s);
}

TEST_F(RunProxy, ABadRequestEndsItsClientAloneAndIsTold) {
    environment.Set("QEL_HASH_PROXY_DEBUG_MODE", "file:" + folder.Path("log"));
    Start();
    const auto good = Connected();
    EXPECT_EQ(Ask(*good, kGoodbye).size(), 8u);
    const std::string far = "\0\0\0\0\x1C\0\0\0\x10\0\0\0\x10\0\0\0\x0C\0\0\0\0\0\0\x7F\0\0\0\0"s;
    for (const std::string& request :
         {"\0"s, "\1\0\0\0\x08\0\0\0"s, "\2\0\0\0\x09\0\0\0"s, far, "shutdown"s,
          std::string(ProxyMessage::kBufferSize, '\0'),
          std::string(ProxyMessage::kBufferSize + 1, '\0'), std::string(100'000, 'x')}) {
        const auto bad = Connected();
        EXPECT_EQ(Ask(*bad, request), "gone") << request.size();
        EXPECT_EQ(Ask(*bad, kGoodbye), "gone");
    }
    EXPECT_EQ(Ask(*good, kGoodbye).size(), 8u);
    const std::string log = LogText(folder.Path("log"));
    EXPECT_EQ(Count(log, "): A client was disconnected: its request is malformed\n\n"), 6);
    EXPECT_EQ(Count(log, "): A client was disconnected: its request is longer than 4096 bytes\n\n"),
              2);
}

TEST_F(RunProxy, ACollisionIsAnsweredWithTheStringThatWasThereFirst) {
    const auto [one, two] = CollidingNames();
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Add(one), QelHashResult::Ok);
    EXPECT_EQ(Add(two), QelHashResult::HashCollision);
    EXPECT_EQ(hash, QelHashClient::LocalHash(two));
    EXPECT_EQ(other.data(), one);
    EXPECT_EQ(Add(two, "drivenkeychannel"), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
    // Another run, and another proxy.
    ProxyFolder::Kill(folder.Server());
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Add(two), QelHashResult::HashCollision);
    EXPECT_EQ(other.data(), one);
}

TEST_F(RunProxy, AStringOfTheDatabaseThatNoAnswerHoldsIsToldAsTheReason) {
    environment.Set("QEL_HASH_PROXY_DEBUG_MODE", "file:" + folder.Path("log"));
    Start();
    const auto pipe = Connected();
    EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
    Database(folder.Database())
        .Run(
            "INSERT INTO strings (category, hash, string, application, resource, user) VALUES "
            "('joint', " +
            std::to_string(QelHashClient::LocalHash("hips")) + ", '" + std::string(4096, 'x') +
            "', '', '', '')");
    EXPECT_EQ(
        Ask(*pipe,
            "\0\0\0\0\x29\0\0\0\x10\0\0\0\x10\0\0\0\x0E\0\0\0\x10\0\0\0app\0r\0joint\0hips\0"s),
        "gone");
    EXPECT_NE(LogText(folder.Path("log"))
                  .find("): The hash registry's database: a string is too long for an answer\n\n"),
              std::string::npos);
}

TEST_F(RunProxy, ManyClientsAreServedAtOnce) {
    Start();
    std::list<std::unique_ptr<MessagePipe>> pipes;
    for (int i = 0; i < 100; ++i) pipes.push_back(Connected());
    for (int round = 0; round < 2; ++round)
        for (const auto& pipe : pipes) EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
}

TEST_F(RunProxy, OfFiftyThatStartAtOnceOneServes) {
    // A tool that is there from the start keeps the one at work.
    for (int i = 0; i < 50; ++i) Start();
    const auto pipe = Connected();
    EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
    EXPECT_TRUE(Eventually([&] { return folder.Proxies().size() == 1; }));
    EXPECT_EQ(folder.Proxies(), std::vector<int>{folder.Server()});
    EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
}

TEST_F(RunProxy, ASecondOneStepsAsideWithSuccess) {
    Start();
    const auto pipe = Connected();
    const int server = folder.Server();
    EXPECT_EQ(Run({}), " 0\n");
    EXPECT_EQ(folder.Server(), server);
    EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
}

TEST_F(RunProxy, OneThatEndsInsteadOfAnsweringIsReplaced) {
    auto ending = std::make_unique<Platform::MessagePipeServer>(ProxyMessage::kBufferSize);
    std::uint32_t error = 0;
    ASSERT_EQ(ending->Claim(ProxyMessage::PipeAddress(), error),
              Platform::MessagePipeServer::Claimed::ByUs);
    ASSERT_EQ(ending->Open(), 0u);
    Start();
    const auto question = ending->WaitForMessage(30'000);
    ASSERT_TRUE(question.has_value());
    EXPECT_EQ(question->bytes, kGoodbye);
    ending.reset();
    const auto pipe = Connected();
    EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
}

TEST_F(RunProxy, AKilledProxyLosesNoAnsweredString) {
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    std::atomic<bool> done = false;
    std::jthread killer([&] {
        // A request is tried five times, whatever comes between.
        for (int i = 0; i < 4; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(15));
            const int server = folder.Server();
            EXPECT_GT(server, 0);
            ProxyFolder::Kill(server);
            Start();
        }
        done = true;
    });
    // A proxy that takes longer to come up than a tool waits, or a pipe that breaks in the midst of
    // a request, ends the tool; the next one asks anew.
    int failed = 0;
    std::vector<std::string> answered;
    while (!done || answered.size() < 100) {
        const std::string name = "name" + std::to_string(answered.size());
        if (Add(name) == QelHashResult::Ok) {
            answered.push_back(name);
            continue;
        }
        ASSERT_LT(++failed, 100);
        QelHashClient::Shutdown();
        static_cast<void>(QelHashClient::Initialise());
    }
    killer.join();
    QelHashClient::Shutdown();
    ProxyFolder::Kill(folder.Server());
    Database database(folder.Database());
    Statement check(database, "PRAGMA integrity_check");
    ASSERT_TRUE(check.Step());
    EXPECT_EQ(check.Text(0), "ok");
    Statement find(database, "SELECT 1 FROM strings WHERE category = 'joint' AND string = ?");
    for (const std::string& name : answered) {
        find.Reset();
        find.Bind(1, name);
        EXPECT_TRUE(find.Step()) << name;
    }
}

TEST_F(RunProxy, AProxyThatIsGoneForGoodEndsTheRequest) {
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Add("hips"), QelHashResult::Ok);
    EXPECT_TRUE(Eventually([&] { return folder.Proxies().size() == 1; }));
    ProxyFolder::Kill(folder.Server());
    EXPECT_EQ(Add("spine"), QelHashResult::ProxyError);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 254);
    EXPECT_EQ(QelHashClient::GetFailureError(), kPipeIsNotOpen);
}

TEST_F(RunProxy, EndsWhenNobodyNeedsItAndNotBefore) {
    environment.Set("QEL_HASH_IDLE_SECONDS", "1");
    Start();
    auto pipe = Connected();
    EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
    std::this_thread::sleep_for(std::chrono::milliseconds(1300));
    EXPECT_EQ(Ask(*pipe, kGoodbye).size(), 8u);
    const auto begin = std::chrono::steady_clock::now();
    pipe.reset();
    EXPECT_TRUE(Eventually([&] { return folder.Proxies().empty(); }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(950));
    EXPECT_FALSE(std::filesystem::exists(folder.Path("QelHashProxy_pipe")));
    EXPECT_FALSE(std::filesystem::exists(folder.Database() + "-wal"));
}

TEST_F(RunProxy, ARelativeLogStandsWhereTheProxyWasStarted) {
    std::filesystem::create_directory(folder.Path("start"));
    environment.Set("QEL_HASH_PROXY_DEBUG_MODE", "file:log");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path("start"));
    Start();
    std::filesystem::current_path(before);
    EXPECT_EQ(Ask(*Connected(), "nonsense"), "gone");
    const std::string log = LogText(folder.Path("start/log"));
    EXPECT_NE(log.find("): A client was disconnected: its request is malformed\n\n"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("data/log")));
}

TEST_F(RunProxy, OneThatHoldsThePipeAndNeverAnswersHoldsNobodyForEver) {
    Platform::MessagePipeServer silent(ProxyMessage::kBufferSize);
    std::uint32_t error = 0;
    ASSERT_EQ(silent.Claim(ProxyMessage::PipeAddress(), error),
              Platform::MessagePipeServer::Claimed::ByUs);
    // It may have claimed the pipe alone, or listen without an answer.
    for (const bool listens : {false, true}) {
        if (listens) {
            ASSERT_EQ(silent.Open(), 0u);
        }
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Run({}),
                  "QelHashProxy: Another process holds the pipe and does not answer\n 1\n");
        EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds(9));
    }
}

TEST_F(RunProxy, TheDatabaseStandsInTheUsersDataFolderByDefault) {
    environment.Set(kIsWindows ? "LOCALAPPDATA" : "XDG_DATA_HOME", folder.Path("home"));
    environment.Set("QEL_HASH_DATABASE", "");
    Start();
    EXPECT_EQ(Ask(*Connected(), kGoodbye).size(), 8u);
    EXPECT_TRUE(std::filesystem::exists(folder.Path("home/QelHashProxy/registry.sqlite")));
}

TEST_F(RunProxy, ADatabaseThatCannotBeUsedIsToldAndNoToolIsLetIn) {
    const std::string log = folder.Path("log");
    EXPECT_EQ(Run({{"QEL_HASH_DATABASE", folder.Path()}}),
              "QelHashProxy: The hash registry's database: unable to open database file\n 1\n");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("QelHashProxy_pipe")));
    folder.WriteFile("out", "");
    const std::string outFile = WithSeparators(folder.Path("out"));
    EXPECT_EQ(Run({{"QEL_HASH_DATABASE", folder.Path("out/file")},
                   {"QEL_HASH_PROXY_DEBUG_MODE", "file:" + log}}),
              "QelHashProxy: The database's folder cannot be made: " + outFile + "\n 1\n");
    EXPECT_NE(LogText(log).find("): The database's folder cannot be made: " + outFile + "\n\n"),
              std::string::npos);
    EXPECT_EQ(
        Run({{"HOME", ""}, {"LOCALAPPDATA", ""}, {"XDG_DATA_HOME", ""}, {"QEL_HASH_DATABASE", ""}}),
        "QelHashProxy: There is no folder for the user's data; set QEL_HASH_DATABASE\n 1\n");
}

TEST_F(RunProxy, IdleSecondsAreAWholeNumber) {
    for (const char* const value : {"0", "-1", "1.5", "x", "86401", "99999999999"})
        EXPECT_EQ(Run({{"QEL_HASH_IDLE_SECONDS", value}}),
                  std::string("QelHashProxy: QEL_HASH_IDLE_SECONDS is not a number of seconds from "
                              "1 to 86400: ") +
                      value + "\n 1\n");
}

TEST_F(RunProxy, HelpAndVersionStartNothing) {
    EXPECT_EQ(Run({}, {"--version"}), "QelHashProxy 1.28.3\n 0\n");
    const std::string help = Run({}, {"--help"});
    EXPECT_NE(help.find("QEL_HASH_DATABASE"), std::string::npos);
    EXPECT_NE(help.find("QEL_HASH_IDLE_SECONDS"), std::string::npos);
    EXPECT_EQ(help.substr(help.size() - 3), " 0\n");
    const std::string wrong = Run({}, {"serve"});
    EXPECT_EQ(wrong.substr(wrong.size() - 3), " 2\n");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("QelHashProxy_pipe.lock")));
}
