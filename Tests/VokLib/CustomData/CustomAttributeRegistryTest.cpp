#include <gtest/gtest.h>

#include <VokLib/CustomData/VokCustomAttribute.h>

#include "VokLib/SceneTestTools.h"

namespace {

constexpr const char* kTypes[] = {"bool", "int",    "float",    "vector2",    "vector3", "vector4",
                                  "enum", "string", "filename", "floatarray", "objlink"};

TEST(CustomAttributeRegistry, LibraryBringsElevenTypesAndTakesThemAway) {
    {
        const SceneTest::Library library;
        for (const char* type : kTypes) {
            const VokCustomAttributeFactory factory = FindCustomAttributeFactory(MakeTypeId(type));
            ASSERT_NE(factory, nullptr) << type;
            const auto attribute = factory("a", type, true);
            EXPECT_EQ(attribute->GetName(), "a");
            EXPECT_EQ(attribute->GetType(), type);
            EXPECT_TRUE(attribute->IsArray());
        }
        EXPECT_EQ(FindCustomAttributeFactory(MakeTypeId("matrix")), nullptr);
        EXPECT_TRUE(HasCustomAttributeFactories());
    }
    EXPECT_FALSE(HasCustomAttributeFactories());
}

TEST(CustomAttributeRegistry, TypeIsRegisteredOnceAndTakenAwayOnce) {
    const VokCustomAttributeFactory factory = [](std::string, std::string_view, bool) {
        return std::unique_ptr<VokCustomAttribute>();
    };
    RegisterCustomAttributeFactory(MakeTypeId("own"), factory);
    EXPECT_EQ(FindCustomAttributeFactory(MakeTypeId("own")), factory);
    const auto again =
        FailureOf([&] { RegisterCustomAttributeFactory(MakeTypeId("own"), factory); });
    EXPECT_EQ(again.text, "Duplicate custom attribute factory");
    UnregisterCustomAttributeFactory(MakeTypeId("own"));
    const auto missing = FailureOf([] { UnregisterCustomAttributeFactory(MakeTypeId("own")); });
    EXPECT_EQ(missing.text, "Attempt to deregister missing custom attribute factory.");
}

}  // namespace
