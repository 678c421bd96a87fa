#include "Library/XmlLibrary.h"

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
    xmlInitParser();
    xmlSubstituteEntitiesDefault(1);
    xmlLoadExtDtdDefaultValue = 1;
    previousLoader = xmlGetExternalEntityLoader();
    xmlSetExternalEntityLoader(RefuseExternalEntity);
    xmlSetGenericErrorFunc(nullptr, DropText);
    xmlSetStructuredErrorFunc(nullptr, DropError);
}

XmlLibrary::~XmlLibrary() {
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    xmlSetGenericErrorFunc(nullptr, nullptr);
    xmlSetExternalEntityLoader(previousLoader);
    xmlCleanupParser();
}
