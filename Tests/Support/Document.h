#pragma once

#include <string>
#include <string_view>

/// What the root of a test's document says.
struct DocumentRoot {
    std::string_view attributes = "";  // besides namespace and form, "upAxis=\"z\""
    std::string_view version = "1_28_1";
    std::string_view form = "qelirelative";  // of file names; this one is the primary one
    std::string_view encoding = "ISO-8859-1";
};

/// The namespace of the documents of a version.
std::string VersionNamespace(std::string_view version);

/// A whole document around `body`, which begins on the third line.
std::string Document(std::string_view body, const DocumentRoot& root = {});
