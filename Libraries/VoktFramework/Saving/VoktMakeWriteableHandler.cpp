#include <Platform/FileTests.h>
#include <QelTools/Exception.h>
#include <VoktFramework/Saving/VoktMakeWriteableHandler.h>

#include <cerrno>

VoktMakeWriteableHandler::VoktMakeWriteableHandler() = default;

VoktMakeWriteableHandler::~VoktMakeWriteableHandler() noexcept(false) = default;

void VoktMakeWriteableHandler::MakeWriteable(const std::string& path) {
    const int failure = Platform::MakeOwnerWritable(path);
    if (failure != 0 && failure != ENOENT)
        QelTools::Common::ThrowException("VoktMakeWriteableHandler failed to chmod " + path);
}
