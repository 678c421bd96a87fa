#include <Platform/Console.h>

#include <sys/ioctl.h>
#include <unistd.h>

namespace Platform {

std::optional<int> ConsoleWidth() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return std::nullopt;
    return size.ws_col;
}

}  // namespace Platform
