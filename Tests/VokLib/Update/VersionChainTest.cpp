#include "VokLib/CoreScene.h"

#include <VokLib/Document/VokUpdate.h>

#include <sstream>

using namespace CoreScene;

namespace {

std::string Version(const std::string& number) {
    return std::string(QelNamespaceRoot) + "/qeli/" + number + "/qeli";
}

class Input : public VokUpdate::InputBuffer {
  public:
    const char* GetData() const override { return nullptr; }
    std::size_t GetSize() const override { return 0; }
    void Free() override {}
};

}  // namespace

class VersionChain : public CoreScene::Test {
  protected:
    static bool IsCompatible(const std::string& version) {
        return VokUpdate::Get().IsCompatible(version);
    }
};

TEST_F(VersionChain, VersionsSinceTheLastChangeAreReadAsTheyStand) {
    for (const char* number :
         {"1_15_0", "1_16_0", "1_17_0", "1_20_0", "1_20_3", "1_22_0", "1_22_1", "1_22_2", "1_22_4",
          "1_22_5", "1_23_0", "1_23_1", "1_24_1", "1_27_1", "1_27_2", "1_27_3"})
        EXPECT_TRUE(IsCompatible(Version(number))) << number;
}

TEST_F(VersionChain, OlderVersionsNeedTheUpdate) {
    EXPECT_FALSE(IsCompatible(""));
    for (const char* number : {"1_0_3", "1_0_4", "1_0_5", "1_0_7", "1_2_0", "1_2_1", "1_4_0",
                               "1_5_0", "1_5_3", "1_8_0", "1_8_2", "1_9_0", "1_10_0", "1_14_1"})
        EXPECT_FALSE(IsCompatible(Version(number))) << number;
}

TEST_F(VersionChain, UnknownVersionIsRefused) {
    const Thrown expected = Plain(
        "File \"http://qel.example/ns/qeli/1_0_3/update.xml\" required by update process is "
        "not compiled into VokLib. This probably means that you are running an old version "
        "of a tool on a more recent .qeli file.");
    for (const std::string& version :
         {Version("1_29_0"), Version("1_6_0"), std::string("1_15_0"), Version("1_15_0") + "/"})
        EXPECT_EQ(ThrownBy([&] { IsCompatible(version); }), expected) << version;
}

TEST_F(VersionChain, VerbosityIsNormalAtFirst) {
    EXPECT_EQ(VokUpdate::Get().GetVerbosity(), 1);
    VokUpdate::Get().SetVerbosity(2);
    EXPECT_EQ(VokUpdate::Get().GetVerbosity(), 2);
}

TEST_F(VersionChain, OldDocumentIsRefusedWithItsVersion) {
    std::ostringstream out;
    Input input;
    EXPECT_EQ(ThrownBy([&] { VokUpdate::Get().Update(out, input, Version("1_8_0")); }),
              Plain("This build cannot update documents of version "
                    "\"http://qel.example/ns/qeli/1_8_0/qeli\" yet."));
}
