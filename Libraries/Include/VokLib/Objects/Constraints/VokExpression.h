#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <string>
#include <vector>

struct ExpressionBinding {
    explicit ExpressionBinding(VokObj* owner) : object(owner) {}
    VokObjLinkHandle object;
    std::string channel;
};

/// The text of an expression with the channels that it reads and writes.
class VokExpression : public VokElement<VokExpression, VokObj> {
  public:
    static constexpr std::string_view kElementName = "expression";
    static std::span<const VokChildElement<VokExpression>> ChildElements();

    void ParseEndTag(VokParse& parse) override;

    std::vector<ExpressionBinding> inputs;
    std::vector<ExpressionBinding> outputs;
    std::string code;
};
