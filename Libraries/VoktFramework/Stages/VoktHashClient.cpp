#include <HashClient/QelHashClient.h>
#include <HashClient/QelHashClientUtil.h>
#include <Platform/OwnProgram.h>
#include <VoktFramework/Stages/VoktHashClient.h>

#include <exception>

VoktHashClient::VoktHashClient() = default;

VoktHashClient::~VoktHashClient() noexcept(false) {
    if (!initialised) return;
    const bool failureOnItsWay = std::uncaught_exceptions() > 0;
    try {
        QelHashClientUtil::Shutdown();
    } catch (...) {
        // A second failure would end the process before the first is reported.
        if (!failureOnItsWay) throw;
    }
}

void VoktHashClient::Process(VoktUniverse&) {
    QelHashClientUtil::Initialise();
    QelHashClientUtil::SetApplicationName(Platform::OwnProgramName().c_str());
    initialised = true;
}

std::vector<std::string> VoktHashClient::GetDatabaseFiles() {
    return QelHashClient::GetDatabaseFiles();
}

std::optional<std::string> VoktHashClient::GetLogFile() {
    return QelHashClient::GetLogFile();
}
