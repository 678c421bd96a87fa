#pragma once

#include <VokLib/Base/VokException.h>

#include <string>
#include <string_view>

/// A place in a document's text, both from 1; 0 where there is none.
struct TextPlace {
    int line = 0;
    int column = 0;

    /// The place behind `text`, which begins here.
    TextPlace Behind(std::string_view text) const;
};

/// A fault of a document's text, or a limit that it exceeds: the words end in " Line " and
/// " Column " of the place, which is kept beside them for those who show it in their own way.
class VokTextFault : public VokException {
  public:
    VokTextFault(const std::string& text, TextPlace where,
                 const QelTools::Common::SourcePlace& place);

    TextPlace GetPlace() const { return textPlace; }

  private:
    TextPlace textPlace;
};

/// Throws it with the caller's position. Of a function's call every compiler says the same line, of
/// a construction that goes over several lines not.
[[noreturn]] void ThrowTextFault(
    const std::string& text, TextPlace where,
    const QelTools::Common::SourcePlace& place = QelTools::Common::SourcePlace::Current());
