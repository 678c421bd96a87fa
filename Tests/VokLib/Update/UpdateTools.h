#pragma once

#include "VokLib/Document/ParseTools.h"

#include "Update/OldDocument.h"
#include "Update/PlainWriter.h"
#include "Update/StageRunner.h"
#include "Update/VokUpdateTweak190.h"
#include "Update/XsltLibrary.h"

#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Document/VokUpdateFailure.h>
#include <VokLib/Library/VokLib.h>

#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <libxslt/extensions.h>
#include <libxslt/transform.h>

#include <algorithm>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Helpers for tests of the format update.
namespace UpdateTools {

inline const std::vector<std::string>& Versions() {
    static const std::vector<std::string> versions = {
        "1_0_3",  "1_0_4",  "1_0_5",  "1_0_7",  "1_2_0",  "1_2_1",  "1_4_0",  "1_5_0",
        "1_5_3",  "1_8_0",  "1_8_2",  "1_9_0",  "1_10_0", "1_14_1", "1_15_0", "1_16_0",
        "1_17_0", "1_20_0", "1_20_3", "1_22_0", "1_22_1", "1_22_2", "1_22_4", "1_22_5",
        "1_23_0", "1_23_1", "1_24_1", "1_27_1", "1_27_2", "1_27_3", "1_28_1"};
    return versions;
}

inline std::string Uri(const std::string& name) {
    return std::string(QelNamespaceRoot) + "/qeli/" + name;
}

/// What Update reads.
class Input : public VokUpdate::InputBuffer {
  public:
    explicit Input(std::string text) : bytes(std::move(text)) {}
    const char* GetData() const override { return bytes.empty() ? nullptr : bytes.data(); }
    std::size_t GetSize() const override { return bytes.size(); }
    void Free() override {
        isFreed = true;
        std::string().swap(bytes);
    }

    bool isFreed = false;

  private:
    std::string bytes;
};

/// A server of documents that a test makes up; every other URI goes to the documents of the
/// program.
class FakeServer : public VokUpdateTweak190 {
  public:
    FakeServer() : VokUpdateTweak190("qelrootrelative") {}

    XmlDocument LoadDocument(const std::string& uri) override {
        loaded.push_back(uri);
        const auto found = texts.find(uri);
        if (found == texts.end()) return VokUpdateTweak190::LoadDocument(uri);
        if (found->second.empty()) return nullptr;
        return ParseUpdateDocument(found->second, uri);
    }
    XmlStylesheet LoadStylesheet(const std::string& uri) override {
        loaded.push_back(uri);
        const auto found = texts.find(uri);
        if (found == texts.end()) return VokUpdateTweak190::LoadStylesheet(uri);
        if (found->second.empty()) return nullptr;
        return CompileStylesheet(ParseUpdateDocument(found->second, uri));
    }

    std::map<std::string, std::string> texts;  // an empty one is a result of null
    std::vector<std::string> loaded;
};

/// The library with a fake server as its update.
class UpdateTest : public testing::Test {
  protected:
    /// What Update writes for `document`.
    std::string Updated(const std::string& document, const std::string& version) {
        std::ostringstream out;
        Input input(document);
        server->Update(out, input, version);
        return out.str();
    }
    /// What it throws.
    std::string Failure(const std::string& document, const std::string& version) {
        return ThrownText([&] { Updated(document, version); });
    }
    /// `document` through one stylesheet.
    std::string RunSheet(const std::string& uri, const std::string& document) {
        const XmlDocument step =
            ParseUpdateDocument("<step><xslt>" + uri + "</xslt></step>", "step");
        const XsltLibrary xslt;
        StageRunner runner(*server);
        const XmlDocument result =
            runner.Run(*step->children, ParseOldDocument(document.data(), document.size()).tree);
        std::ostringstream out;
        WritePlain(out, *result);
        return out.str();
    }

    VokLib library{true, true, true, true, false};
    std::unique_ptr<FakeServer> server = std::make_unique<FakeServer>();
};

/// One stage, from a version to its successor.
class StageTest : public UpdateTest {
  protected:
    StageTest(std::string fromVersion, std::string toVersion)
        : from(std::move(fromVersion)), to(std::move(toVersion)) {}

    std::string Sheet() const { return Uri(from + "/" + to + ".xslt"); }
    /// The stage's result for a whole document.
    std::string Run(const std::string& document) { return RunSheet(Sheet(), document); }
    /// What stands inside the root of the result, of a document of `contents`.
    std::string Inside(const std::string& contents) {
        const std::string text =
            Run("<QEL xmlns='" + VersionNamespace(from) + "'>" + contents + "</QEL>");
        const std::size_t start = text.find('>', text.find("<QEL")) + 1;
        return text.substr(start, text.rfind("</QEL>") - start);
    }
    /// Everything that the stylesheet says of it.
    std::string Messages(const std::string& contents) {
        server->SetVerbosity(2);
        testing::internal::CaptureStdout();
        try {
            Inside(contents);
        } catch (const VokUpdateFailure&) {
        }
        return testing::internal::GetCapturedStdout();
    }

    const std::string from;
    const std::string to;
};

}  // namespace UpdateTools
