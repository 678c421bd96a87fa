#include "Update/StageRunner.h"

#include <QelTools/Exception.h>
#include <VokLib/Base/VokLimits.h>
#include <VokLib/Document/VokUpdateFailure.h>

#include "Document/XmlMemory.h"

#include "Update/RenamingSheet.h"
#include "Update/VokUpdateQelServer.h"

#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltutils.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <iostream>
#include <new>
#include <optional>
#include <utility>

namespace {

using TransformContext =
    std::unique_ptr<xsltTransformContext, XmlDeleter<xsltFreeTransformContext>>;
using SecurityRules = std::unique_ptr<xsltSecurityPrefs, XmlDeleter<xsltFreeSecurityPrefs>>;

constexpr std::size_t kLongestMessage = 1024;
// Of templates inside one another: a few for each element, which is bounded already.
constexpr int kMostTemplates = static_cast<int>(VokLimits::kMaxElementDepth) * 8;

/// What the processor says while this lives.
class Messages {
  public:
    Messages() { xsltSetGenericErrorFunc(this, Collect); }
    ~Messages() { xsltSetGenericErrorFunc(nullptr, Drop); }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    const std::string& GetText() const { return text; }
    /// Throws std::bad_alloc where something that was said could not be kept.
    void Check() const {
        if (isCut) throw std::bad_alloc();
    }

  private:
    static void Collect(void* user, const char* format, ...) {
        char line[kLongestMessage + 1];
        va_list values;
        va_start(values, format);
        const int length = std::vsnprintf(line, sizeof(line), format, values);
        va_end(values);
        if (length <= 0) return;
        Messages& messages = *static_cast<Messages*>(user);
        try {  // nothing may pass through the processor
            messages.text.append(line, std::min(static_cast<std::size_t>(length), kLongestMessage));
        } catch (const std::bad_alloc&) {
            messages.isCut = true;
        }
    }
    static void Drop(void*, const char*, ...) {}

    std::string text;
    bool isCut = false;
};

/// Ends the work of a processor that has no memory: it would go on with the rest of the document,
/// and when the reserve is used up, too, take what it did not get for memory.
void StopProcessor(void* user) {
    auto& context = *static_cast<xsltTransformContext*>(user);
    context.state = XSLT_STATE_STOPPED;
    // Templates that have not begun do not begin.
    context.opLimit = 1;
    context.opCount = 2;
}

SecurityRules ForbidEverything() {
    SecurityRules rules(xsltNewSecurityPrefs());
    if (rules == nullptr) throw std::bad_alloc();
    for (const xsltSecurityOption option :
         {XSLT_SECPREF_READ_FILE, XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
          XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK})
        xsltSetSecurityPrefs(rules.get(), option, xsltSecurityForbid);
    return rules;
}

bool IsElement(const xmlNode& node, std::string_view name) {
    return node.type == XML_ELEMENT_NODE && FromXml(node.name) == name;
}

/// The first text inside `element`; nothing when it holds none.
std::optional<std::string> FirstText(const xmlNode& element) {
    for (const xmlNode* child = element.children; child != nullptr; child = child->next)
        if (child->type == XML_TEXT_NODE) return std::string(FromXml(child->content));
    return std::nullopt;
}

/// The first text of the children named `name`.
std::string ParameterPart(const xmlNode& parameter, std::string_view name) {
    for (const xmlNode* child = parameter.children; child != nullptr; child = child->next) {
        if (!IsElement(*child, name)) continue;
        if (auto text = FirstText(*child)) return *text;
    }
    QelTools::Common::ThrowException("xsltparam section in update xml is missing " +
                                     std::string(name) + " field.");
}

void Print(const std::string& text) {
    std::cout << text << std::flush;
}

}  // namespace

XmlDocument StageRunner::Run(const xmlNode& step, XmlDocument document) {
    for (const xmlNode* child = step.children; child != nullptr; child = child->next) {
        if (child->type != XML_ELEMENT_NODE) continue;
        if (!IsElement(*child, "xslt"))
            QelTools::Common::ThrowException("Unknown step in update process.");
        // The parameters are the rest of the step.
        return Apply(FirstText(*child).value_or(""), ReadParameters(*child), std::move(document));
    }
    return document;
}

StageRunner::Parameters StageRunner::ReadParameters(const xmlNode& behind) {
    Parameters parameters;
    for (const xmlNode* child = behind.next; child != nullptr; child = child->next) {
        if (!IsElement(*child, "xsltparam")) continue;
        parameters.push_back(ParameterPart(*child, "name"));
        parameters.push_back(ParameterPart(*child, "value"));
    }
    return parameters;
}

XmlDocument StageRunner::Apply(const std::string& uri, const Parameters& parameters,
                               XmlDocument document) {
    XmlMemoryWatch memory;
    const XmlStylesheet sheet = loader.LoadStylesheet(uri);
    memory.Check();
    if (sheet == nullptr)
        QelTools::Common::ThrowException("Failed to get stylesheet \"" + uri + "\".");
    const std::optional<RenamingSheet> renaming = FindRenaming(*sheet);
    if (renaming && isUniform && Rename(*document, *renaming)) {
        memory.Check();
        return document;
    }
    XmlDocument result = Transform(uri, *sheet, parameters, *document);
    isUniform = renaming && HoldsOneNamespace(*result);
    return result;
}

XmlDocument StageRunner::Transform(const std::string& uri, xsltStylesheet& sheet,
                                   const Parameters& parameters, xmlDoc& document) {
    std::vector<const char*> texts;
    for (const std::string& text : parameters) texts.push_back(text.c_str());
    texts.insert(texts.end(), 2, nullptr);

    XmlMemoryWatch memory;
    const Messages messages;
    const SecurityRules rules = ForbidEverything();
    const TransformContext context(xsltNewTransformContext(&sheet, &document));
    if (context == nullptr) throw std::bad_alloc();
    xsltSetCtxtSecurityPrefs(rules.get(), context.get());
    context->maxTemplateDepth = kMostTemplates;
    const XmlMemoryAlarm alarm(StopProcessor, context.get());
    XmlDocument result(
        xsltApplyStylesheetUser(&sheet, &document, texts.data(), nullptr, nullptr, context.get()));
    memory.Check();
    messages.Check();
    if (result == nullptr || context->state != XSLT_STATE_OK) {
        if (loader.GetVerbosity() != 0) Print(messages.GetText());
        ThrowUpdateFailure(
            "Failed to apply xslt \"" + uri + "\" when updating old version .qeli file.",
            messages.GetText());
    }
    if (loader.GetVerbosity() > 1) Print(messages.GetText());
    return result;
}
