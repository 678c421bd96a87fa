#include "ProxyLog.h"

#include <Platform/Clock.h>
#include <Platform/Environment.h>
#include <Platform/OwnProgram.h>

#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr char kVariable[] = "QEL_HASH_PROXY_DEBUG_MODE";
constexpr std::string_view kFilePrefix = "file:";
constexpr std::size_t kLineSize = 512;

struct Settings {
    bool on = false;
    std::string program;
    std::uint32_t process = 0;
    std::string file;
};

Settings ReadSettings() {
    Settings settings;
    const std::optional<std::string> mode = Platform::Environment(kVariable);
    if (!mode.has_value()) return settings;
    settings.on = true;
    const std::string path = Platform::OwnProgramFile();
    settings.program = path.substr(path.find_last_of("/\\") + 1);
    settings.process = Platform::OwnProcessId();
    if (mode->starts_with(kFilePrefix)) settings.file = mode->substr(kFilePrefix.size());
    return settings;
}

// One append of less than a block: lines of several processes do not mix.
void AppendToFile(const std::string& path, std::string_view line) {
    std::FILE* file = std::fopen(path.c_str(), "a+");
    if (file == nullptr) return;
    std::fwrite(line.data(), 1, line.size(), file);
    std::fclose(file);
}

}  // namespace

void ProxyLog(const char* format, ...) {
    // Never destroyed: a connection that lives to the end of the process still logs its end.
    static const Settings& settings = *new Settings(ReadSettings());
    if (!settings.on || settings.file.empty()) return;

    std::array<char, kLineSize> text;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    if (length < 0) return;

    std::string line = settings.program + "(" + std::to_string(settings.process) + "," +
                       Platform::LocalTimeText() + "): " + text.data();
    if (line.size() >= kLineSize) line.resize(kLineSize - 1);
    AppendToFile(settings.file, line);
}
