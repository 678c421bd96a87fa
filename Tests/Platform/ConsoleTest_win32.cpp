#include <Platform/Console.h>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

/// Another handle as the system's standard output while it lives.
class SystemOutput {
  public:
    explicit SystemOutput(HANDLE handle) : before(GetStdHandle(STD_OUTPUT_HANDLE)) {
        SetStdHandle(STD_OUTPUT_HANDLE, handle);
    }
    SystemOutput(const SystemOutput&) = delete;
    SystemOutput& operator=(const SystemOutput&) = delete;
    ~SystemOutput() { SetStdHandle(STD_OUTPUT_HANDLE, before); }

  private:
    HANDLE before;
};

TEST(ConsoleWidth, IsNothingWithoutAConsoleWhateverTheEnvironmentSays) {
    setenv("COLUMNS", "33", 1);
    const HANDLE file = CreateFileA("NUL", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    {
        const SystemOutput output(file);
        EXPECT_EQ(Platform::ConsoleWidth(), std::nullopt);
    }
    CloseHandle(file);
    const SystemOutput none(nullptr);
    EXPECT_EQ(Platform::ConsoleWidth(), std::nullopt);
}

}  // namespace
