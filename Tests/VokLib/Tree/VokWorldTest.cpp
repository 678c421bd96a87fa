#include "VokLib/SceneTestTools.h"

#include <VokLib/CustomData/VokCustomAttribute.h>
#include <VokLib/Document/VokFilenameTranslator.h>
#include <VokLib/Tree/VokNode.h>

using namespace SceneTest;

class World : public SceneTest::Test {
  protected:
    Failure Refusal(const std::string& body) {
        VokWorld refused;
        return FailureOf([&] { Parse(refused, Document(body)); });
    }

    VokWorld world;
};

TEST_F(World, OwnsANamelessHierarchyFromTheStart) {
    ASSERT_EQ(world.GetChildCount(), 1u);
    EXPECT_EQ(world.GetHierarchy(), world.GetChild(0));
    EXPECT_EQ(world.GetHierarchy()->GetName(), "");
    EXPECT_EQ(world.GetUpAxis(), 0);
    EXPECT_EQ(world.GetFilename(), "");
    EXPECT_EQ(world.GetFilenameForm(), "");
}

TEST_F(World, WithoutAHierarchyIsAFailure) {
    delete world.RemoveChild(std::size_t{0});
    EXPECT_EQ(FailureOf([&] { world.GetHierarchy(); }), Plain("No hierarchy present."));
    Add<VokNode>(&world, "");
    Add<VokScene>(&world, "named");
    EXPECT_EQ(FailureOf([&] { world.GetHierarchy(); }), Plain("No hierarchy present."));
}

TEST_F(World, NamelessScenesAreMergedIntoTheHierarchy) {
    Parse(world, Document("<scene><node name='a'/></scene><scene><node name='b'/></scene>"));
    ASSERT_EQ(world.GetChildCount(), 1u);
    ASSERT_EQ(world.GetHierarchy()->GetChildCount(), 2u);
    EXPECT_EQ(world.GetHierarchy()->GetChild(1)->GetName(), "b");
}

TEST_F(World, SceneWithANameIsAFurtherChild) {
    VokScene* hierarchy = world.GetHierarchy();
    Parse(world, Document("<scene name='s'/><scene name=''><node name='a'/></scene><scene/>"));
    ASSERT_EQ(world.GetChildCount(), 3u);
    EXPECT_EQ(world.GetChild(1)->GetName(), "s");
    EXPECT_EQ(world.GetChild(2)->GetChildCount(), 1u);
    EXPECT_EQ(world.GetHierarchy(), hierarchy);
    EXPECT_EQ(hierarchy->GetChildCount(), 0u);
}

TEST_F(World, ReadsTheAttributesOfTheRoot) {
    Parse(world,
          Document("", {.attributes = "upaxis='Z' unknown='x' xmlns:xsi='http://www.w3.org/2001/"
                                      "XMLSchema-instance' xsi:schemaLocation=' one two '"}));
    EXPECT_EQ(world.GetUpAxis(), 1);
    EXPECT_EQ(world.GetFilenameForm(), "qelirelative");
    const std::vector<std::pair<std::string, std::string>> namespaces = {
        {"", QelCurrentNamespace}, {"xsi", XmlSchemaInstanceNamespace}};
    EXPECT_EQ(world.GetNamespaces(), namespaces);
    EXPECT_EQ(world.GetSchemaLocations(), (std::vector<std::string>{"one", "two"}));
}

TEST_F(World, SchemaLocationsNeedTheDeclaredPrefix) {
    Parse(world, Document("", {.attributes = "schemaLocation='one two'"}));
    EXPECT_TRUE(world.GetSchemaLocations().empty());
    Parse(world,
          Document("", {.attributes = "xmlns:q='http://www.w3.org/2001/XMLSchema-instance' "
                                      "q:schemaLocation='one&#9;two' xsi:schemaLocation='three'"}));
    EXPECT_EQ(world.GetSchemaLocations(), (std::vector<std::string>{"one", "two"}));
}

TEST_F(World, OnlyZTurnsTheUpAxis) {
    const std::pair<const char*, int> cases[] = {{"z", 1}, {"Z", 1}, {"y", 0}, {"zz", 0}, {"", 0}};
    for (const auto& [text, axis] : cases) {
        VokWorld read;
        read.SetUpAxis(1);
        Parse(read, Document("", {.attributes = "upaxis='" + std::string(text) + "'"}));
        EXPECT_EQ(read.GetUpAxis(), axis) << text;
    }
}

TEST_F(World, ParseAccelerationIsIgnoredWhole) {
    Parse(world, Document("<parseacceleration><filereferences><file uri='x'/><nonsense/>"
                          "</filereferences></parseacceleration><scene><node name='a'/></scene>"));
    EXPECT_EQ(world.GetHierarchy()->GetChildCount(), 1u);
}

TEST_F(World, UnknownTagEndsTheLoadWithTheObjectsPath) {
    EXPECT_EQ(Refusal("<mystery/>"), OfObject("Unknown tag \"mystery\""));
    EXPECT_EQ(Refusal("<history/>"), OfObject("Unknown tag \"history\""));
    EXPECT_EQ(Refusal("<scene><node name='a'><mystery/></node></scene>"),
              OfObject("Unknown tag \"mystery\"", "||a"));
    EXPECT_EQ(Refusal("<blindData name='b'/>"), OfObject("Unknown tag \"blindData\""));
    EXPECT_EQ(Refusal("<constraint name='b'/>"), OfObject("Unknown tag \"constraint\""));
    EXPECT_EQ(Refusal("<scene><parseacceleration/></scene>"),
              OfObject("Unknown tag \"parseacceleration\"", "|"));
}

TEST_F(World, ObjectWithoutANameIsRefused) {
    EXPECT_EQ(Refusal("<scene><node/></scene>"), Plain("Missing attribute in parse"));
    EXPECT_EQ(Refusal("<scene><scene/></scene>"), Plain("Missing attribute in parse"));
}

TEST_F(World, CustomDataOfTheWorldIsReadAndWritten) {
    Parse(world, Document("<customData><attribute name='a' type='string'>text</attribute>"
                          "</customData><scene><node name='n'/></scene>"));
    ASSERT_EQ(world.GetCustomData().GetCount(), 1u);
    EXPECT_EQ(world.GetCustomData().GetAttribute(0).GetName(), "a");
    EXPECT_EQ(world.GetHierarchy()->GetChildCount(), 1u);
}

TEST_F(World, ObjectInsideCustomDataBecomesAChildOfTheOwner) {
    Parse(world,
          Document("<scene><node name='n'><customData><node name='inner'/>"
                   "<attribute name='a' type='int' value='3'/></customData></node></scene>"));
    VokObj* node = world.GetHierarchy()->FindChild("n");
    ASSERT_NE(node, nullptr);
    EXPECT_NE(node->FindChild("inner"), nullptr);
    EXPECT_EQ(node->GetCustomData().GetCount(), 1u);
}

TEST_F(World, SceneElementInsideCustomDataNeedsAName) {
    EXPECT_EQ(Refusal("<customData><scene/></customData>"), Plain("Missing attribute in parse"));
}

TEST_F(World, ParseAccelerationIsKnownDirectlyUnderTheRootAlone) {
    EXPECT_EQ(Refusal("<customData><parseacceleration/></customData>"),
              OfObject("Unknown tag \"parseacceleration\""));
}

TEST_F(World, RootInsideTheRootIsAnUnknownTag) {
    EXPECT_EQ(Refusal("<QEL/>"), OfObject("Unknown tag \"QEL\""));
}

TEST_F(World, AttributesOfANamelessSceneAreNotLookedAt) {
    Parse(world, Document("<scene parentEffect='nonsense'><node name='a'/></scene>"));
    EXPECT_EQ(world.GetHierarchy()->parentEffect, ParentEffect::Normal);
    EXPECT_EQ(world.GetHierarchy()->GetChildCount(), 1u);
}

TEST_F(World, WritesTheFrameOfTheDocument) {
    EXPECT_EQ(Write(world),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
              "<QEL xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xmlns=\"http://qel.example/ns/qeli/1_28_1/qeli\" "
              "xsi:schemaLocation=\"http://qel.example/ns/qeli/1_28_1/qeli "
              "http://qel.example/ns/qeli/1_28_1/qeli.xsd\" filenameform=\"qelirelative\">\n"
              "<parseacceleration>\n<filereferences>\n</filereferences>\n</parseacceleration>\n"
              "<scene>\n</scene>\n</QEL>");
}

TEST_F(World, WritesFilesCustomDataAndUpAxis) {
    Parse(world, Document("<scene name='s'><reference name='r' uri='b.qeli' namespace='n'/>"
                          "<reference name='q' uri='b.qeli' namespace='m'/></scene>"
                          "<customData><attribute name='f' type='filename'>a.dds</attribute>"
                          "</customData>",
                          {.attributes = "upaxis='Z'"}));
    const std::string text = Write(world);
    const std::size_t root = text.find(" upaxis=");
    ASSERT_NE(root, std::string::npos);
    EXPECT_EQ(text.substr(root),
              " upaxis=\"z\">\n"
              "<parseacceleration>\n<filereferences>\n<file uri=\"a.dds\" />\n"
              "<file uri=\"b.qeli\" />\n</filereferences>\n</parseacceleration>\n"
              "<scene>\n</scene>\n"
              "<scene name=\"s\">\n"
              "<reference name=\"r\" uri=\"b.qeli\" namespace=\"n\" />\n"
              "<reference name=\"q\" uri=\"b.qeli\" namespace=\"m\" />\n</scene>\n"
              "<customData>\n<attribute name=\"f\" type=\"filename\">a.dds</attribute>\n"
              "</customData>\n</QEL>");
}

TEST_F(World, WrittenDocumentReadsBackTheSame) {
    Parse(world, Document("<scene><node name='a'><scene name='inner'/></node></scene>"
                          "<scene name=''><node name='b'/></scene><scene name='s'/>"));
    const std::string text = Write(world);
    VokWorld again;
    Parse(again, text);
    EXPECT_EQ(Write(again), text);
    ASSERT_EQ(again.GetChildCount(), 3u);
    EXPECT_EQ(again.GetHierarchy(), again.GetChild(0));
    EXPECT_NE(text.find("<scene name=\"\">"), std::string::npos);
}
