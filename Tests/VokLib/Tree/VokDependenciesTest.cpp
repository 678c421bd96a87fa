#include "VokLib/SceneTestTools.h"

#include <VokLib/CustomData/VokCustomAttributeFilename.h>
#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokReference.h>

using namespace SceneTest;

namespace {

class Numbering : public VokUpdateDependencies {
  public:
    void Translate(std::string& out, const std::string& name, const VokObj* object) override {
        out = name + "@" + object->GetName() + std::to_string(++calls);
    }
    int calls = 0;
};

VokCustomAttributeFilename& AddFilename(VokObj& object, bool array) {
    auto attribute = std::make_unique<VokCustomAttributeFilename>("f", "filename", array);
    VokCustomAttributeFilename& added = *attribute;
    object.GetCustomData().AddAttribute(std::move(attribute));
    return added;
}

}  // namespace

/// a holds b and a reference; c stands behind a.
class Dependencies : public SceneTest::Test {
  protected:
    Dependencies() {
        reference->uri = "r.qeli";
        AddFilename(*a, false).SetValue("one");
        AddFilename(*b, true).SetValueAt(7, "two");
        AddFilename(*c, false).SetValue("one");
    }

    std::vector<std::string> Files() const {
        VokDependencies files;
        CollectDependencies(world, files);
        return files.GetFiles();
    }

    VokWorld world;
    VokNode* a = Add<VokNode>(world.GetHierarchy(), "a");
    VokNode* b = Add<VokNode>(a, "b");
    VokReference* reference = Add<VokReference>(a, "r");
    VokNode* c = Add<VokNode>(world.GetHierarchy(), "c");
};

TEST_F(Dependencies, FilesComeOnceInTheOrderOfTheTree) {
    EXPECT_EQ(Files(), (std::vector<std::string>{"one", "two", "r.qeli"}));
}

TEST_F(Dependencies, EmptyNamesArePassedBy) {
    AddFilename(*a, false);
    AddFilename(*a, false).SetValue("");
    auto& array = AddFilename(*a, true);
    array.SetValueAt(1, "");
    array.SetValueAt(-2, "three");
    reference->uri = "";
    EXPECT_EQ(Files(), (std::vector<std::string>{"one", "three", "two"}));
    Numbering update;
    RewriteDependencies(*a, update);
    EXPECT_EQ(array.GetValueAt(1), "");
    EXPECT_EQ(array.GetValueAt(-2), "three@a2");
}

TEST_F(Dependencies, RewritingPassesEachNameWithItsObject) {
    Numbering update;
    RewriteDependencies(world, update);
    EXPECT_EQ(Files(), (std::vector<std::string>{"one@a1", "two@b2", "r.qeli@r3", "one@c4"}));
}
