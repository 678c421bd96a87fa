#pragma once

#include <QelTools/Singleton.h>

#include <string>

/// Turns names of binary files as the system knows them into those that a run-time uses, and back.
/// The tool makes the one object and deletes it.
class VoktBinaryFilename : public QelTools::Common::Singleton<VoktBinaryFilename> {
  public:
    static const char* SingletonName() { return "VoktBinaryFilename"; }

    VoktBinaryFilename();
    virtual ~VoktBinaryFilename() noexcept(false);

    /// Writes the run-time's name of the file at `path` to `out`.
    virtual void ToBinaryFilename(std::string& out, const std::string& path) = 0;
    /// Throws error 203 unless a derived class supplies the way back.
    virtual void ToSystemFilename();
};
