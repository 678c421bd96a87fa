#include <HashClient/QelHashClientUtil.h>
#include <VokLib/Base/VokException.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VoktFramework/Atoms/VoktAtomBiff.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <VoktRigbake/Stages/VoktChangeUpAxis.h>
#include <VoktRigbake/Stages/VoktFindRootJoints.h>
#include <VoktRigbake/Stages/VoktRigbake.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// A bake reads past what it does not look at; nobody can tell from the file, the messages or the
// status.

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPiece = 701;

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> TestDocuments() {
    std::vector<std::string> documents;
    for (const char* folder : {"Examples", "Tests/Documents"})
        for (const auto& entry : fs::directory_iterator(fs::path(RIGBAKE_SOURCE_ROOT) / folder))
            if (entry.path().extension() == ".qeli") documents.push_back(ReadFile(entry.path()));
    return documents;
}

/// Words of a number list, some of them not numbers.
std::string MakeWords(std::mt19937& random, std::size_t count) {
    constexpr const char* kWords[] = {"0", "1", "2", "-3", "0.5", "1e3", "x", "true", "4294967295"};
    constexpr const char* kBlanks[] = {" ", "\n", "\t", "  ", " &#32;", "<!-- -->\n"};
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += std::string(kWords[random() % std::size(kWords)]) +
                kBlanks[random() % std::size(kBlanks)];
    return text;
}

/// A document of everything that is left out, with counts that are right, too low and too high.
std::string MakeDocument(std::mt19937& random) {
    const auto count = [&random] {
        return "count=\"" + std::to_string(random() % 16 == 0 ? 70000 : random() % 12) + "\"";
    };
    const auto list = [&](std::string_view name, const std::string& attributes) {
        return "<" + std::string(name) + " " + attributes + ">" + MakeWords(random, random() % 14) +
               "</" + std::string(name) + ">";
    };
    std::string text = R"(<?xml version="1.0" encoding="ISO-8859-1"?><QEL xmlns=")" +
                       std::string(QelCurrentNamespace) + R"(" filenameform="absolute"><scene>)" +
                       R"(<joint name="a"><joint name="b"/></joint></scene>)";
    text += "<mesh name='m'><vertexArray><primitives type='POLYGONS' " + count() +
            "><binding source='p'/>" + (random() % 2 == 0 ? "<binding source='q'/>" : "") +
            list("sizes", "") + list("indices", "") + "</primitives>" + list("sizes", "") +
            list("indices", "") + list("array", "name='p' stride='1' " + count()) +
            "<blindData name='d' component='Edge' numComponents='" + std::to_string(random() % 9) +
            "'>" + list("components", "") + list("attribute", "name='x' type='Int'") +
            list("attribute", "name='y' type='Bool'") + list("attribute", "name='z' type='Float'") +
            "</blindData></vertexArray></mesh><skin name='s'>" + list("weights", count()) +
            list("components", count()) + "</skin>" + "<nurbsCurve name='c' degree='2'>" +
            list("points", count()) + list("knots", count()) +
            "</nurbsCurve><nurbs name='n'><surface>" +
            list("controlVertices", "numCVinU='2' numCVinV='3'") +
            list("knotsInU", "numKnotsInU='4'") + list("knotsInV", "numKnotsInV='5'") +
            "</surface></nurbs><blendshape name='b' controller=''><target weightIndex='0'>"
            "<blendtarget name='t'><diff name='d'>" +
            list("indices", count()) + list("deltas", count()) +
            "</diff></blendtarget></target></blendshape><pmdataQEL name='p' target=''>" +
            list("vs", count()) + list("faces", count()) + list("costs", count()) + "</pmdataQEL>";
    text += "<node name='k'><customData>" +
            list("attribute", "name='f' type='floatarray' " + count()) +
            "<attribute name='g' type='floatarray' isArray='true'>" +
            list("value", "index='1' " + count()) + list("value", "index='0' " + count()) +
            "</attribute><attribute name='i' type='int' value='3'/>"
            "<attribute name='v' type='vector3' isArray='true'>" +
            list("value", "index='7'") + "</attribute><attribute name='s' type='string'>caf\xE9" +
            MakeWords(random, 2) + "</attribute><attribute name='o' type='objlink'>||a|b" +
            "</attribute></customData></node>";
    return text + "</QEL>";
}

std::string Mutate(std::mt19937& random, const std::vector<std::string>& from) {
    constexpr std::string_view kPieces[] = {"<",
                                            "\"",
                                            "&#x20AC;",
                                            " count=\"9\"",
                                            "<node name=\"x\"/>",
                                            "<customData>",
                                            "</attribute>",
                                            "\t",
                                            "1 ",
                                            "type=\"v\"",
                                            " value=\"1\"",
                                            "isArray=\"true\"",
                                            "\xE9",
                                            "<value/>"};
    std::string text = from[random() % from.size()];
    for (std::uint32_t i = 0; i < 1 + random() % 3; ++i) {
        const std::size_t at = random() % text.size();
        switch (random() % 4) {
            case 0:
                text[at] = static_cast<char>(random() % 128);
                break;
            case 1:
                text.erase(at, random() % 40);
                break;
            case 2:
                text.insert(at, kPieces[random() % std::size(kPieces)]);
                break;
            default:
                text.insert(random() % text.size(), text.substr(at, random() % 200));
        }
        if (text.empty()) text = " ";
    }
    return text;
}

/// The file's bytes, or what failed, with the object; the reader's warnings are the same object's.
std::string Bake(std::string_view document, VokParse::Wanted wanted, std::string_view axis) {
    VoktErrorHandler errors;
    VoktUniverse universe;
    std::ostringstream outcome;
    try {
        auto atom = std::make_unique<VoktAtomVokWorld>();
        VokParse parse;
        parse.SetWanted(wanted);
        // In pieces, as texts come from a long file.
        bool last = false;
        for (std::size_t at = 0; !last; at += kPiece) {
            last = document.size() - at <= kPiece;
            parse.ParseBuffer(
                atom->world, document.data() + at, std::min(document.size() - at, kPiece),
                (at == 0 ? VokParse::kFirstBlock : 0) | (last ? VokParse::kLastBlock : 0), nullptr);
        }
        universe.Add(std::move(atom), "world");
        VoktFindRootJoints(nullptr).Process(universe);
        VoktChangeUpAxis turn;
        turn.SetFlag("-changeUpAxis", std::string(axis));
        turn.SetFlag("-changeUpAxisAnimation", "1");
        turn.Validate();
        turn.Process(universe);
        VoktRigbake(nullptr, kSkeletonForAnimation).Process(universe);
        universe.FetchByTypeAndName<VoktAtomBiff>("skeleton")->block.Write(outcome, 0);
    } catch (const VokException& failure) {
        outcome << failure.what() << " {" << failure.GetCauseObject() << "}";
    } catch (const std::exception& failure) {
        outcome << failure.what();
    }
    errors.Print(outcome);
    return outcome.str();
}

class RigbakeContents : public testing::Test {
  protected:
    RigbakeContents() { QelHashClientUtil::Initialise(); }
    ~RigbakeContents() noexcept override { QelHashClientUtil::Shutdown(); }

    static bool IsTheSame(std::string_view document) {
        const std::string_view axis = document.size() % 2 == 0 ? "y" : "z";
        const std::string all = Bake(document, VokParse::Wanted::Everything, axis);
        const std::string part = Bake(document, VokParse::Wanted::WhatABakeReads, axis);
        EXPECT_EQ(all, part) << document;
        return all == part;
    }

    VokLib library{true, true, true, true, true};
    std::mt19937 random{2026};
};

TEST_F(RigbakeContents, TestDocumentsBakeTheSame) {
    for (const std::string& document : TestDocuments()) IsTheSame(document);
}

TEST_F(RigbakeContents, ListsOfEveryLengthAreTakenForTheSame) {
    for (int round = 0; round < 1000; ++round)
        if (!IsTheSame(MakeDocument(random))) return;
}

TEST_F(RigbakeContents, BrokenDocumentsFailTheSame) {
    std::vector<std::string> documents = TestDocuments();
    for (int i = 0; i < 12; ++i) documents.push_back(MakeDocument(random));
    for (int round = 0; round < 5000; ++round)
        if (!IsTheSame(Mutate(random, documents))) return;
}

}  // namespace
