#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

namespace {

using Json = nlohmann::json;
using Adapter = valijson::adapters::NlohmannJsonAdapter;

class SkelJson : public testing::Test {
  protected:
    static std::string Seed(const std::string& name) {
        return RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/" + name;
    }
    static std::string Scene(const std::string& name) {
        return RIGBAKE_SOURCE_ROOT "/Tests/Documents/" + name;
    }
    /// What skel prints, held against a schema of docs.
    Json Print(const std::vector<std::string>& arguments, const std::string& schema,
               int status) const {
        const ProgramResult run = folder.Run("skel", arguments);
        EXPECT_EQ(run.status, status) << run.errors;
        Json json = Json::parse(run.output);
        EXPECT_EQ(Faults(json, schema), "");
        return json;
    }
    static std::string Faults(const Json& json, const std::string& schemaName) {
        std::ifstream in(RIGBAKE_SOURCE_ROOT "/docs/" + schemaName);
        const Json document = Json::parse(in);
        valijson::Schema schema;
        valijson::SchemaParser parser;
        parser.populateSchema(Adapter(document), schema);
        valijson::Validator validator;
        valijson::ValidationResults results;
        std::string faults;
        if (validator.validate(schema, Adapter(json), &results)) return faults;
        valijson::ValidationResults::Error error;
        while (results.popError(error)) {
            for (const std::string& part : error.context) faults += part;
            faults += ": " + error.description + "\n";
        }
        return faults;
    }

    RunFolder folder;
};

}  // namespace

TEST_F(SkelJson, EveryDumpHasTheFormOfItsSchema) {
    for (const char* name : {"parts-little", "parts-big", "roots", "biped"}) {
        const Json json = Print({"dump", "--json", Seed(name)}, "skel-dump.schema.json", 0);
        EXPECT_EQ(json["byteOrder"], std::string(name) == "parts-big" ? "big" : "little");
    }
}

TEST_F(SkelJson, TheSchemaRefusesWhatIsNotADump) {
    Json json = Print({"dump", "--json", Seed("parts-little")}, "skel-dump.schema.json", 0);
    const auto refuses = [&json](const char* pointer, const Json& value) {
        Json damaged = json;
        damaged[Json::json_pointer(pointer)] = value;
        return !Faults(damaged, "skel-dump.schema.json").empty();
    };
    EXPECT_TRUE(refuses("/signature", "0x12"));
    EXPECT_TRUE(refuses("/joints/0/rotation", Json::array({0, 0, 0})));
    EXPECT_TRUE(refuses("/joints/0/colour", "red"));
    EXPECT_TRUE(refuses("/items/1/outputs/0/curves/0/input/type", "shear"));
    EXPECT_TRUE(refuses("/items/2/constraints/0/targets", Json::array()));
    json.erase("items");
    EXPECT_NE(Faults(json, "skel-dump.schema.json"), "");
}

TEST_F(SkelJson, BothByteOrdersDumpAlike) {
    Json little = Print({"dump", "--json", Seed("parts-little")}, "skel-dump.schema.json", 0);
    Json big = Print({"dump", "--json", Seed("parts-big")}, "skel-dump.schema.json", 0);
    little.erase("byteOrder");
    big.erase("byteOrder");
    EXPECT_EQ(little, big);
}

TEST_F(SkelJson, ADumpHoldsEverythingOfTheFile) {
    const Json json =
        Print({"dump", "--json", Seed("parts-little"), "--names", Scene("skeleton-parts.qeli")},
              "skel-dump.schema.json", 0);
    EXPECT_EQ(json["signature"], "0x3DD3DFD4");
    EXPECT_EQ(json["size"], 2112);
    EXPECT_EQ(json["joints"].size(), 11u);
    const Json& hueft = json["joints"][7];
    EXPECT_EQ(hueft["name"],
              "H\xC3\xBC"
              "ft");
    EXPECT_EQ(hueft["parent"], 1);
    EXPECT_EQ(hueft["nextSibling"], nullptr);
    EXPECT_EQ(hueft["translation"].dump(), "[0.1,-0.1,0.0]") << "as short as it reads back";
    EXPECT_EQ(json["joints"][2]["scaleCompensate"], false);
    EXPECT_EQ(json["levelsOfDetail"][0]["remap"], Json::array({0, 1, 2, 3, 4, 5, 6, 7, 2, 2, 2}));
    EXPECT_EQ(json["externalInputs"][0]["name"], "Rain");
    EXPECT_EQ(json["externalOutputs"][0]["kind"], "material");
    const Json& keys = json["items"][1];
    EXPECT_EQ(keys["objects"][2]["rotationOrder"], "zyx");
    const Json& curve = keys["outputs"][0]["curves"][0];
    EXPECT_EQ(curve["coefficients"], Json::array({{1, 2, 3, 4}, {10, 0, 0, 1}}));
    EXPECT_EQ(curve["times"], Json::array({0, 1, 3}));
    EXPECT_EQ(curve["input"]["joint"], 8);
    const Json& constraints = json["items"][2]["constraints"];
    EXPECT_EQ(constraints[0]["targets"].size(), 3u);
    EXPECT_EQ(constraints[3]["targets"][0]["upObject"], 1);
    EXPECT_EQ(json["items"][3]["constraints"][0]["targets"][0]["upObject"], nullptr);
}

TEST_F(SkelJson, EveryDiffHasTheFormOfItsSchema) {
    const Json same = Print({"diff", "--json", Seed("parts-little"), Seed("parts-big")},
                            "skel-diff.schema.json", 0);
    EXPECT_EQ(same["same"], true);
    const Json other =
        Print({"diff", "--json", Seed("parts-little"), Seed("biped")}, "skel-diff.schema.json", 1);
    EXPECT_EQ(other["same"], false);
    EXPECT_FALSE(other["added"].empty());
    EXPECT_FALSE(other["removed"].empty());
    EXPECT_FALSE(other["procedural"].empty());
}

TEST_F(SkelJson, ADiffTellsOrderAndWhereBytesBeginToDiffer) {
    std::ifstream in(Seed("parts-little"), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    const std::size_t belt = 0x670;  // three targets of one constraint
    bytes[belt] = 3;
    bytes[belt + 16] = 1;
    folder.WriteFile("grouped", bytes);
    const Json json = Print(
        {"diff", "--json", Seed("parts-big"), "grouped", "--names", Scene("skeleton-parts.qeli")},
        "skel-diff.schema.json", 1);
    EXPECT_EQ(json["same"], false);
    EXPECT_EQ(json["procedural"], Json::array());
    EXPECT_EQ(json["order"], Json::parse(R"([{"what": "orientation of Belt by Arm",
        "before": "item 2, constraint 0, target 1", "after": "item 2, constraint 1, target 0"}])"));
    EXPECT_EQ(json["otherBytesAt"], belt);
    const Json same = Print({"diff", "--json", Seed("parts-big"), Seed("parts-little")},
                            "skel-diff.schema.json", 0);
    EXPECT_EQ(same["order"], Json::array());
    EXPECT_EQ(same["otherBytesAt"], nullptr);
}

TEST_F(SkelJson, ADiffShowsNumbersThatMeanTheSamePose) {
    std::ifstream in(Seed("roots"), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    bytes[80 + 15] = '\xBF';  // the w of the first quaternion becomes -1
    folder.WriteFile("turned", bytes);
    const Json json =
        Print({"diff", "--json", Seed("roots"), "turned"}, "skel-diff.schema.json", 1);
    ASSERT_EQ(json["transformed"].size(), 1u);
    EXPECT_EQ(json["transformed"][0]["rotationDegrees"], 0.0);
    EXPECT_EQ(
        json["transformed"][0]["rewritten"],
        Json::parse(R"([{"part": "rotation", "before": [0, 0, 0, 1], "after": [0, 0, 0, -1]}])"));
}
