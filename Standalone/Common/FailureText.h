#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>

/// Where something went wrong; what is not known stays empty or 0.
struct FailurePlace {
    std::string file;  ///< as the user typed it
    int line = 0;
    int column = 0;
    std::string object = {};  ///< the path of an object, in the document's single-byte form
};

/// One line in the form that editors and build tools find places in:
///
///     scene.qeli:12:7: error: Unknown tag "jiont" (object ||hips)
std::string FailureText(const FailurePlace& place, std::string_view words);
/// The same with "warning".
std::string WarningText(const FailurePlace& place, std::string_view words);

/// A lack of memory, whose own words are for programmers.
inline constexpr const char* kOutOfMemory = "Cannot allocate memory";

/// What a failure says, for people.
inline const char* WordsOf(const std::exception& failure) {
    return dynamic_cast<const std::bad_alloc*>(&failure) != nullptr ? kOutOfMemory : failure.what();
}

/// A document that cannot be read or written. The text is complete, with its place.
class DocumentFailure : public std::exception {
  public:
    DocumentFailure(const FailurePlace& place, std::string_view words)
        : text(FailureText(place, words)) {}
    const char* what() const noexcept override { return text.c_str(); }

  private:
    std::string text;
};

/// A text of a document (single bytes) for a terminal: UTF-8, with control characters as \x0A.
std::string ReadableText(std::string_view documentText);
/// The same for a name of the system, which is UTF-8.
std::string ReadableName(std::string_view name);
