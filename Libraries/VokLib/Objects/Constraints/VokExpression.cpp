#include <VokLib/Objects/Constraints/VokExpression.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

namespace {

using Bindings = std::vector<ExpressionBinding>;

// Both texts speak of an input; they stand for outputs too.
constexpr const char* kNoObject = "Missing object attribute on expression input.";
constexpr const char* kNoChannel = "Missing channel attriubte on expression input.";

template <Bindings VokExpression::*Field>
void ReadBinding(VokExpression& expression, VokParse& parse) {
    const VokAttributes& attributes = parse.GetAttributes();
    if (!attributes.Has("object")) ThrowVokException(kNoObject, &expression);
    if (!attributes.Has("channel")) ThrowVokException(kNoChannel, &expression);
    ExpressionBinding& binding = (expression.*Field).emplace_back(&expression);
    ReadLink(binding.object, attributes, "object");
    binding.channel = attributes.GetString("channel");
}

template <Bindings VokExpression::*Field>
void WriteBindings(const VokExpression& expression, VokFile& file, std::string_view name) {
    for (const ExpressionBinding& binding : expression.*Field) {
        VokAttributes attributes;
        WriteLink(binding.object, attributes, "object");
        attributes.SetString("channel", binding.channel);
        file.EmptyTag(name, attributes);
    }
}

}  // namespace

std::span<const VokChildElement<VokExpression>> VokExpression::ChildElements() {
    static constexpr VokChildElement<VokExpression> rows[] = {
        {.name = "input",
         .start = ReadBinding<&VokExpression::inputs>,
         .write = WriteBindings<&VokExpression::inputs>},
        {.name = "output",
         .start = ReadBinding<&VokExpression::outputs>,
         .write = WriteBindings<&VokExpression::outputs>},
        {.name = "code",
         .data = [](VokExpression& expression,
                    VokParse& parse) { expression.code = parse.ReadString(); },
         .write = [](const VokExpression& expression, VokFile& file,
                     std::string_view name) { WriteTextElement(file, name, expression.code); }},
    };
    return rows;
}

void VokExpression::ParseEndTag(VokParse& parse) {
    if (ParseDepth() <= 0) {
        VokElement::ParseEndTag(parse);
        return;
    }
    // The end of a foreign element goes to the base as a start, with the attributes of the last
    // start tag, and nothing takes the depth back: whatever stands behind such an element in an
    // expression is foreign, too. A kinder reading would load what other readers refuse.
    VokObj::ParseStartTag(parse);  // NOLINT(bugprone-parent-virtual-call)
}
