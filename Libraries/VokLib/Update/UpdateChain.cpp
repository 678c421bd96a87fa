#include "Update/UpdateChain.h"

#include <QelTools/AsciiText.h>
#include <QelTools/Exception.h>
#include <VokLib/Tree/VokWorld.h>

#include "Document/XmlMemory.h"

#include "Update/VokUpdateQelServer.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t kMostStages = 100;

std::string AttributeOf(xmlNode& element, const char* name) {
    const std::unique_ptr<xmlChar, void (*)(void*)> value(xmlGetNoNsProp(&element, ToXml(name)),
                                                          [](void* text) { xmlFree(text); });
    return std::string(FromXml(value.get()));
}

/// Null when the expression cannot be evaluated.
XPathResult Evaluate(const UpdateStage& stage, const char* expression) {
    return XPathResult(xmlXPathEvalExpression(ToXml(expression), stage.context.get()));
}

std::vector<xmlNode*> NodesOf(const XPathResult& result) {
    if (result == nullptr || xmlXPathNodeSetIsEmpty(result->nodesetval)) return {};
    xmlNode** const nodes = result->nodesetval->nodeTab;
    return {nodes, nodes + result->nodesetval->nodeNr};
}

/// The update elements of the stage's document for `version`, or all for none.
std::vector<xmlNode*> UpdatesOf(const UpdateStage& stage, const std::string* version) {
    // A version with a quote in it has no place in the expression that asks for it.
    const XPathResult found = version == nullptr || version->find('\'') == std::string::npos
                                  ? Evaluate(stage, "/QELUpdate/update")
                                  : nullptr;
    if (found == nullptr)
        QelTools::Common::ThrowException(
            "Failed to evaluate xpath expression to find update process.");
    std::vector<xmlNode*> updates = NodesOf(found);
    if (version != nullptr)
        std::erase_if(updates, [version](xmlNode* update) {
            return AttributeOf(*update, "source") != *version;
        });
    return updates;
}

}  // namespace

void UpdateChain::Begin() {
    AddStage(loader.GetUpdateUri());
}

void UpdateChain::Follow(const std::string& version) {
    const std::string wanted =
        version.empty() ? std::string(QelNamespaceRoot) + "/qeli/1_0_3/qeli" : version;
    if (stages.empty()) QelTools::Common::ThrowException("No update stages");
    for (;;) {
        if (stages.size() >= kMostStages)
            QelTools::Common::ThrowException(
                "The update process is trying to apply more than " + std::to_string(kMostStages) +
                " update stages when loading a file of an old version. Something has probably gone "
                "wrong.");
        const std::vector<xmlNode*> updates = UpdatesOf(stages.back(), &wanted);
        if (updates.size() > 1)
            QelTools::Common::ThrowException(
                "More than one update process found for old version .qeli file.");
        if (updates.size() == 1) {
            stages.back().update = updates.front();
            return;
        }
        AddStage(TakeUntriedSource());
    }
}

void UpdateChain::AddStage(const std::string& uri) {
    UpdateStage stage;
    stage.uri = uri;
    XmlMemoryWatch memory;
    stage.document = loader.LoadDocument(uri);
    memory.Check();
    if (stage.document == nullptr)
        QelTools::Common::ThrowException("Failed to parse update list document \"" + uri + "\".");
    stage.context.reset(xmlXPathNewContext(stage.document.get()));
    if (stage.context == nullptr)
        QelTools::Common::ThrowException("Failed to create XPath context.");
    stages.push_back(std::move(stage));
}

std::string UpdateChain::TakeUntriedSource() {
    for (xmlNode* const update : UpdatesOf(stages.back(), nullptr)) {
        const std::string source = AttributeOf(*update, "source");
        const std::size_t end = source.rfind('/');
        if (end == std::string::npos)
            QelTools::Common::ThrowException("Failed to truncate update xml filename.");
        std::string uri = source.substr(0, end) + "/update.xml";
        if (IsTried(uri)) continue;
        stages.back().update = update;
        return uri;
    }
    QelTools::Common::ThrowException("No update process found for old version .qeli file.");
}

bool UpdateChain::IsTried(const std::string& uri) const {
    return std::any_of(stages.begin(), stages.end(), [&uri](const UpdateStage& stage) {
        return QelTools::Common::EqualsIgnoringCase(stage.uri, uri);
    });
}

bool UpdateChain::IsSuperset() const {
    for (const UpdateStage& stage : stages) {
        stage.context->node = stage.update;
        const XPathResult result = Evaluate(stage, "compatibility/level");
        const std::vector<xmlNode*> levels = NodesOf(result);
        if (levels.empty()) return false;
        if (levels.size() > 1)
            QelTools::Common::ThrowException("More than one compatibility block in update file.");
        const xmlNode* const text = levels.front()->children;
        if (text == nullptr || FromXml(text->content) != "superset") return false;
    }
    return true;
}

void UpdateChain::ForEachStep(const std::function<void(xmlNode& step)>& run) const {
    for (auto stage = stages.rbegin(); stage != stages.rend(); ++stage)
        for (xmlNode* child = stage->update->children; child != nullptr; child = child->next)
            if (child->type == XML_ELEMENT_NODE && FromXml(child->name) == "step") run(*child);
}
