#pragma once

#include <string>

class VokParse;

/// How the reader takes a document of its version.
enum class VokVersionUse {
    Current,  ///< it is in the current version
    AsItIs,   ///< it is in an older one that can be read as it stands
    Updated,  ///< it is in an older one and is brought up to date first
};

/// The version that a document is written in.
struct VokDocumentVersion {
    /// Its default namespace; empty for none, and before the start of a document was read.
    std::string name;
    VokVersionUse use = VokVersionUse::Current;

    /// The number in a namespace of this format, "1_28_1"; any other namespace whole.
    std::string GetNumber() const;
};

/// That of the last document of `reader`, also when it could not be read. Valid until its next
/// load.
const VokDocumentVersion& GetDocumentVersion(const VokParse& reader);
