#include "ProxyHelper.h"

#include <cerrno>

#include "ProxyLog.h"

namespace {

constexpr char kCommandLine[] = "QelHashProxy.exe";
constexpr int kRetries = 4;

// Users and scripts know these numbers from messages; they stay as they are.
constexpr std::int32_t kSpawnLocation = 58;
constexpr std::int32_t kBrokenPipeLocation = 228;
constexpr std::int32_t kUnhandledLocation = 254;
constexpr std::int32_t kRetriesLocation = 262;

}  // namespace

ProxyHelper::ProxyHelper() : pipe(MakeProxyTransport()) {
    const std::uint32_t error = pipe != nullptr ? pipe->Spawn(kCommandLine) : ENOENT;
    if (error != 0) {
        failure = {kSpawnLocation, error};
        ProxyLog("Failed during CreateProcess() for %s with error code %d\n\n", kCommandLine,
                 static_cast<int>(error));
        status = Status::SpawnFailed;
        return;
    }
    ProxyLog("Successful CreateProcess() for %s\n", kCommandLine);
    if (!Connect()) status = Status::ConnectFailed;
}

ProxyHelper::~ProxyHelper() {
    if (!IsOpen()) return;
    ProxyLog("Closing proxy connection %08x\n", pipe->Handle());
    pipe->Close();
}

bool ProxyHelper::Connect() {
    failure = {};
    if (pipe == nullptr) return false;
    if (pipe->IsOpen()) {
        ProxyLog("Closing old pipe %08x prior to ProxyHelper::Connect\n", pipe->Handle());
        pipe->Close();
    }
    if (!pipe->Open(failure)) {
        ProxyLog("Failed to establish connection to proxy\n\n");
        return false;
    }
    ProxyLog("Successfully established connection to proxy (%08x)\n", pipe->Handle());
    return true;
}

bool ProxyHelper::Transact(std::span<const char> request, std::span<char> reply,
                           std::uint32_t* bytesRead) {
    if (bytesRead != nullptr) *bytesRead = 0;
    failure = {};
    std::uint32_t error = 0;
    int retries = kRetries;
    for (; retries >= 0; --retries) {
        std::uint32_t received = 0;
        const std::uint32_t handle = HandleForLog();
        ProxyExchange exchange = ProxyExchange::Failed;
        if (IsOpen())
            exchange = pipe->Exchange(request, reply, received, error);
        else
            error = EBADF;
        if (exchange == ProxyExchange::Done) {
            if (bytesRead != nullptr) *bytesRead = received;
            return true;
        }
        failure = {kBrokenPipeLocation, error};
        if (exchange == ProxyExchange::Failed) {
            failure.location = kUnhandledLocation;
            ProxyLog("TransactNamedPipe for %08x failed with unhandled error %d\n\n", handle,
                     static_cast<int>(error));
            return false;
        }
        ProxyLog(
            "TransactNamedPipe for %08x failed with ERROR_PIPE_NOT_CONNECTED. Retrying "
            "connection.\n",
            handle);
        Connect();
    }
    failure = {kRetriesLocation, error};
    ProxyLog("TransactNamedPipe for %08x returned with error %d (connectRetryCount = %d)\n\n",
             HandleForLog(), static_cast<int>(error), retries);
    return false;
}
