#include "Support/SceneRepairs.h"

#include "Support/SceneObjects.h"

#include <gtest/gtest.h>

#include <string>

namespace {

ElementDocument Document(const std::string& text) {
    return *ParseElements(text);
}

TEST(SceneObjects, HavePathsOfTheirNames) {
    const ElementDocument document = Document(
        "<QEL><scene><joint name='a'><joint name='b'/></joint></scene><scene name='kit'/>"
        "<anim name='k'><target name='no'/></anim></QEL>");
    std::string paths;
    for (const SceneObject& object : FindObjects(document.root))
        paths += object.element + " " + object.path + "\n";
    EXPECT_EQ(paths, "scene |\njoint ||a\njoint ||a|b\nscene |kit\nanim |k\n");
}

TEST(SceneRepairs, LinksThatLeadNowhereGetATargetOfAKnownKind) {
    Vocabulary vocabulary;
    vocabulary.Learn(
        Document("<QEL><scene><joint name='a'/></scene><anim name='k' target='||a'/></QEL>"));
    ElementDocument document = Document(
        "<QEL><scene><node name='n'/><joint name='b'/></scene><anim name='k' target='||a'/>"
        "<anim name='l' target='||n'/></QEL>");
    Random random(1);
    MendLinks(document.root, vocabulary, random);
    EXPECT_EQ(*document.root.children[1].Find("target"), "||b");
    EXPECT_EQ(*document.root.children[2].Find("target"), "||n") << "it leads somewhere";
}

TEST(SceneRepairs, JointsGetNamesOfTheirOwn) {
    ElementDocument document =
        Document("<QEL><joint name='a'><joint name='a'/></joint><node name='a'/></QEL>");
    MendNames(document.root);
    EXPECT_EQ(*document.root.children[0].Find("name"), "a");
    EXPECT_EQ(*document.root.children[0].children[0].Find("name"), "a1");
    EXPECT_EQ(*document.root.children[1].Find("name"), "a");
}

}  // namespace
