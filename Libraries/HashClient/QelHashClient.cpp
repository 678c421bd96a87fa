#include <HashClient/LocalHash.h>
#include <HashClient/ProxyDatabase.h>
#include <HashClient/ProxyLog.h>
#include <HashClient/ProxyMessage.h>
#include <HashClient/QelHashClient.h>

#include <Platform/Environment.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ProxyHelper.h"

namespace QelHashClient {

namespace {

constexpr char kServerVariable[] = "QEL_HASH_SERVER_NAME";
constexpr std::size_t kNameSize = 260;

using Name = std::array<char, kNameSize>;

struct Library {
    bool initialised = false;
    std::unique_ptr<ProxyHelper> helper;
    Name applicationName{};
    Name resourceName{};
};

Library& State() {
    static Library library;
    return library;
}

void Store(std::string_view text, Name& name) {
    name.fill('\0');
    std::copy_n(text.data(), std::min(text.size(), kNameSize - 1), name.data());
}

bool IsProxyWanted() {
    const std::optional<std::string> server = Platform::Environment(kServerVariable);
    return server.has_value() && !server->empty();
}

QelHashResult AddThroughProxy(ProxyHelper& helper, const char* category, const char* string,
                              std::uint32_t& hash, std::span<char> otherBuffer) {
    const std::size_t size =
        ProxyMessage::ComposeAddString(helper.sendBuffer, State().applicationName.data(),
                                       State().resourceName.data(), category, string);
    if (size == 0) return QelHashResult::IllegalArguments;
    ProxyLog("Proxy command : AddString( \"%s\", \"%s\" )\n", category, string);

    std::uint32_t received = 0;
    if (!helper.Transact({helper.sendBuffer.data(), size}, helper.receiveBuffer, &received))
        return QelHashResult::ProxyError;
    const std::span<const char> reply(helper.receiveBuffer.data(),
                                      std::min<std::size_t>(received, ProxyMessage::kBufferSize));
    std::span<const char> other;
    if (!ProxyMessage::ReadAddStringReply(reply, hash, other)) {
        ProxyLog("Malformed Transact() result in AddString(). (Id:%d)\n\n",
                 static_cast<int>(ProxyMessage::ReplyId(reply)));
        return QelHashResult::ProxyError;
    }
    if (other.data() == nullptr) return QelHashResult::Ok;
    std::copy_n(other.data(), std::min(other.size(), otherBuffer.size() - 1), otherBuffer.data());
    return QelHashResult::HashCollision;
}

QelHashResult ShutDownProxy(ProxyHelper& helper) {
    const std::size_t size = ProxyMessage::ComposeShutdown(helper.sendBuffer);
    ProxyLog("Proxy command : Shutdown()\n");
    std::uint32_t received = 0;
    if (!helper.Transact({helper.sendBuffer.data(), size}, helper.receiveBuffer, &received))
        return QelHashResult::ProxyError;
    const std::uint32_t id = ProxyMessage::ReplyId(
        {helper.receiveBuffer.data(), std::min<std::size_t>(received, ProxyMessage::kBufferSize)});
    if (id == ProxyMessage::kShutdownReply) return QelHashResult::Ok;
    ProxyLog("Malformed Transact() result in Shutdown(). (Id:%d)\n\n", static_cast<int>(id));
    return QelHashResult::ProxyError;
}

}  // namespace

QelHashResult Initialise() {
    Library& library = State();
    if (library.initialised) return QelHashResult::AlreadyInitialised;
    library.initialised = true;
    if (IsProxyWanted()) {
        library.helper = std::make_unique<ProxyHelper>();
        if (library.helper->status == ProxyHelper::Status::SpawnFailed)
            return QelHashResult::SpawnFailed;
        if (library.helper->status == ProxyHelper::Status::ConnectFailed)
            return QelHashResult::ConnectFailed;
    }
    Store("<Unspecified Application>", library.applicationName);
    Store("<Unspecified Resource>", library.resourceName);
    return QelHashResult::Ok;
}

std::optional<std::string> GetLogFile() {
    return IsProxyWanted() ? ProxyLogFile() : std::nullopt;
}

std::vector<std::string> GetDatabaseFiles() {
    return IsProxyWanted() ? ProxyDatabaseFiles() : std::vector<std::string>();
}

QelHashResult Shutdown() {
    Library& library = State();
    if (!library.initialised) return QelHashResult::Ok;
    const QelHashResult result =
        library.helper != nullptr ? ShutDownProxy(*library.helper) : QelHashResult::Ok;
    library.helper.reset();
    library.initialised = false;
    return result;
}

QelHashResult SetApplicationName(const char* name) {
    if (!State().initialised) return QelHashResult::NotInitialised;
    if (name == nullptr) return QelHashResult::IllegalArguments;
    Store(name, State().applicationName);
    return QelHashResult::Ok;
}

QelHashResult AddString(const char* category, const char* string, std::uint32_t& hash, char* other,
                        std::int32_t otherSize) {
    if (!State().initialised) return QelHashResult::NotInitialised;
    if (category == nullptr || string == nullptr || other == nullptr || otherSize <= 0)
        return QelHashResult::IllegalArguments;
    hash = 0;
    const std::span<char> otherBuffer(other, static_cast<std::size_t>(otherSize));
    std::fill(otherBuffer.begin(), otherBuffer.end(), '\0');
    if (State().helper != nullptr)
        return AddThroughProxy(*State().helper, category, string, hash, otherBuffer);
    hash = LocalHash(string);
    return QelHashResult::Ok;
}

const char* GetResultText(QelHashResult result) {
    switch (result) {
        case QelHashResult::Ok:
            return "No error";
        case QelHashResult::HashCollision:
            return "Hash collision";
        case QelHashResult::HashUnknown:
            return "Hash unknown";
        case QelHashResult::NotInitialised:
            return "Library is not initialised";
        case QelHashResult::AlreadyInitialised:
            return "Library is already initialised";
        case QelHashResult::SpawnFailed:
            return "Unable to spawn proxy process";
        case QelHashResult::ConnectFailed:
            return "Unable to connect to proxy process";
        case QelHashResult::ProxyError:
            return "General proxy communication error";
        case QelHashResult::IllegalArguments:
            return "Function was passed illegal arguments";
    }
    return "Unknown error";
}

std::int32_t GetFailureLocation() {
    return State().helper != nullptr ? State().helper->failure.location : 0;
}

std::uint32_t GetFailureError() {
    return State().helper != nullptr ? State().helper->failure.error : 0;
}

}  // namespace QelHashClient
