#include "Update/VokUpdateQelServer.h"

#include <Platform/LargeStack.h>
#include <QelTools/Exception.h>
#include <VokLib/Tree/VokWorld.h>

#include "Update/OldDocument.h"
#include "Update/PlainWriter.h"
#include "Update/StageRunner.h"
#include "Update/UpdateChain.h"
#include "Update/XsltLibrary.h"

#include <libxml/parser.h>

#include <utility>

namespace {

// A stage takes about a kilobyte of stack for each level of the document.
constexpr std::size_t kShallowDepth = 256;
constexpr std::size_t kStackBytesPerLevel = 8u << 10;

}  // namespace

bool VokUpdateQelServer::IsCompatible(const std::string& version) {
    UpdateChain chain(*this);
    chain.Begin();
    chain.Follow(version);
    return chain.IsSuperset();
}

void VokUpdateQelServer::Update(std::ostream& out, InputBuffer& input, const std::string& version) {
    UpdateChain chain(*this);
    chain.Begin();
    chain.Follow(version);
    OldDocument old = ParseOldDocument(input.GetData(), input.GetSize());
    input.Free();

    const auto runStages = [&] {
        const XsltLibrary library;
        StageRunner runner(*this);
        chain.ForEachStep([&](xmlNode& step) { old.tree = runner.Run(step, std::move(old.tree)); });
    };
    if (old.depth <= kShallowDepth)
        runStages();
    else
        Platform::RunOnLargeStack(old.depth * kStackBytesPerLevel, runStages);
    WritePlain(out, *old.tree);
}

XmlDocument VokUpdateQelServer::LoadDocument(const std::string& uri) {
    XmlDocument document(xmlReadFile(uri.c_str(), nullptr, XML_PARSE_NOENT));
    if (document == nullptr) ThrowUpdateParseFailure("xml document", uri);
    return document;
}

XmlStylesheet VokUpdateQelServer::LoadStylesheet(const std::string& uri) {
    XmlStylesheet sheet =
        CompileStylesheet(XmlDocument(xmlReadFile(uri.c_str(), nullptr, XML_PARSE_NOENT)));
    if (sheet == nullptr) ThrowUpdateParseFailure("stylesheet", uri);
    return sheet;
}

std::string VokUpdateQelServer::GetUpdateUri() {
    return std::string(QelNamespaceRoot) + "/qeli/1_28_1/update.xml";
}

void ThrowUpdateParseFailure(const char* what, const std::string& uri) {
    QelTools::Common::ThrowException(std::string("Failed to parse ") + what + " \"" + uri +
                                     "\" required by the update process.");
}

XmlStylesheet CompileStylesheet(XmlDocument document) {
    if (document == nullptr) return nullptr;
    XmlStylesheet sheet(xsltParseStylesheetDoc(document.get()));
    if (sheet != nullptr) static_cast<void>(document.release());
    return sheet;
}
