#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <HashClient/ProxyLog.h>
#include <Platform/OwnProgram.h>

#include "Support/ThisSystem.h"

namespace {

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios_base::binary);
    return WithLineFeeds(std::string(std::istreambuf_iterator<char>(file), {}));
}

// The text with each row of digits as one "#".
std::string DigitsHidden(const std::string& text) {
    std::string hidden;
    for (const char c : text) {
        const bool digit = c >= '0' && c <= '9';
        if (!digit)
            hidden.push_back(c);
        else if (hidden.empty() || hidden.back() != '#')
            hidden.push_back('#');
    }
    return hidden;
}

// The log reads its variable once in a process, so each case runs in a process of its own: what
// `write` does with the variable set to `mode` ends in the file that comes back.
template <class Write>
std::string Logged(const char* mode, const std::filesystem::path& file, Write write) {
    const auto run = [&] {
        if (mode != nullptr) setenv("QEL_HASH_PROXY_DEBUG_MODE", mode, 1);
        write();
        std::exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "^$");
    return Content(file);
}

class ProxyLogDeathTest : public testing::Test {
  protected:
    ProxyLogDeathTest() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        path =
            std::filesystem::temp_directory_path() / (std::string("ProxyLogTest.") + test->name());
        std::filesystem::remove(path);
    }
    ~ProxyLogDeathTest() override { std::filesystem::remove(path); }

    std::string Mode() const { return "file:" + path.string(); }

    std::filesystem::path path;
};

}  // namespace

TEST_F(ProxyLogDeathTest, LinesBeginWithProgramProcessAndTime) {
    const std::string log = Logged(Mode().c_str(), path, [] {
        ProxyLog("Malformed Transact() result in %s(). (Id:%d)\n\n", "AddString", 5);
        ProxyLog("100%%\n");
    });
    const std::string start = Platform::OwnProgramName() + "(#,#:#:#): ";
    EXPECT_EQ(DigitsHidden(log),
              start + "Malformed Transact() result in AddString(). (Id:#)\n\n" + start + "#%\n");
    EXPECT_NE(log.find(" (Id:5)\n\n"), std::string::npos);
    EXPECT_NE(log.find("): 100%\n"), std::string::npos);
}

TEST_F(ProxyLogDeathTest, TheNumberIsTheProcessAndTheTimeIsLocal) {
    if (kIsWindows) GTEST_SKIP() << "there is one time zone for all processes there";
    // Five hours ahead of Greenwich, wherever the tests run.
    const auto timeThere = [](std::time_t now) {
        now += 5 * 60 * 60;
        char text[9];
        std::strftime(text, sizeof text, "%H:%M:%S", std::gmtime(&now));
        return std::string(text);
    };
    const std::time_t begin = std::time(nullptr);
    const std::string log = Logged(Mode().c_str(), path, [] {
        setenv("TZ", "EAST-5", 1);
        ProxyLog("%u\n", Platform::OwnProcessId());
    });
    bool found = false;
    const std::string process = log.substr(log.rfind(' ') + 1, log.size() - log.rfind(' ') - 2);
    for (std::time_t now = begin; now <= std::time(nullptr); ++now)
        found = found || log == Platform::OwnProgramName() + "(" + process + "," + timeThere(now) +
                                    "): " + process + "\n";
    EXPECT_TRUE(found) << log;
}

TEST_F(ProxyLogDeathTest, LinesAreAddedToTheFile) {
    std::ofstream(path) << "before\n";
    const std::string log = Logged(Mode().c_str(), path, [] { ProxyLog("behind\n"); });
    EXPECT_EQ(log.substr(0, 7), "before\n");
    EXPECT_EQ(log.substr(log.size() - 9), ": behind\n");
}

TEST_F(ProxyLogDeathTest, ARelativeNameCountsFromTheFirstFolder) {
    const std::string mode = "file:" + path.filename().string();
    const std::string log = Logged(mode.c_str(), path, [] {
        std::filesystem::current_path(std::filesystem::temp_directory_path());
        PrepareProxyLog();
        std::filesystem::current_path("/");
        ProxyLog("from elsewhere\n");
    });
    EXPECT_NE(log.find("): from elsewhere\n"), std::string::npos);
}

TEST_F(ProxyLogDeathTest, LongLinesAreCut) {
    const std::string log =
        Logged(Mode().c_str(), path, [] { ProxyLog("%s\n", std::string(2000, 'x').c_str()); });
    EXPECT_EQ(log.size(), 511u);
}

TEST_F(ProxyLogDeathTest, LaterChangesOfTheVariableHaveNoEffect) {
    const std::string mode = Mode();
    const std::string log = Logged(nullptr, path, [&] {
        unsetenv("QEL_HASH_PROXY_DEBUG_MODE");
        ProxyLog("one\n");
        setenv("QEL_HASH_PROXY_DEBUG_MODE", mode.c_str(), 1);
        ProxyLog("two\n");
    });
    EXPECT_EQ(log, "");
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ProxyLogDeathTest, AFileThatCannotBeOpenedIsPassedOver) {
    Logged("file:/nowhere/at/all", path, [] { ProxyLog("text\n"); });
    Logged("1", path, [] { ProxyLog("text\n"); });
    EXPECT_FALSE(std::filesystem::exists(path));
}
