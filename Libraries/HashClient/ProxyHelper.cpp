#include "ProxyHelper.h"

#include <HashClient/ProxyLog.h>

namespace {

constexpr char kCommandLine[] = "QelHashProxy.exe";
constexpr std::uint32_t kTimeToConnect = 2000;  // milliseconds, as is the wait
constexpr int kWaitForPipe = 500;
constexpr int kRetries = 4;
constexpr std::uint32_t kNoPipe = 0xFFFFFFFFu;

// Users and scripts know these numbers from messages; they stay as they are.
constexpr std::int32_t kSpawnLocation = 58;
constexpr std::int32_t kWaitLocation = 141;
constexpr std::int32_t kMessageModeLocation = 151;
constexpr std::int32_t kSetTimerLocation = 165;
constexpr std::int32_t kCreateTimerLocation = 174;
constexpr std::int32_t kBrokenPipeLocation = 228;
constexpr std::int32_t kUnhandledLocation = 254;
constexpr std::int32_t kRetriesLocation = 262;

void LogError(const char* format, std::uint32_t error) {
    ProxyLog(format, static_cast<int>(error));
}

}  // namespace

ProxyHelper::ProxyHelper() : transport(MakeProxyTransport()) {
    if (const std::uint32_t error = transport->Spawn(kCommandLine); error != 0) {
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
    if (!isOpen) return;
    ProxyLog("Closing proxy connection %08x\n", transport->PipeNumber());
    transport->ClosePipe();
}

std::uint32_t ProxyHelper::NumberForLog() const {
    return isOpen ? transport->PipeNumber() : kNoPipe;
}

bool ProxyHelper::Connect() {
    failure = {};
    if (isOpen) {
        ProxyLog("Closing old pipe %08x prior to ProxyHelper::Connect\n", transport->PipeNumber());
        transport->ClosePipe();
        isOpen = false;
    }
    if (const std::uint32_t error = transport->CreateTimer(); error != 0) {
        failure = {kCreateTimerLocation, error};
        LogError("Failed during SetWaitableTimer for proxy connection attempt, with error %d\n\n",
                 error);
    } else {
        OpenWithinTheTime();
        transport->CloseTimer();
    }
    if (!isOpen) {
        ProxyLog("Failed to establish connection to proxy\n\n");
        return false;
    }
    ProxyLog("Successfully established connection to proxy (%08x)\n", transport->PipeNumber());
    return true;
}

void ProxyHelper::OpenWithinTheTime() {
    if (const std::uint32_t error = transport->SetTimer(kTimeToConnect); error != 0) {
        failure = {kSetTimerLocation, error};
        LogError("Failed in SetWaitableTimer() for proxy connection attempt, with error %d\n\n",
                 error);
        return;
    }
    while (!OpenOnce()) {
    }
}

// One round; true when it was the last.
bool ProxyHelper::OpenOnce() {
    ProxyLog("Attempting to CreateFile() on the pipe\n");
    if (const std::uint32_t error = transport->OpenPipe(); error != 0) return TimeIsUp(error);
    const std::uint32_t error = transport->SetMessageMode();
    if (error == 0) return isOpen = true;
    failure = {kMessageModeLocation, error};
    LogError("Failed in SetNamedPipeHandleState() for proxy connection attempt, with error %d\n\n",
             error);
    transport->ClosePipe();
    // A pipe that never takes the mode would keep the rounds going for ever.
    return transport->TimerHasFired();
}

// The wait's own failure says more than that of the open before it.
bool ProxyHelper::TimeIsUp(std::uint32_t openError) {
    const std::uint32_t waitError = transport->WaitForPipe(kWaitForPipe);
    if (!transport->TimerHasFired()) return false;
    const std::uint32_t error = waitError != 0 ? waitError : openError;
    failure = {kWaitLocation, error};
    LogError("Failed to wait for the proxy pipe, with error %d\n\n", error);
    return true;
}

bool ProxyHelper::Transact(std::span<const char> request, std::span<char> reply,
                           std::uint32_t* bytesRead) {
    if (bytesRead != nullptr) *bytesRead = 0;
    failure = {};
    std::uint32_t error = 0;
    int retries = kRetries;
    for (; retries >= 0; --retries) {
        std::size_t received = 0;
        const std::uint32_t number = NumberForLog();
        const Platform::PipeExchange exchange =
            transport->Transact(request, reply, received, error);
        if (exchange == Platform::PipeExchange::Done) {
            if (bytesRead != nullptr) *bytesRead = static_cast<std::uint32_t>(received);
            return true;
        }
        failure = {kBrokenPipeLocation, error};
        if (exchange == Platform::PipeExchange::Failed) {
            failure.location = kUnhandledLocation;
            ProxyLog("TransactNamedPipe for %08x failed with unhandled error %d\n\n", number,
                     static_cast<int>(error));
            return false;
        }
        const char* const name = exchange == Platform::PipeExchange::NotConnected
                                     ? "ERROR_PIPE_NOT_CONNECTED"
                                     : "ERROR_BAD_PIPE";
        ProxyLog("TransactNamedPipe for %08x failed with %s. Retrying connection.\n", number, name);
        Connect();
    }
    failure = {kRetriesLocation, error};
    ProxyLog("TransactNamedPipe for %08x returned with error %d (connectRetryCount = %d)\n\n",
             NumberForLog(), static_cast<int>(error), retries);
    return false;
}
