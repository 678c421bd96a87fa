#pragma once

#include <QelTools/SourcePlace.h>

#include <exception>
#include <string>

namespace QelTools::Common {

/// A failure of the system's own: a message and, where the throw site gives it, a position in the
/// sources. The position is text and empty when it was not set.
class Exception : public std::exception {
  public:
    explicit Exception(std::string messageText);
    explicit Exception(const char* messageText);
    Exception(std::string messageText, const SourcePlace& place);

    /// The bare message.
    const char* what() const noexcept override { return message.c_str(); }

    void SetPlace(const SourcePlace& place);

    const std::string& GetFile() const { return file; }
    const std::string& GetLine() const { return line; }

  protected:
    std::string message;
    std::string file;
    std::string line;
};

/// A standard exception that carries nothing but its text: a failure that is reported by the text
/// alone.
class TextException : public std::exception {
  public:
    explicit TextException(std::string messageText);
    const char* what() const noexcept override { return message.c_str(); }

  private:
    std::string message;
};

/// What a user sees where the program itself is wrong.
inline constexpr const char* kInternalErrorText = "Internal error - please report as a bug";

/// Throws an Exception with the caller's position.
[[noreturn]] void ThrowException(std::string message,
                                 const SourcePlace& place = SourcePlace::Current());
/// Throws an Exception with kInternalErrorText and the caller's position.
[[noreturn]] void ThrowInternalError(const SourcePlace& place = SourcePlace::Current());

}  // namespace QelTools::Common
