#include <VokLib/Links/VokTextTree.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

Texts TextsOf(const VokTextTree& tree, std::size_t most = std::numeric_limits<std::size_t>::max()) {
    Texts texts;
    tree.VisitTexts([&](const std::string& text) {
        texts.push_back(text);
        return texts.size() < most;
    });
    return texts;
}

TEST(VokTextTree, ATextThatBeginsAnotherStandsInFrontOfIt) {
    const Texts pieces = {"abc", "ab", "abcd", "b", "\xE4", "abd", "ab"};
    VokTextTree tree;
    for (const std::string& piece : pieces) tree.Add(tree.Append(VokTextTree::kStart, piece));
    EXPECT_EQ(TextsOf(tree), (Texts{"ab", "abc", "abcd", "abd", "b", "\xE4"}));
    EXPECT_EQ(tree.Count(), 6u);
}

TEST(VokTextTree, APlaceStaysGoodWhenItsTextIsSplitLater) {
    VokTextTree tree;
    const VokTextTree::Place place = tree.Append(VokTextTree::kStart, "abcd");
    tree.Add(tree.Append(VokTextTree::kStart, "abx"));
    tree.Add(tree.Append(place, "e"));
    EXPECT_EQ(tree.Append(tree.Append(VokTextTree::kStart, "a"), "bcd"), place);
    EXPECT_EQ(TextsOf(tree), (Texts{"abcde", "abx"}));
}

TEST(VokTextTree, OfRandomPiecesItMakesASortedSet) {
    std::mt19937 random(11);
    const Texts pieces = {"a", "a|", "|a", "->", "-", ">", "|", "ab->", "\xC3\xA4", "aaaaaaaaaaab"};
    for (int round = 0; round < 50; ++round) {
        VokTextTree tree;
        std::vector<std::pair<VokTextTree::Place, std::string>> places = {{0, ""}};
        std::set<std::string> expected;
        for (int i = 0; i < 300; ++i) {
            const auto [from, text] = places[random() % places.size()];
            const std::string& piece = pieces[random() % pieces.size()];
            places.emplace_back(tree.Append(from, piece), text + piece);
            if (random() % 2 == 0) continue;
            tree.Add(places.back().first);
            expected.insert(places.back().second);
        }
        EXPECT_EQ(TextsOf(tree), Texts(expected.begin(), expected.end()));
        EXPECT_EQ(tree.Count(), expected.size());
    }
}

TEST(VokTextTree, TextsAreHandedOverUntilNoMoreAreWanted) {
    const Texts pieces = {"aaaa", "bbbb", "cccc"};
    VokTextTree tree;
    for (const std::string& piece : pieces) tree.Add(tree.Append(VokTextTree::kStart, piece));
    EXPECT_EQ(TextsOf(tree, 3), pieces);
    EXPECT_EQ(TextsOf(tree, 2), (Texts{"aaaa", "bbbb"}));
    EXPECT_EQ(TextsOf(tree, 1), (Texts{"aaaa"}));
    EXPECT_EQ(tree.Count(), 3u);
}

// Comparing whole texts would look at 400 GB here.
TEST(VokTextTree, ALongBeginningIsLookedAtOnce) {
    const std::string beginning(2 << 20, 'x');
    Texts ends;
    for (int i = 0; i < 200000; ++i) ends.push_back(std::to_string(i * 7919 % 200000));
    VokTextTree tree;
    const VokTextTree::Place place = tree.Append(VokTextTree::kStart, beginning);
    for (const std::string& end : ends) tree.Add(tree.Append(place, end));
    EXPECT_EQ(tree.Count(), ends.size());
    EXPECT_EQ(TextsOf(tree, 1), (Texts{beginning + "0"}));
}

}  // namespace
