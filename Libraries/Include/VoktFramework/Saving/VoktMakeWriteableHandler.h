#pragma once

#include <QelTools/Singleton.h>

#include <string>

/// Makes a read-only output writable before it is written. A tool for a revision-controlled tree
/// puts a derived handler in place ahead of the save stage; without one this handler is made when
/// it is needed, and lives to the end of the process.
class VoktMakeWriteableHandler : public QelTools::Common::Singleton<VoktMakeWriteableHandler> {
  public:
    static const char* SingletonName() { return "VoktMakeWriteableHandler"; }

    VoktMakeWriteableHandler();
    virtual ~VoktMakeWriteableHandler() noexcept(false);

    /// Lets the owner read and write the file; a file that does not exist is fine. Throws a
    /// QelTools::Common::Exception when the system refuses.
    virtual void MakeWriteable(const std::string& path);
};
