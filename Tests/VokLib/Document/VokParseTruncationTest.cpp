#include "VokLib/Document/ParseTools.h"

#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/VokScene.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using namespace ParseTools;

namespace {

/// Documents that use much of the reader: every encoding way, markup of all kinds, links, custom
/// data, old versions.
std::vector<std::string> Documents() {
    return {
        Document("<scene><joint name='a\xE9'><translate>1.0 2.5e-1 -3</translate><!-- x > "
                 "--><customData>"
                 "<attribute name='f' type='floatarray' count='3'>1 2 3 </attribute>"
                 "<attribute name='s' type='string' isArray='true'><value "
                 "index='2'>t&lt;&#65;</value></attribute>"
                 "</customData><joint name=\"b\"/></joint></scene><objset name='s'><member "
                 "path='||a\xE9|b'/></objset>"
                 "<parseacceleration><x><y/></x></parseacceleration>"),
        Document("<scene><![CDATA[ x ]]><?pi a?><node name='n'><rotEul rotOrd='zyx'>1 2 "
                 "3</rotEul></node></scene>",
                 {.version = "1_27_3", .encoding = "UTF-8"}),
        Document("<scene><node name='n'/></scene>", {.version = "1_2_0"}),
        "<?xml version='1.0'?><!DOCTYPE QEL [<!ENTITY e 'x'><!-- ' -->]>" + Document("").substr(44),
    };
}

class ParseTruncation : public ReaderTest {
  protected:
    /// The load ends in a tree or a text, the same ones each time, and the reader reads a good
    /// document behind it.
    void Survives(std::string_view document, std::size_t blockBytes = 1u << 20) {
        parse.SetAllowUpdate(true);
        update.compatible = !document.empty() && document.size() % 2 == 0;
        update.result = document;
        const std::string outcome = OutcomeOf(document, blockBytes);
        EXPECT_NE(outcome, "");
        EXPECT_EQ(OutcomeOf(document, blockBytes), outcome) << document;

        VokWorld good;
        Parse(parse, good, Document("<scene><joint name='a'/><joint name='b'/></scene>"));
        EXPECT_EQ(good.GetHierarchy()->GetChildCount(), 2u) << "behind " << document;
    }

    VokParse parse;

  private:
    /// The tree as text, or what the failure says.
    std::string OutcomeOf(std::string_view document, std::size_t blockBytes) {
        VokWorld world;
        std::ostringstream written;
        VokDocumentFile file(written);
        std::string failure =
            ThrownText([&] { ParseInBlocks(parse, world, document, blockBytes); });
        if (failure.empty()) failure = ThrownText([&] { world.Write(file); });
        return failure.empty() ? written.str() : failure;
    }
};

TEST_F(ParseTruncation, DocumentsCutAnywhereEndInAnError) {
    for (const std::string& document : Documents()) {
        for (std::size_t size = 0; size + 2 < document.size(); ++size)
            EXPECT_NE(LoadText(document.substr(0, size)), "") << size << " " << document;
    }
}

TEST_F(ParseTruncation, DocumentsCutAnywhereAreSurvivedWithUpdates) {
    for (const std::string& document : Documents())
        for (std::size_t size = 0; size < document.size(); size += 3)
            Survives(document.substr(0, size), 1 + size / 2);
}

TEST_F(ParseTruncation, ChangedBytesAreSurvived) {
    constexpr unsigned char kBytes[] = {0x00, 0xFF, '<', '>', '"', '\'', '&', '/', ' ', '9', 0xC3};
    for (const std::string& document : Documents()) {
        for (std::size_t at = 0; at < document.size(); ++at) {
            std::string changed = document;
            changed[at] = static_cast<char>(kBytes[at % std::size(kBytes)]);
            Survives(changed);
            changed.erase(at, 1);
            Survives(changed);
        }
    }
}

TEST_F(ParseTruncation, ShuffledPiecesAreSurvived) {
    std::mt19937 random(1);
    const std::vector<std::string> documents = Documents();
    for (int round = 0; round < 300; ++round) {
        std::string mixed = documents[random() % documents.size()];
        for (int change = 0; change < 4; ++change) {
            const std::string& from = documents[random() % documents.size()];
            const std::size_t begin = random() % from.size();
            mixed.insert(random() % mixed.size(), from.substr(begin, random() % 60));
        }
        Survives(mixed, 1 + random() % mixed.size());
    }
}

}  // namespace
