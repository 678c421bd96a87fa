#pragma once

#include <QelTools/Exception.h>

#include <string>

/// A failure that concerns scene data. `causeObject` is the path of the object concerned, as text;
/// it is empty when there is no object. Tree/ThrowVokException.h throws one at an object.
class VokException : public QelTools::Common::Exception {
  public:
    explicit VokException(std::string messageText, std::string causePath = {});
    VokException(std::string messageText, std::string causePath,
                 const QelTools::Common::SourcePlace& place);
    explicit VokException(const QelTools::Common::Exception& other);

    const std::string& GetCauseObject() const { return causeObject; }

  protected:
    std::string causeObject;
};

/// Throws a VokException without an object, with the caller's position.
[[noreturn]] void ThrowVokException(
    std::string message,
    const QelTools::Common::SourcePlace& place = QelTools::Common::SourcePlace::Current());
