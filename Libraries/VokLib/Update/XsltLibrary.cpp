#include "Update/XsltLibrary.h"

#include "Document/XmlMessages.h"

#include <libexslt/exslt.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltutils.h>

namespace {

void DropText(void*, const char*, ...) {}

}  // namespace

XsltLibrary::XsltLibrary() {
    DropXmlMessages();
    xsltInit();
    exsltMathRegister();
    xsltSetGenericErrorFunc(nullptr, DropText);
}

XsltLibrary::~XsltLibrary() {
    xsltSetGenericErrorFunc(nullptr, nullptr);
    xsltCleanupGlobals();
}
