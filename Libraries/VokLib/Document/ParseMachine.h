#pragma once

#include "Document/DocumentFeed.h"
#include "Document/ParseCallbacks.h"
#include "Document/PushParser.h"

#include <VokLib/Document/VokDocumentVersion.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Document/VokParseFailure.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// What the reader keeps between the blocks of a document.
struct VokParse::Machine {
    enum class UpdateState {
        Current,     ///< the document is in the current version
        Compatible,  ///< in an old one that can be read as it stands
        Outdated,    ///< in an old one that has to be updated first
        Updated,     ///< it was, and what is read is no longer the user's text
    };

    explicit Machine(VokParse& reader) : callbacks(reader), skip(reader) {}
    /// Keeps the object that is being read and the place that the parser has reached.
    void NoteFailure();
    void NotePlace(TextPlace place);
    /// Forgets what the last document left.
    void ForgetResults();

    std::string documentName;  // of the document in hand, for messages; parsers look at it
    VokParseCallbacks callbacks;
    SkipEvents skip;
    std::unique_ptr<PushParser> parser;  // null between documents
    std::unique_ptr<DocumentFeed> feed;
    VokWorld* world = nullptr;
    bool allowUpdate = false;
    UpdateState updateState = UpdateState::Current;
    std::vector<char> updateBuffer;  // the raw document, when it has to be updated
    std::string version;             // the default namespace of the document
    std::size_t bytesRead = 0;
    // These stay when the document is done with.
    VokParseFailure failure;
    VokDocumentVersion documentVersion;
};
