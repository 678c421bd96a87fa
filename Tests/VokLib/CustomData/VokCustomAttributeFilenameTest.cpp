#include <gtest/gtest.h>

#include <VokLib/CustomData/VokCustomAttributeFilename.h>
#include <VokLib/CustomData/VokCustomAttributeString.h>

#include "VokLib/CustomData/CustomDataTools.h"

namespace {

using CustomDataTest::Loaded;

TEST(VokCustomAttributeFilename, IsATypeOfItsOwn) {
    Loaded loaded("<attribute name=\"a\" type=\"filename\">t.dds</attribute>");
    EXPECT_EQ(loaded.First<VokCustomAttributeFilename>().GetValue(), "t.dds");
    EXPECT_EQ(dynamic_cast<VokCustomAttributeString*>(&loaded.Data().GetAttribute(0)), nullptr);
}

}  // namespace
