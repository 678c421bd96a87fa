#include "Support/Vocabulary.h"

#include "Support/DocumentMutations.h"

#include <gtest/gtest.h>

namespace {

TEST(Vocabulary, LearnsWhatStandsWhere) {
    Vocabulary vocabulary;
    vocabulary.Learn(
        *ParseElements("<QEL><node name='n' a='1'><t>2</t></node><node name='m' a='1'/>"
                       "<set name='s'><t link='|n'/></set></QEL>"));
    Element node;
    node.name = "node";
    node.attributes = {{"name", "x"}};
    const Vocabulary::Word& word = vocabulary.Of(node, nullptr);
    EXPECT_EQ(word.values.at("a"), std::vector<std::string>{"1"});
    EXPECT_EQ(word.values.at("name"), (std::vector<std::string>{"n", "m"}));
    ASSERT_EQ(word.children.size(), 1u);
    Element set;
    set.name = "set";
    Element t;
    t.name = "t";
    EXPECT_EQ(vocabulary.Of(t, &node).texts, std::vector<std::string>{"2"});
    EXPECT_EQ(vocabulary.Of(t, &set).linkedObjects.at("link"), std::set<std::string>{"node"});
    EXPECT_TRUE(vocabulary.Of(t, &t).values.empty());
}

TEST(Vocabulary, OfTheTestsHoldsTheFormat) {
    const Vocabulary& vocabulary = DocumentVocabulary();
    for (const char* name : {"joint", "aimConstraint", "animChannel", "mesh", "material", "pose"}) {
        Element element;
        element.name = name;
        EXPECT_FALSE(vocabulary.Of(element, nullptr).values.empty()) << name;
    }
}

}  // namespace
