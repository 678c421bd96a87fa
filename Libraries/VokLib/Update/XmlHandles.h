#pragma once

#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxslt/xsltInternals.h>

#include <memory>
#include <string_view>

template <auto Free>
struct XmlDeleter {
    template <class T>
    void operator()(T* owned) const {
        Free(owned);
    }
};

using XmlDocument = std::unique_ptr<xmlDoc, XmlDeleter<xmlFreeDoc>>;
using XmlStylesheet = std::unique_ptr<xsltStylesheet, XmlDeleter<xsltFreeStylesheet>>;
using XPathContext = std::unique_ptr<xmlXPathContext, XmlDeleter<xmlXPathFreeContext>>;
using XPathResult = std::unique_ptr<xmlXPathObject, XmlDeleter<xmlXPathFreeObject>>;

inline const xmlChar* ToXml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

/// Empty for null.
inline std::string_view FromXml(const xmlChar* text) {
    return text != nullptr ? std::string_view(reinterpret_cast<const char*>(text))
                           : std::string_view();
}
