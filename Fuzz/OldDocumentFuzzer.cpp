// Documents of old versions: two bytes ahead of a document choose the version that it is taken
// for. It goes through the stylesheets twice, in one run, where stages that only rename work in
// place, and with a run for each stage, where every stylesheet does its work; then it is loaded.

#include "DocumentMutator.h"
#include "Support/BakeInput.h"

#include "Update/OldDocument.h"
#include "Update/PlainWriter.h"
#include "Update/StageRunner.h"
#include "Update/VokUpdateQelServer.h"
#include "Update/XsltLibrary.h"

#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Tree/VokWorld.h>

#include <libxml/parser.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace {

constexpr std::array<std::string_view, 31> kVersions = {
    "1_0_3",  "1_0_4",  "1_0_5",  "1_0_7",  "1_2_0",  "1_2_1",  "1_4_0",  "1_5_0",
    "1_5_3",  "1_8_0",  "1_8_2",  "1_9_0",  "1_10_0", "1_14_1", "1_15_0", "1_16_0",
    "1_17_0", "1_20_0", "1_20_3", "1_22_0", "1_22_1", "1_22_2", "1_22_4", "1_22_5",
    "1_23_0", "1_23_1", "1_24_1", "1_27_1", "1_27_2", "1_27_3", "1_28_1"};
/// The first version whose paths begin with two bars in the hierarchy.
constexpr std::size_t kTwoBars = 10;

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "OldDocumentFuzzer: %s\n", what.c_str());
    std::abort();
}

std::string Namespace(std::size_t version) {
    return std::string(QelNamespaceRoot) + "/qeli/" + std::string(kVersions[version]) + "/qeli";
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

/// A document of the current version as one of an old version.
std::string Aged(std::string document, std::size_t version) {
    const std::string now = "xmlns=\"" + Namespace(kVersions.size() - 1) + "\"";
    ReplaceAll(document, now, version == 0 ? "" : "xmlns=\"" + Namespace(version) + "\"");
    if (version < kTwoBars) ReplaceAll(document, "\"||", "\"|");
    return document;
}

XmlDocument ReadStep(std::size_t from) {
    const std::string text = "<step><xslt>" + std::string(QelNamespaceRoot) + "/qeli/" +
                             std::string(kVersions[from]) + "/" + std::string(kVersions[from + 1]) +
                             ".xslt</xslt></step>";
    return XmlDocument(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0));
}

/// What the stages from `version` on make of a document, or the words of the failure.
std::string RunStages(const std::string& document, std::size_t version, bool inOneRun) {
    auto& server = dynamic_cast<VokUpdateQelServer&>(VokUpdate::Get());
    try {
        const XsltLibrary xslt;
        XmlDocument tree = ParseOldDocument(document.data(), document.size()).tree;
        auto runner = std::make_unique<StageRunner>(server);
        for (std::size_t i = version; i + 1 < kVersions.size(); ++i) {
            if (!inOneRun) runner = std::make_unique<StageRunner>(server);
            const XmlDocument step = ReadStep(i);
            tree = runner->Run(*step->children, std::move(tree));
        }
        std::ostringstream out;
        WritePlain(out, *tree);
        return out.str();
    } catch (const std::exception& failure) {
        return std::string("failure: ") + failure.what();
    }
}

void Load(const std::string& document) {
    try {
        VokWorld world;
        VokParse parse;
        parse.SetAllowUpdate(true);
        parse.ParseBuffer(world, document.data(), document.size(),
                          VokParse::kFirstBlock | VokParse::kLastBlock, "fuzz.qeli");
    } catch (const std::exception& failure) {
        if (*failure.what() == '\0') Fail("refused without a word");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const VokLib library(true, true, true, true, true);
    std::cerr.rdbuf(nullptr);
    VokUpdate::Get().SetVerbosity(0);

    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t flagBytes = CountFlagBytes(input);
    const std::size_t version =
        flagBytes == 0 ? 0 : static_cast<unsigned char>(input[0]) % 128 % kVersions.size();
    const std::string document = Aged(std::string(input.substr(flagBytes)), version);
    if (flagBytes != 0 && RunStages(document, version, true) != RunStages(document, version, false))
        Fail("the stylesheets and the stages in place differ");
    Load(document);
    return 0;
}
