// The functions of the stylesheet processor that the format update calls. Only old documents need
// it; it is loaded by the first call, which is xsltInit, and uses this program's own parser.

#include "LateFunction.h"

#include <QelTools/Exception.h>

#include <libxml/xmlversion.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltutils.h>

#include <stdexcept>
#include <string>

#define RIGBAKE_FIND(function) FindLateFunction<&function>(kLibrary, #function)

namespace {

constexpr const char* kLibrary = RIGBAKE_XSLT_LIBRARY;

/// A processor made for a later parser than the one it finds here would call what is not there.
void CheckProcessor() {
    const void* wanted = nullptr;
    try {
        wanted = Platform::FunctionOfLibrary(kLibrary, "xsltLibxmlVersion");
    } catch (const std::runtime_error& failure) {
        QelTools::Common::ThrowException(
            std::string("The format update needs the stylesheet library: ") + failure.what());
    }
    const int version = *static_cast<const int*>(wanted);
    if (version > LIBXML_VERSION)
        QelTools::Common::ThrowException(std::string("The format update cannot use ") + kLibrary +
                                         ", which was made for version " + std::to_string(version) +
                                         " of the parser; this program holds version " +
                                         std::to_string(LIBXML_VERSION) + ".");
}

/// All at once, so that the others, of which some clean up, fail for no reason of ours.
void FindAll() {
    RIGBAKE_FIND(xsltCleanupGlobals);
    RIGBAKE_FIND(xsltSetGenericErrorFunc);
    RIGBAKE_FIND(xsltParseStylesheetDoc);
    RIGBAKE_FIND(xsltFreeStylesheet);
    RIGBAKE_FIND(xsltNewTransformContext);
    RIGBAKE_FIND(xsltFreeTransformContext);
    RIGBAKE_FIND(xsltApplyStylesheetUser);
    RIGBAKE_FIND(xsltNewSecurityPrefs);
    RIGBAKE_FIND(xsltFreeSecurityPrefs);
    RIGBAKE_FIND(xsltSetSecurityPrefs);
    RIGBAKE_FIND(xsltSetCtxtSecurityPrefs);
    RIGBAKE_FIND(xsltSecurityForbid);
    RIGBAKE_FIND(xsltInit);
}

}  // namespace

void xsltInit() {
    if (lateFunction<&xsltInit> == nullptr) {
        CheckProcessor();
        FindAll();
    }
    lateFunction<&xsltInit>();
}

void xsltCleanupGlobals() {
    lateFunction<&xsltCleanupGlobals>();
}

void xsltSetGenericErrorFunc(void* user, xmlGenericErrorFunc handler) {
    lateFunction<&xsltSetGenericErrorFunc>(user, handler);
}

xsltStylesheetPtr xsltParseStylesheetDoc(xmlDocPtr document) {
    return lateFunction<&xsltParseStylesheetDoc>(document);
}

void xsltFreeStylesheet(xsltStylesheetPtr sheet) {
    lateFunction<&xsltFreeStylesheet>(sheet);
}

xsltTransformContextPtr xsltNewTransformContext(xsltStylesheetPtr sheet, xmlDocPtr document) {
    return lateFunction<&xsltNewTransformContext>(sheet, document);
}

void xsltFreeTransformContext(xsltTransformContextPtr context) {
    lateFunction<&xsltFreeTransformContext>(context);
}

xmlDocPtr xsltApplyStylesheetUser(xsltStylesheetPtr sheet, xmlDocPtr document,
                                  const char** parameters, const char* output, FILE* profile,
                                  xsltTransformContextPtr context) {
    return lateFunction<&xsltApplyStylesheetUser>(sheet, document, parameters, output, profile,
                                                  context);
}

xsltSecurityPrefsPtr xsltNewSecurityPrefs() {
    return lateFunction<&xsltNewSecurityPrefs>();
}

void xsltFreeSecurityPrefs(xsltSecurityPrefsPtr rules) {
    lateFunction<&xsltFreeSecurityPrefs>(rules);
}

int xsltSetSecurityPrefs(xsltSecurityPrefsPtr rules, xsltSecurityOption option,
                         xsltSecurityCheck check) {
    return lateFunction<&xsltSetSecurityPrefs>(rules, option, check);
}

int xsltSetCtxtSecurityPrefs(xsltSecurityPrefsPtr rules, xsltTransformContextPtr context) {
    return lateFunction<&xsltSetCtxtSecurityPrefs>(rules, context);
}

int xsltSecurityForbid(xsltSecurityPrefsPtr rules, xsltTransformContextPtr context,
                       const char* value) {
    return lateFunction<&xsltSecurityForbid>(rules, context, value);
}
