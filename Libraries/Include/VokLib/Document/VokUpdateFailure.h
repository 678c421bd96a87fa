#pragma once

#include <QelTools/Exception.h>

#include <string>

/// A stylesheet gave up on an old document.
class VokUpdateFailure : public QelTools::Common::Exception {
  public:
    VokUpdateFailure(std::string text, std::string stylesheetMessages,
                     const QelTools::Common::SourcePlace& place);

    /// What the stylesheet said before, in lines; the last says why.
    const std::string& GetMessages() const { return messages; }

  private:
    std::string messages;
};

/// Throws it with the caller's position.
[[noreturn]] void ThrowUpdateFailure(
    std::string text, std::string stylesheetMessages,
    const QelTools::Common::SourcePlace& place = QelTools::Common::SourcePlace::Current());
