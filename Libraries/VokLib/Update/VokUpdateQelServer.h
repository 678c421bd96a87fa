#pragma once

#include <VokLib/Document/VokUpdate.h>

#include "Update/XmlHandles.h"

#include <string>

/// Brings documents up by the update documents and stylesheets that stand under the URIs of a
/// server. Every version has an update document, which says how to get there from older ones; the
/// walk begins at the current one's.
///
/// What fails throws a QelTools Exception, but for a malformed document, which is a VokException.
class VokUpdateQelServer : public VokUpdate {
  public:
    bool IsCompatible(const std::string& version) override;
    void Update(std::ostream& out, InputBuffer& input, const std::string& version) override;

    /// The update document at `uri`. A result of null counts as a failure, too.
    virtual XmlDocument LoadDocument(const std::string& uri);
    virtual XmlStylesheet LoadStylesheet(const std::string& uri);
    /// Of the current version's update document.
    virtual std::string GetUpdateUri();
};

/// What loaders throw: `what` is "xml document" or "stylesheet".
[[noreturn]] void ThrowUpdateParseFailure(const char* what, const std::string& uri);
/// The stylesheet that `document` holds; it takes the document along. Null when it is none.
XmlStylesheet CompileStylesheet(XmlDocument document);
