#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokMesh.h>
#include <VokLib/Objects/Geometry/VokPmDataQEL.h>

#include <gtest/gtest.h>

namespace SceneTest {
namespace {

TEST(PmDataQEL, RoundTripsWhole) {
    const std::string data =
        "<pmdataQEL name=\"p\" target=\"|m\">\n<vs count=\"2\">0 -1</vs>\n<vt count=\"1\">7</vt>\n"
        "<faces count=\"3\">1 2 3</faces>\n<costs count=\"2\">0.5 1.00000001e-1</costs>\n<splits "
        "count=\"1\">4</splits>\n<fixFaces count=\"2\">5 6</fixFaces>\n<node name=\"n\">\n</node>\n"
        "</pmdataQEL>";
    EXPECT_EQ(Rewritten<VokPmDataQEL>(R"(<mesh name="m"/>)" + data), data);
}

TEST(PmDataQEL, WithNothingItWritesEmptyLists) {
    EXPECT_EQ(Rewritten<VokPmDataQEL>(R"(<pmdataQEL name="p"/>)"),
              "<pmdataQEL name=\"p\" target=\"\">\n<vs count=\"0\">\n</vs>\n<vt "
              "count=\"0\">\n</vt>\n<faces count=\"0\">\n</faces>\n<costs "
              "count=\"0\">\n</costs>\n<splits count=\"0\">\n</splits>\n<fixFaces "
              "count=\"0\">\n</fixFaces>\n</pmdataQEL>");
}

TEST(PmDataQEL, TextForNoListIsRefused) {
    EXPECT_EQ(LoadFailure(R"(<pmdataQEL name="p">7</pmdataQEL>)"), (Failure{"Unknown data", "|p"}));
    EXPECT_EQ(LoadFailure(R"(<pmdataQEL name="p"><vs count="1">7</vs> 8</pmdataQEL>)"),
              (Failure{"Unknown data", "|p"}));
    EXPECT_EQ(LoadFailure("<pmdataQEL name=\"p\"><vs count=\"1\">7</vs>\n \t</pmdataQEL>"),
              Failure{});
}

TEST(PmDataQEL, CountsThatLieAreFilledOrRefused) {
    for (const char* list : {"vs", "vt", "faces", "costs", "splits", "fixFaces"})
        EXPECT_TRUE(LoadFailure(R"(<pmdataQEL name="p"><)" + std::string(list) +
                                " count=\"4000000000\">1 2 3</" + list + "></pmdataQEL>")
                        .text.starts_with("Counts in the document announce values"))
            << list;
    Scene scene(R"(<pmdataQEL name="p"><vs count="-1">1</vs><vt count="3">1 2</vt>
<costs>1</costs></pmdataQEL>)");
    EXPECT_TRUE(scene.First<VokPmDataQEL>().vs.Get().empty());
    EXPECT_EQ(scene.First<VokPmDataQEL>().vt.Get(), (std::vector<int>{1, 2, 0}));
    EXPECT_TRUE(scene.First<VokPmDataQEL>().costs.Get().empty());
}

}  // namespace
}  // namespace SceneTest
