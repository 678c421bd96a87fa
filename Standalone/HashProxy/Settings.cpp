#include "Settings.h"

#include <HashClient/ProxyDatabase.h>
#include <Platform/Environment.h>
#include <Platform/Folders.h>
#include <Platform/Paths.h>
#include <QelTools/Exception.h>

#include <charconv>

using QelTools::Common::Exception;

namespace {

constexpr char kIdleVariable[] = "QEL_HASH_IDLE_SECONDS";
constexpr int kDefaultIdleSeconds = 60;
constexpr int kMostIdleSeconds = 24 * 60 * 60;

std::string DatabaseFile() {
    const auto file = ProxyDatabaseFile();
    if (!file.has_value())
        throw Exception("There is no folder for the user's data; set QEL_HASH_DATABASE");
    const auto full = Platform::FullPath(*file);
    if (!full.has_value()) throw Exception("The database's name cannot be used: " + *file);
    const std::string folder = Platform::FromPath(Platform::ToPath(*full).parent_path());
    if (!Platform::CreateFolders(folder))
        throw Exception("The database's folder cannot be made: " + folder);
    return *full;
}

int IdleSeconds() {
    const std::string text = Platform::Environment(kIdleVariable).value_or("");
    if (text.empty()) return kDefaultIdleSeconds;
    int seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || seconds < 1 ||
        seconds > kMostIdleSeconds)
        throw Exception(std::string(kIdleVariable) + " is not a number of seconds from 1 to " +
                        std::to_string(kMostIdleSeconds) + ": " + text);
    return seconds;
}

}  // namespace

Settings ReadSettings() {
    constexpr int kMillisecondsOfASecond = 1000;
    return {DatabaseFile(), IdleSeconds() * kMillisecondsOfASecond};
}
