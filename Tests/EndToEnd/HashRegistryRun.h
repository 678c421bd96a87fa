#pragma once

#include "EndToEnd/ProgramRun.h"
#include "HashProxy/ProxyFolder.h"
#include "HashProxy/ScriptedProxy.h"

#include <HashClient/LocalHash.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using Environment = std::map<std::string, std::string>;

inline constexpr char kInternal[] = "Error: 2 An internal error occurred; ";
inline constexpr char kFailed[] = "Error: Tool encountered errors\n";

inline std::string JointDocument(const std::vector<std::string>& names) {
    std::string joints = "<joint name=\"registryroot\">";
    for (const std::string& name : names) joints += "<joint name=\"" + name + "\"/>";
    return Document("<scene>" + joints + "</joint></scene>");
}

inline std::optional<std::string> AnswerWithTheUsualHash(const std::string& request) {
    ProxyMessage::AddStringRequest strings;
    ProxyMessage::ReadRequest(request, strings);
    return ScriptedProxy::GoodAnswer(request, QelHashClient::LocalHash(strings.string));
}

/// Bakes with a registry that belongs to the test alone.
class HashRegistryRun : public testing::Test {
  protected:
    HashRegistryRun() {
        for (const auto& [name, value] : registry.Environment()) environment[name] = value;
    }

    ProgramResult Bake(const std::vector<std::string>& names, const std::string& out = "rig.bin") {
        folder.WriteFile("scene.qeli", JointDocument(names));
        return Run("scene.qeli", out);
    }

    /// Bakes a joint that is driven by an attribute.
    ProgramResult BakeDrivenBy(const std::string& attribute) {
        return BakeDriven("||root", "rotateX", attribute);
    }
    ProgramResult BakeDriven(const std::string& target, const std::string& channel,
                             const std::string& attribute) {
        folder.WriteFile(
            "scene.qeli",
            Document(
                "<scene><joint name=\"root\"/></scene><scene name=\"apart\"><node "
                "name=\"ctl\"/></scene><material name=\"ns:Skin\" url=\"\"/><blendshapeController "
                "name=\"ns:Face\"/><anim name=\"k\" target=\"" +
                target + "\"><animChannel name=\"\" channel=\"" + channel +
                "\" inputObject=\"|apart|ctl\" inputChannel=\"" + attribute +
                "\"><animData interp=\"QELCurve\" numKeys=\"2\" keyStride=\"4\"><keyValues>1 2 "
                "0 0 3 0 0 0</keyValues><keyTimes>0 1</keyTimes></animData></animChannel>"
                "</anim>"));
        return Run("scene.qeli", "driven.bin");
    }

    ProgramResult Run(const std::string& in, const std::string& out) {
        return folder.Run(tool, {"-in", in, "-out", out}, environment);
    }

    /// Bakes each of the documents, all at the same time, into a file of its name with ".bin".
    void BakeAtOnce(const std::vector<std::string>& documents) const {
        std::vector<std::thread> runs;
        for (const std::string& document : documents)
            runs.emplace_back([this, &document] {
                const ProgramResult run = RunProgram({tool,
                                                      {"-in", document, "-out", document + ".bin"},
                                                      folder.Path(),
                                                      environment,
                                                      ""});
                EXPECT_EQ(run.status, 0) << run.output << run.errors;
            });
        for (std::thread& run : runs) run.join();
        for (const std::string& document : documents)
            EXPECT_TRUE(folder.Has(document + ".bin")) << document;
    }

    /// What the proxy was asked, each as "category string".
    std::vector<std::string> Registered() {
        std::vector<std::string> registered;
        for (const std::string& request : proxy->Requests()) {
            ProxyMessage::AddStringRequest strings;
            if (ProxyMessage::ReadRequest(request, strings) == ProxyMessage::Request::AddString)
                registered.push_back(std::string(strings.category) + " " +
                                     std::string(strings.string));
        }
        return registered;
    }

    /// How the tool calls itself: as its file.
    static std::string ToolName() {
        return std::filesystem::path(BuiltProgram("rigbake")).filename().string();
    }

    /// How often a bake tries to open a pipe that never opens.
    std::size_t BakeAndCountTheTries(const std::string& reason) {
        environment["QEL_HASH_PROXY_DEBUG_MODE"] = "file:" + registry.Path("log");
        std::filesystem::remove(registry.Path("log"));
        const ProgramResult run = Bake({});
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.output.find("Unable to connect to proxy process " + reason + "\n"),
                  std::string::npos)
            << run.output;
        const std::string log = ProxyFolder::Content(registry.Path("log"));
        const std::string one = "Attempting to CreateFile() on the pipe\n";
        std::size_t count = 0;
        for (std::size_t at = log.find(one); at != std::string::npos; at = log.find(one, at + 1))
            ++count;
        return count;
    }
    std::string PipePath() const { return registry.Path("QelHashProxy_pipe"); }

    /// Replaces the registry by one that answers as `script` says.
    void Serve(ScriptedProxy::Script script) {
        proxy.reset();
        UseAProgramThatServesNothing();
        proxy = std::make_unique<ScriptedProxy>(std::move(script));
    }
    /// Some systems look for it beside the tool before all other places, so the tool goes along.
    void UseAProgramThatServesNothing() {
        environment["PATH"] = ScriptedProxy::EmptyProgram(registry.Path());
        const std::filesystem::path built = BuiltProgram("rigbake");
        tool = environment["PATH"] + "/" + built.filename().string();
        std::filesystem::copy_file(built, tool, std::filesystem::copy_options::skip_existing);
    }

    ProxyFolder registry;
    ScopedEnvironment session{"XDG_RUNTIME_DIR", registry.Path()};
    RunFolder folder;
    Environment environment;
    std::string tool = "rigbake";
    std::unique_ptr<ScriptedProxy> proxy;
};
