#include <HashClient/QelHashClientUtil.h>
#include <Platform/OwnProgram.h>
#include <Platform/Paths.h>
#include <VoktFramework/Stages/VoktHashClient.h>

#include <exception>
#include <string>

namespace {

std::string OwnProgramName() {
    const std::string path = Platform::OwnProgramFile();
    return path.substr(path.find_last_of(Platform::BackslashSeparates() ? "/\\" : "/") + 1);
}

}  // namespace

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
    QelHashClientUtil::SetApplicationName(OwnProgramName().c_str());
    initialised = true;
}
