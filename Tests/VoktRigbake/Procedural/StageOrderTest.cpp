#include "Procedural/StageOrder.h"
#include "Support/CostRatio.h"
#include "VoktRigbake/RigbakeTestTools.h"

#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokMotionPath.h>
#include <VokLib/Objects/Constraints/VokParentConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <set>

namespace {

constexpr const char* kCircle =
    "Circular dependencies in the procedural joint DAG (constraints & driven keys) can not be "
    "handled.";

/// A world of objects of all classes: the letter of an object tells which one it is.
class StageOrder : public testing::Test {
  protected:
    ~StageOrder() noexcept override = default;

    /// j joint, p motion path, c channel, a and q constraints, b blend.
    void Fill(std::string_view letters) {
        for (const char letter : letters) objects.push_back(Make(letter));
        order = std::make_unique<DocumentOrder>(world);
        dependencies = std::make_unique<Dependencies>(*order);
    }

    VokObj* Make(char letter) {
        VokObj* object = nullptr;
        switch (letter) {
            case 'c':
                object = new VokAnimChannel;
                break;
            case 'a':
                object = new VokAimConstraint;
                break;
            case 'q':
                object = new VokParentConstraint;
                break;
            case 'b':
                object = new VokBlend;
                break;
            case 'p':
                object = new VokMotionPath;
                break;
            default:
                object = new VokJoint;
                break;
        }
        object->SetName(letter + std::to_string(objects.size()));
        world.AddChild(object);
        return object;
    }

    void Add(std::size_t before, std::size_t after) {
        dependencies->Add(objects[before], objects[after]);
    }

    /// "c1 c2 | a3": the names of each stage's objects.
    std::string Ordered() const { return TextOf(OrderStages(*dependencies)); }

    static std::string TextOf(const std::vector<Stage>& stages) {
        std::string text;
        for (const Stage& stage : stages) {
            if (!text.empty()) text += " |";
            for (const VokObj* object : stage.objects)
                text += (text.empty() ? "" : " ") + object->GetName();
        }
        return text;
    }

    TestServices services;
    VokWorld world;
    std::vector<VokObj*> objects;
    std::unique_ptr<DocumentOrder> order;
    std::unique_ptr<Dependencies> dependencies;
};

/// The class of an object by its name's letter: 0 others, 1 channels, 2 constraints, 3 blends.
int ClassOf(const VokObj* object) {
    switch (object->GetName().front()) {
        case 'c':
            return 1;
        case 'a':
        case 'q':
            return 2;
        case 'b':
            return 3;
        default:
            return 0;
    }
}

using NaiveStages = std::vector<std::vector<const VokObj*>>;

/// The passes over the set of what remains, in their plainest form; nothing for a circle.
std::optional<NaiveStages> PassByPass(const std::vector<Dependency>& entries,
                                      const DocumentOrder& order) {
    const auto before = [&order](const VokObj* a, const VokObj* b) { return order.IsBefore(a, b); };
    std::set<const VokObj*, decltype(before)> remaining(before);
    for (const Dependency& entry : entries) {
        remaining.insert(entry.before);
        remaining.insert(entry.after);
    }
    NaiveStages stages;
    while (!remaining.empty()) {
        std::array<std::vector<const VokObj*>, 4> ready;
        for (const VokObj* object : remaining)
            if (std::none_of(entries.begin(), entries.end(), [&](const Dependency& entry) {
                    return entry.after == object && remaining.count(entry.before) != 0;
                }))
                ready[static_cast<std::size_t>(ClassOf(object))].push_back(object);
        const auto chosen = std::find_if(ready.begin(), ready.end(),
                                         [](const auto& list) { return !list.empty(); });
        if (chosen == ready.end()) return std::nullopt;
        if (chosen != ready.begin()) stages.push_back(*chosen);
        for (const VokObj* object : *chosen) remaining.erase(object);
    }
    return stages;
}

}  // namespace

TEST_F(StageOrder, NothingGivesNoStage) {
    Fill("");
    EXPECT_EQ(Ordered(), "");
}

TEST_F(StageOrder, PlainObjectsMakeNoStage) {
    Fill("jjp");
    Add(0, 1);
    Add(1, 2);
    EXPECT_EQ(Ordered(), "");
}

TEST_F(StageOrder, IndependentObjectsOfOneClassShareAStageInDocumentOrder) {
    Fill("jccj");
    Add(0, 2);
    Add(0, 1);
    Add(1, 3);
    EXPECT_EQ(Ordered(), "c1 c2");
}

TEST_F(StageOrder, ChannelsGoBeforeConstraintsAndThoseBeforeBlends) {
    Fill("jbqac");
    for (std::size_t i = 1; i < 5; ++i) Add(0, i);
    EXPECT_EQ(Ordered(), "c4 | q2 a3 | b1");
}

TEST_F(StageOrder, ChannelThatBecomesReadyOvertakesAWaitingConstraint) {
    Fill("jcjcq");
    Add(0, 1);
    Add(1, 2);
    Add(2, 3);
    Add(0, 4);
    EXPECT_EQ(Ordered(), "c1 | c3 | q4");
}

TEST_F(StageOrder, ObjectsOfAClassThatAreReadyLaterMakeAStageOfTheirOwn) {
    Fill("jqjq");
    Add(0, 1);
    Add(1, 2);
    Add(2, 3);
    EXPECT_EQ(Ordered(), "q1 | q3");
}

TEST_F(StageOrder, RepeatedRelationsCountOnce) {
    Fill("jcj");
    Add(0, 1);
    Add(0, 1);
    Add(1, 2);
    Add(1, 2);
    EXPECT_EQ(Ordered(), "c1");
}

TEST_F(StageOrder, ObjectThatDependsOnItselfIsACircle) {
    Fill("jc");
    Add(0, 0);
    Add(0, 1);
    EXPECT_EQ(FailureText([this] { Ordered(); }), kCircle);
}

TEST_F(StageOrder, CirclesOfEveryLengthAreRefused) {
    Fill(std::string(40, 'q'));
    for (std::size_t length = 2; length <= objects.size(); ++length) {
        dependencies = std::make_unique<Dependencies>(*order);
        for (std::size_t i = 0; i < length; ++i) Add(i, (i + 1) % length);
        EXPECT_EQ(FailureText([this] { Ordered(); }), kCircle) << length;
    }
}

TEST_F(StageOrder, LongChainsAreOrderedWithoutAPassOverEverythingEachTime) {
    constexpr std::size_t kLength = 20000;
    Fill(std::string(kLength, 'c'));
    for (std::size_t i = 0; i + 1 < kLength; ++i) Add(i, i + 1);
    const std::vector<Stage> stages = OrderStages(*dependencies);
    ASSERT_EQ(stages.size(), kLength);
    EXPECT_EQ(stages.back().objects.front(), objects.back());
}

TEST_F(StageOrder, CirclesAndChainsTakeTimeInProportionToTheirLength) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    Fill(std::string(20000, 'q'));
    for (const bool isCircle : {false, true}) {
        const double cost = CostOfFourTimes(5000, [&](int length) {
            dependencies = std::make_unique<Dependencies>(*order);
            const auto count = static_cast<std::size_t>(length);
            for (std::size_t i = 0; i + 1 < count; ++i) Add(i, i + 1);
            if (isCircle) Add(count - 1, 0);
            EXPECT_EQ(FailureText([this] { Ordered(); }), isCircle ? kCircle : "");
        });
        EXPECT_LT(cost, kMostOfFourTimes) << isCircle;
    }
}

TEST_F(StageOrder, RandomRelationsGiveTheStagesOfThePasses) {
    Fill("jcabqjcabjjccqqbbjpjcabqjpcc");
    std::mt19937 random(5);
    int circles = 0;
    for (int round = 0; round < 600; ++round) {
        dependencies = std::make_unique<Dependencies>(*order);
        const std::size_t count = random() % 60;
        for (std::size_t i = 0; i < count; ++i) {
            std::size_t before = random() % objects.size();
            std::size_t after = random() % objects.size();
            // Now and then a relation may point backwards, for circles.
            if (before >= after && random() % 64 != 0) {
                if (before == after) continue;
                std::swap(before, after);
            }
            Add(before, after);
        }
        const auto expected = PassByPass(dependencies->GetSorted(), *order);
        if (!expected.has_value()) {
            ++circles;
            EXPECT_EQ(FailureText([this] { Ordered(); }), kCircle);
            continue;
        }
        NaiveStages found;
        for (const Stage& stage : OrderStages(*dependencies)) {
            found.push_back(stage.objects);
            EXPECT_EQ(static_cast<int>(stage.objectClass) + 1, ClassOf(stage.objects.front()));
        }
        EXPECT_EQ(found, *expected);
    }
    EXPECT_GT(circles, 20);
    EXPECT_LT(circles, 500);
}
