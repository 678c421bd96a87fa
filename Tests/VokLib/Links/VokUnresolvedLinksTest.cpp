#include <VokLib/Links/VokUnresolvedLinks.h>

#include "VokLib/SceneTestTools.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Links/VokPath.h>
#include <VokLib/Tree/VokNode.h>

#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

using namespace SceneTest;

namespace {

using Texts = std::vector<std::string>;

/// The texts that are handed over when at most so many are wanted.
Texts TextsOf(const VokUnresolvedLinks& links,
              std::size_t most = std::numeric_limits<std::size_t>::max()) {
    Texts texts;
    const std::size_t visited =
        links.VisitTexts(most, [&texts](const std::string& text) { texts.push_back(text); });
    EXPECT_EQ(visited, texts.size());
    return texts;
}

class UnresolvedLinks : public SceneTest::Test {
  protected:
    void AddLink(VokObj* owner, const std::string& path) {
        links.push_back(std::make_unique<VokObjLinkHandle>(owner, path));
    }

    /// Resolves all links; `expected` becomes the plain set of texts.
    void Resolve() {
        const auto note = [this](const VokObjLink& link) {
            unresolved.Add(link);
            const std::string owner = link.owner != nullptr ? VokPath(link.owner).GetText() : "?";
            expected.insert(owner + "->" + link.path);
        };
        VokObjLinkStore::Get().ResolveLinks(&world, note, false);
    }

    Texts Expected() const { return {expected.begin(), expected.end()}; }

    VokWorld world;
    std::vector<std::unique_ptr<VokObjLinkHandle>> links;
    VokUnresolvedLinks unresolved;
    std::set<std::string> expected;
};

TEST_F(UnresolvedLinks, TextsAreSortedAndStandOnce) {
    auto* const b = Add<VokNode>(&world, "b");
    auto* const a = Add<VokNode>(b, "a");
    AddLink(a, "||y");
    AddLink(b, "||z");
    AddLink(a, "||x");
    AddLink(a, "||y");
    AddLink(nullptr, "||w");
    Resolve();
    EXPECT_EQ(TextsOf(unresolved), (Texts{"?->||w", "|b->||z", "|b|a->||x", "|b|a->||y"}));
    EXPECT_EQ(TextsOf(unresolved, 2), (Texts{"?->||w", "|b->||z"}));
    EXPECT_EQ(TextsOf(unresolved, 0), Texts{});
    EXPECT_EQ(unresolved.Count(), 4u);
}

TEST_F(UnresolvedLinks, OnRandomTreesTheyAreASortedSetOfTexts) {
    std::mt19937 random(7);
    // Names with characters in front of and behind the bar and the arrow's hyphen.
    const Texts names = {"a", "a!", "a~", "a-", "b", "", "a->x", "\xE4"};
    std::vector<VokObj*> objects = {Add<VokNode>(&world, "top")};
    for (int i = 0; i < 400; ++i)
        objects.push_back(
            Add<VokNode>(objects[random() % objects.size()], names[random() % names.size()]));
    for (int i = 0; i < 1000; ++i)
        AddLink(objects[random() % objects.size()], "||no" + std::to_string(random() % 3));
    Resolve();
    EXPECT_EQ(TextsOf(unresolved), Expected());
    EXPECT_EQ(unresolved.Count(), expected.size());
}

TEST_F(UnresolvedLinks, OfTextsWithoutMeasureTheFirstAreKeptAndAllAreCounted) {
    VokObj* deep = &world;
    const std::string name(VokLimits::kMaxUnresolvedText / 64, 'x');
    for (int i = 0; i < 16; ++i) deep = Add<VokNode>(deep, name.c_str());
    for (const char* owner : {"e", "c", "a", "b", "d", "f"})
        for (int i = 0; i < 2; ++i) AddLink(Add<VokNode>(deep, owner), "||no");
    Resolve();
    const Texts texts = TextsOf(unresolved);
    const Texts all = Expected();
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_TRUE(std::equal(texts.begin(), texts.end(), all.begin()));
    EXPECT_EQ(unresolved.Count(), 6u);
}

TEST_F(UnresolvedLinks, TextsThatFillTheMeasureToTheByteAreAllMade) {
    VokObj* const owners[] = {Add<VokNode>(&world, "a"), Add<VokNode>(&world, "b")};
    const std::string path(VokLimits::kMaxUnresolvedText / 2 - std::string("|a->").size(), 'x');
    for (const bool isTooLong : {false, true}) {
        VokObjLink first;
        first.owner = owners[0];
        first.path = path;
        VokObjLink second;
        second.owner = owners[1];
        second.path = isTooLong ? path + "x" : path;
        VokUnresolvedLinks both;
        both.Add(second);
        both.Add(first);
        EXPECT_EQ(TextsOf(both).size(), isTooLong ? 1u : 2u);
        EXPECT_EQ(TextsOf(both).front(), "|a->" + path);
        EXPECT_EQ(both.Count(), 2u);
    }
}

TEST_F(UnresolvedLinks, AnOwnerOutsideAWorldHasNoPath) {
    VokNode lone;
    AddLink(&lone, "||no");
    EXPECT_THROW(Resolve(), QelTools::Common::Exception);
    links.clear();
}

}  // namespace
