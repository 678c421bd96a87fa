#include "Document/XmlMessages.h"

#include <libxml/globals.h>
#include <libxml/xmlerror.h>

namespace {

void DropText(void*, const char*, ...) {}

/// Versions of the library differ in whether the error is const.
template <class Error>
void DropError(void*, Error) {}

}  // namespace

void DropXmlMessages() {
    xmlSetGenericErrorFunc(nullptr, DropText);
    xmlSetStructuredErrorFunc(nullptr, DropError);
}

void ShowXmlMessages() {
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    xmlSetGenericErrorFunc(nullptr, nullptr);
}
