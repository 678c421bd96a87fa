#pragma once

#include <libxml/xmlIO.h>

/// The XML parser's library, up as long as this lives: entities are replaced and an external subset
/// would be loaded, but no document opens another file or the network, and the library prints
/// nothing. Its memory is watched (XmlMemory). Throws std::bad_alloc when it does not come up
/// whole.
class XmlLibrary {
  public:
    XmlLibrary();
    ~XmlLibrary();
    XmlLibrary(const XmlLibrary&) = delete;
    XmlLibrary& operator=(const XmlLibrary&) = delete;

  private:
    void Restore();

    xmlExternalEntityLoader previousLoader;
};
