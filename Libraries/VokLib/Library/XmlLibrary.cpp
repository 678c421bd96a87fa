#include "Library/XmlLibrary.h"

#include "Document/XmlMemory.h"
#include "Document/XmlMessages.h"

#include <libxml/globals.h>
#include <libxml/parser.h>

namespace {

/// What a document refers to is never fetched.
xmlParserInputPtr RefuseExternalEntity(const char*, const char*, xmlParserCtxtPtr) {
    return nullptr;
}

}  // namespace

XmlLibrary::XmlLibrary() {
    XmlMemory::Install();
    XmlMemoryWatch memory;
    // First of all: the library speaks of a lack of memory on the standard error stream, too.
    DropXmlMessages();
    xmlInitParser();
    xmlSubstituteEntitiesDefault(1);
    xmlLoadExtDtdDefaultValue = 1;
    previousLoader = xmlGetExternalEntityLoader();
    xmlSetExternalEntityLoader(RefuseExternalEntity);
    if (memory.HasFailed()) {
        Restore();
        memory.Check();
    }
}

XmlLibrary::~XmlLibrary() {
    Restore();
}

void XmlLibrary::Restore() {
    ShowXmlMessages();
    xmlSetExternalEntityLoader(previousLoader);
    xmlCleanupParser();
}
