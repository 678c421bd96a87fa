#include "Update/XsltLibrary.h"

#include "Document/XmlMessages.h"

#include "Update/ExsltMath.h"

#include <libxslt/xslt.h>
#include <libxslt/xsltutils.h>

namespace {

void DropText(void*, const char*, ...) {}

}  // namespace

XsltLibrary::XsltLibrary() {
    DropXmlMessages();
    xsltInit();
    RegisterExsltMath();
    xsltSetGenericErrorFunc(nullptr, DropText);
}

XsltLibrary::~XsltLibrary() {
    xsltSetGenericErrorFunc(nullptr, nullptr);
    xsltCleanupGlobals();
}
