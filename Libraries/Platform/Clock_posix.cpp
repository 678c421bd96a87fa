#include <Platform/Clock.h>

#include <time.h>

#include <chrono>
#include <ctime>

namespace Platform {

std::uint32_t ClockMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

std::string LocalTimeText() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    char text[9] = "";
    std::strftime(text, sizeof text, "%H:%M:%S", &parts);
    return text;
}

}  // namespace Platform
