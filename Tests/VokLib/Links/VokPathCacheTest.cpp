#include "Links/VokPathCache.h"

#include "Support/Failure.h"
#include "VokLib/SceneTestTools.h"

#include <VokLib/Links/VokPath.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokNode.h>

#include <random>
#include <string>
#include <vector>

using namespace SceneTest;

namespace {

/// Scenes of few names, so that many have the same, and objects with instances of some of them.
class InstancedScenes : public SceneTest::Test {
  protected:
    explicit InstancedScenes(unsigned seed = 1) : random(seed) {
        for (int i = 0; i < kScenes; ++i) {
            auto* const scene = Add<VokScene>(&world, "s" + std::to_string(i));
            const int children = i == 3 ? 300 : static_cast<int>(random() % 20);
            for (int k = 0; k < children; ++k) Add<VokNode>(scene, Name());
        }
        for (int i = 0; i < kParents; ++i) {
            auto* const parent = Add<VokNode>(world.GetHierarchy(), "p" + std::to_string(i));
            for (int k = 0; k < 30; ++k) {
                auto* const instance = Add<VokInstance>(parent, "i" + std::to_string(k));
                instance->target.SetTargetPath("|s" + std::to_string(random() % kScenes));
            }
        }
    }

    std::string Name() { return "n" + std::to_string(random() % 400); }

    static constexpr int kScenes = 40;
    static constexpr int kParents = 10;
    std::mt19937 random;
    VokWorld world;
};

TEST_F(InstancedScenes, ManyQuestionsGetTheAnswersOfTheFirst) {
    VokPathCache cache(&world);
    for (int i = 0; i < 20000; ++i) {
        const VokPath path("||p" + std::to_string(random() % kParents) + "|" + Name());
        EXPECT_EQ(path.Resolve(&world, nullptr, &cache), path.Resolve(&world)) << path.GetText();
    }
}

class PathCache : public SceneTest::Test {
  protected:
    void AddInstance(VokObj* parent, const std::string& target) {
        Add<VokInstance>(parent, "i")->target.SetTargetPath(target);
    }

    VokWorld world;
};

TEST_F(PathCache, AFailedQuestionGetsTheSameAnswerAgain) {
    AddInstance(world.GetHierarchy(), "no path");
    AddInstance(Add<VokScene>(&world, "outer"), "|inner|x");
    AddInstance(Add<VokScene>(&world, "inner"), "|missing");
    VokPathCache cache(&world);
    for (const char* path : {"||a", "|outer|a", "|inner|a"}) {
        const Failure first = FailureOf([&] { VokPath(path).Resolve(&world, nullptr, &cache); });
        EXPECT_EQ(first, FailureOf([&] { VokPath(path).Resolve(&world); })) << path;
        EXPECT_EQ(first, FailureOf([&] { VokPath(path).Resolve(&world, nullptr, &cache); }))
            << path;
    }
}

}  // namespace
