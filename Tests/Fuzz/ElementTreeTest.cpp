#include "Support/ElementTree.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Rewritten(const std::string& text) {
    const std::optional<ElementDocument> document = ParseElements(text);
    return document ? WriteElements(*document) : "refused";
}

TEST(ElementTree, KeepsElementsAttributesAndTheTextBehindTheLastChild) {
    EXPECT_EQ(Rewritten("<?xml version='1.0'?>\n<a x='1' y=\"&lt;\"><b/>lost<c>1 2</c>kept</a>\n"),
              "<?xml version='1.0'?>\n<a x=\"1\" y=\"&lt;\">\n<b/>\n<c>1 2</c>\nkept</a>\n");
}

TEST(ElementTree, WhatItWroteIsReadAlike) {
    const std::string once = Rewritten("<a><!-- c --><b z='\t'>\n</b><?p i?></a>");
    EXPECT_EQ(once, "<a>\n<b z=\"\t\"/>\n</a>\n");
    EXPECT_EQ(Rewritten(once), once);
}

TEST(ElementTree, RefusesWhatIsNotWellFormed) {
    for (const char* text :
         {"", "a", "<a>", "<a></b>", "<a", "<a x>", "<a x='1>", "<a/><b/>", "<!DOCTYPE a><a/>",
          "<a><![CDATA[x]]></a>", "<a x='<'/>", "<a x='\"'/>"})
        EXPECT_EQ(Rewritten(text), "refused") << text;
}

TEST(ElementTree, RefusesDeepNesting) {
    const auto nested = [](std::size_t depth) {
        std::string text;
        for (std::size_t i = 0; i < depth; ++i) text += "<a>";
        for (std::size_t i = 0; i < depth; ++i) text += "</a>";
        return text;
    };
    EXPECT_NE(Rewritten(nested(kMostNesting)), "refused");
    EXPECT_EQ(Rewritten(nested(kMostNesting + 1)), "refused");
}

TEST(ElementTree, CountsElements) {
    EXPECT_EQ(CountElements(ParseElements("<a><b><c/></b><d/></a>")->root), 4u);
}

}  // namespace
