#include <Platform/Clock.h>

#include <time.h>

#include <ctime>

namespace Platform {

static_assert(CLOCKS_PER_SEC == 1000);

// This system's clock() runs with the time of day, not with the time that the processor was used.
std::uint32_t ClockMilliseconds() {
    return static_cast<std::uint32_t>(std::clock());
}

std::string LocalTimeText() {
    char text[9] = "";
    _strtime(text);
    return text;
}

}  // namespace Platform
