#pragma once

#include "Update/XmlHandles.h"

#include <cstddef>

/// A document of an old version, whole.
struct OldDocument {
    XmlDocument tree;
    std::size_t depth = 0;  // of elements inside one another
};

/// Parses the bytes of a document; null for none. Texts and names are kept; comments and
/// instructions are not, for nothing reads them. One that is not well formed, or that goes beyond
/// the limits, throws a VokException with the line and column. No other file is opened.
OldDocument ParseOldDocument(const char* bytes, std::size_t size);
