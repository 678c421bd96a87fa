#include <HashClient/ProxyLog.h>

#include <Platform/Clock.h>
#include <Platform/Environment.h>
#include <Platform/OwnProgram.h>
#include <Platform/Paths.h>
#include <Platform/SharedLogFile.h>

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
constexpr char kMutex[] = "QelHashProxy_LoggingMutex";
constexpr std::size_t kLineSize = 512;

struct Settings {
    Settings();

    bool on = false;
    std::string program;
    std::uint32_t process = 0;
    std::optional<std::string> fileName;
    std::optional<Platform::SharedLogFile> file;
};

Settings::Settings() {
    const std::optional<std::string> mode = Platform::Environment(kVariable);
    if (!mode.has_value()) return;
    on = true;
    program = Platform::OwnProgramName();
    process = Platform::OwnProcessId();
    if (!mode->starts_with(kFilePrefix)) return;
    const std::string name = mode->substr(kFilePrefix.size());
    fileName = Platform::FullPath(name).value_or(name);
    file.emplace(*fileName, kMutex);
}

const Settings& Log() {
    // Never destroyed: a connection that lives to the end of the process still logs its end.
    static const Settings& settings = *new Settings;
    return settings;
}

}  // namespace

void PrepareProxyLog() {
    Log();
}

const std::optional<std::string>& ProxyLogFile() {
    return Log().fileName;
}

void ProxyLog(const char* format, ...) {
    const Settings& settings = Log();
    if (!settings.on) return;

    std::array<char, kLineSize> text;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    if (length < 0) return;

    std::string line = settings.program + "(" + std::to_string(settings.process) + "," +
                       Platform::LocalTimeText() + "): " + text.data();
    if (line.size() >= kLineSize) line.resize(kLineSize - 1);
    Platform::SendToDebugger(line);
    if (settings.file.has_value()) settings.file->Append(line);
}
