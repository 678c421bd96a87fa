#include <Platform/Console.h>

#include <windows.h>

namespace Platform {

std::optional<int> ConsoleWidth() {
    CONSOLE_SCREEN_BUFFER_INFO buffer{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &buffer)) return std::nullopt;
    if (buffer.dwSize.X <= 0) return std::nullopt;
    return buffer.dwSize.X;
}

}  // namespace Platform
