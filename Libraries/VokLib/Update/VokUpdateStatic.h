#pragma once

#include "Update/VokUpdateQelServer.h"

/// Takes update documents and stylesheets from the table inside the program, so that no server is
/// needed.
class VokUpdateStatic : public VokUpdateQelServer {
  public:
    XmlDocument LoadDocument(const std::string& uri) override;
    XmlStylesheet LoadStylesheet(const std::string& uri) override;
};

/// An update document from its text; `uri` is for messages.
XmlDocument ParseUpdateDocument(const std::string& text, const std::string& uri);
