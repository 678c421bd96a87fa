#pragma once

#include <QelTools/Exception.h>
#include <VokLib/VokPath.h>

#include <string>

class VokObj;

/// A failure that concerns scene data. `causeObject` is the path of the object concerned, taken
/// when the exception is built; it stays empty when there is no object or its path cannot be told,
/// for the first error must reach the caller.
class VokException : public QelTools::Common::Exception {
  public:
    explicit VokException(const char* messageText, const VokObj* object = nullptr);
    explicit VokException(std::string messageText, const VokObj* object = nullptr);
    VokException(std::string messageText, const VokObj* object,
                 const QelTools::Common::SourcePlace& place);
    explicit VokException(const QelTools::Common::Exception& other);

    const VokPath& GetCauseObject() const { return causeObject; }

  protected:
    VokPath causeObject;
};

/// Throws a VokException with the caller's position.
[[noreturn]] void ThrowVokException(
    std::string message, const VokObj* object = nullptr,
    const QelTools::Common::SourcePlace& place = QelTools::Common::SourcePlace::Current());
