#include "Update/VokUpdateTweak190.h"

#include <VokLib/Tree/VokWorld.h>

#include <utility>

VokUpdateTweak190::VokUpdateTweak190(std::string previousFilenameForm)
    : previousForm(std::move(previousFilenameForm)) {}

XmlDocument VokUpdateTweak190::LoadDocument(const std::string& uri) {
    const std::string versions = std::string(QelNamespaceRoot) + "/qeli/";
    if (uri != versions + "1_9_0/update.xml") return VokUpdateStatic::LoadDocument(uri);
    return ParseUpdateDocument(
        "<QELUpdate><update source=\"" + versions + "1_8_2/qeli\"><step><xslt>" + versions +
            "1_8_2/1_9_0.xslt</xslt><xsltparam><name>previousFilenameForm"
            "</name><value>'" +
            previousForm + "'</value></xsltparam></step></update></QELUpdate>",
        uri);
}
