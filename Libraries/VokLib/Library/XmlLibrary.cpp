#include "Library/XmlLibrary.h"

#include "Document/XmlMemory.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

namespace {

/// What a document refers to is never fetched.
xmlParserInputPtr RefuseExternalEntity(const char*, const char*, xmlParserCtxtPtr) {
    return nullptr;
}

void DropText(void*, const char*, ...) {}

/// Versions of the library differ in whether the error is const.
template <class Error>
void DropError(void*, Error) {}

}  // namespace

XmlLibrary::XmlLibrary() {
    XmlMemory::Install();
    XmlMemoryWatch memory;
    // First of all: the library speaks of a lack of memory on the standard error stream, too.
    xmlSetGenericErrorFunc(nullptr, DropText);
    xmlSetStructuredErrorFunc(nullptr, DropError);
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
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    xmlSetGenericErrorFunc(nullptr, nullptr);
    xmlSetExternalEntityLoader(previousLoader);
    xmlCleanupParser();
}
