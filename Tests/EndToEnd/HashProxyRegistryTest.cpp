#include "EndToEnd/ProgramRun.h"
#include "HashProxy/Collision.h"
#include "HashProxy/ProxyFolder.h"
#include "HashProxy/ScriptedProxy.h"
#include "Platform/RawSocket.h"

#include <HashClient/LocalHash.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

using Environment = std::map<std::string, std::string>;

constexpr char kInternal[] = "Error: 2 An internal error occurred; ";
constexpr char kFailed[] = "Error: Tool encountered errors\n";

std::string JointDocument(const std::vector<std::string>& names) {
    std::string joints = "<joint name=\"registryroot\">";
    for (const std::string& name : names) joints += "<joint name=\"" + name + "\"/>";
    return Document("<scene>" + joints + "</joint></scene>");
}

std::optional<std::string> AnswerWithTheUsualHash(const std::string& request) {
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
        return folder.Run("rigbake", {"-in", "scene.qeli", "-out", out}, environment);
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
        return folder.Run("rigbake", {"-in", "scene.qeli", "-out", "driven.bin"}, environment);
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
    void UseAProgramThatServesNothing() {
        environment["PATH"] = ScriptedProxy::EmptyProgram(registry.Path());
    }

    ProxyFolder registry;
    ScopedEnvironment session{"XDG_RUNTIME_DIR", registry.Path()};
    RunFolder folder;
    Environment environment;
    std::unique_ptr<ScriptedProxy> proxy;
};

TEST_F(HashRegistryRun, GivesTheFileOfARunWithoutARegistry) {
    const std::vector<std::string> names{"hips", "Spine1", "ns:head", "b\xE9ret"};
    EXPECT_EQ(Bake(names).status, 0);
    EXPECT_EQ(Bake(names, "again.bin").status, 0);
    environment.erase("QEL_HASH_SERVER_NAME");
    EXPECT_EQ(Bake(names, "without.bin").status, 0);
    EXPECT_EQ(folder.ReadFile("rig.bin"), folder.ReadFile("without.bin"));
    EXPECT_EQ(folder.ReadFile("again.bin"), folder.ReadFile("without.bin"));
    EXPECT_EQ(registry.Proxies().size(), 1u);
}

TEST_F(HashRegistryRun, ACollisionInOneDocumentIsRefused) {
    const auto [one, two] = CollidingNames();
    const ProgramResult run = Bake({one, two});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              std::string(kInternal) +
                  "QelHashClientUtil::AddString : Hash collision in category 'joint', between '" +
                  two + "' and '" + one + "'. : scene.qeli\n" + kFailed);
    EXPECT_FALSE(folder.Has("rig.bin"));
}

TEST_F(HashRegistryRun, ACollisionWithAnEarlierRunIsRefused) {
    const auto [one, two] = CollidingNames();
    EXPECT_EQ(Bake({two}).status, 0);
    const ProgramResult run = Bake({one}, "second.bin");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output.find("between '" + one + "' and '" + two + "'."), std::string::npos);
    EXPECT_FALSE(folder.Has("second.bin"));
}

TEST_F(HashRegistryRun, TheGuideShowsWhatIsPrinted) {
    EXPECT_EQ(Bake({"foot505_twist"}).status, 0);
    folder.WriteFile("ghost.qeli", JointDocument({"LeftChain131_end"}));
    const ProgramResult run =
        folder.Run("rigbake", {"-in", "ghost.qeli", "-out", "ghost.bin"}, environment);
    EXPECT_EQ(run.status, 1);
    std::string shown = "    " + WithoutBanner(run.output);
    shown.insert(shown.find('\n') + 1, "    ");
    const std::string guide =
        ProxyFolder::Content(std::string(RIGBAKE_SOURCE_ROOT) + "/docs/hash-registry.md");
    EXPECT_NE(guide.find(shown), std::string::npos) << shown;
}

TEST_F(HashRegistryRun, FiftyToolsShareOneProxy) {
    EXPECT_EQ(Bake({}).status, 0);
    for (int i = 0; i < 50; ++i)
        folder.WriteFile(std::to_string(i) + ".qeli",
                         JointDocument({"own" + std::to_string(i), "shared"}));
    std::string command = "cd '" + folder.GetPath().string() + "' && for i in $(seq 0 49); do {";
    for (const auto& [name, value] : environment) command += " " + name + "='" + value + "'";
    command += " rigbake -in $i.qeli -out $i.bin >/dev/null && touch $i.good; } & done; wait";
    ASSERT_EQ(std::system(command.c_str()), 0);
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(folder.Has(std::to_string(i) + ".good"));
        EXPECT_TRUE(folder.Has(std::to_string(i) + ".bin"));
    }
    EXPECT_TRUE(Eventually([this] { return registry.Proxies().size() == 1; }));
}

TEST_F(HashRegistryRun, AFewToolsThatStartTheProxyTogetherAllFindIt) {
    std::string command = "cd '" + folder.GetPath().string() + "' && for i in 1 2 3 4 5 6; do {";
    folder.WriteFile("scene.qeli", JointDocument({}));
    for (const auto& [name, value] : environment) command += " " + name + "='" + value + "'";
    command += " rigbake -in scene.qeli -out $i.bin >/dev/null && touch $i.good; } & done; wait";
    ASSERT_EQ(std::system(command.c_str()), 0);
    for (int i = 1; i <= 6; ++i) EXPECT_TRUE(folder.Has(std::to_string(i) + ".good"));
}

TEST_F(HashRegistryRun, DrivenKeysHaveACategoryOfTheirOwn) {
    const auto [one, two] = CollidingNames();
    EXPECT_EQ(BakeDrivenBy(one).status, 0);
    EXPECT_EQ(Bake({two}).status, 0);
    const ProgramResult run = BakeDrivenBy(two);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              std::string(kInternal) +
                  "QelHashClientUtil::AddString : Hash collision in category 'drivenkeychannel', "
                  "between '" +
                  two + "' and '" + one + "'. : scene.qeli\n" + kFailed);
}

TEST_F(HashRegistryRun, ChannelsOfMaterialsAndBlendshapesAreRegisteredAsObjectsToo) {
    Serve(AnswerWithTheUsualHash);
    EXPECT_EQ(BakeDriven("|ns:Skin", "Tint2", "Dial").status, 0);
    EXPECT_EQ(Registered(), (std::vector<std::string>{
                                "joint root", "drivenkeychannel tint2", "drivenkeychannel Tint",
                                "drivenkeyobject Tint", "drivenkeychannel dial"}));
    Serve(AnswerWithTheUsualHash);
    EXPECT_EQ(BakeDriven("|ns:Face", "Smile", "Dial").status, 0);
    EXPECT_EQ(Registered(),
              (std::vector<std::string>{"joint root", "drivenkeychannel smile",
                                        "drivenkeyobject smile", "drivenkeychannel dial"}));
    Serve(AnswerWithTheUsualHash);
    EXPECT_EQ(BakeDrivenBy("Dial").status, 0);
    EXPECT_EQ(Registered(), (std::vector<std::string>{"joint root", "drivenkeychannel rotatex",
                                                      "drivenkeychannel dial"}));
}

TEST_F(HashRegistryRun, ANameThatDoesNotFitARequestIsRefused) {
    // Beside the name a request holds its header, the names of tool and resource and the category.
    const std::size_t room = 4096 - 24 - 8 - 23 - 17 - 1;
    EXPECT_EQ(BakeDrivenBy(std::string(room, 'a')).status, 0);
    const ProgramResult run = BakeDrivenBy(std::string(room + 1, 'a'));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              std::string(kInternal) +
                  "QelHashClientUtil::AddString : Function was passed illegal arguments : "
                  "scene.qeli\n" +
                  kFailed);
    // Without a registry there is no such limit.
    environment["QEL_HASH_SERVER_NAME"] = "";
    EXPECT_EQ(BakeDrivenBy(std::string(room + 1, 'a')).status, 0);
}

TEST_F(HashRegistryRun, AProxyThatNeverListensEndsTheRunInItsFirstStage) {
    UseAProgramThatServesNothing();
    folder.WriteFile("scene.qeli", "this would fail in the second stage");
    const ProgramResult run =
        folder.Run("rigbake", {"-in", "scene.qeli", "-out", "rig.bin"}, environment);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              std::string(kInternal) +
                  "QelHashClientUtil::Initialise : Unable to connect to proxy process (141:2)\n" +
                  kFailed);
}

TEST_F(HashRegistryRun, APipeThatAKilledProxyLeftIsTriedTwiceASecond) {
    UseAProgramThatServesNothing();
    { EXPECT_TRUE(RawSocket().Listen(PipePath())); }
    const std::size_t tries = BakeAndCountTheTries("(141:111)");
    EXPECT_GE(tries, 1u);
    EXPECT_LE(tries, 5u);
}

TEST_F(HashRegistryRun, AProxyWithoutRoomIsTriedAFewTimesASecond) {
    UseAProgramThatServesNothing();
    const RawSocket server;
    ASSERT_TRUE(server.Listen(PipePath(), 0));
    const RawSocket first;
    ASSERT_TRUE(first.Connect(PipePath()));
    const std::size_t tries = BakeAndCountTheTries("(141:11)");
    EXPECT_GE(tries, 2u);
    EXPECT_LE(tries, 41u);
}

TEST_F(HashRegistryRun, WithoutAProgramNoLaterStageRuns) {
    environment["PATH"] = "/nowhere";
    folder.WriteFile("scene.qeli", "this would fail in the second stage");
    const ProgramResult run =
        folder.Run("rigbake", {"-in", "scene.qeli", "-out", "rig.bin"}, environment);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              std::string(kInternal) +
                  "QelHashClientUtil::Initialise : Unable to spawn proxy process (58:2)\n" +
                  kFailed);
}

TEST_F(HashRegistryRun, AProxyThatHangsUpEndsTheRun) {
    Serve([](const std::string&) { return std::nullopt; });
    const ProgramResult run = Bake({});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              std::string(kInternal) +
                  "QelHashClientUtil::AddString : General proxy communication error (262:107) : "
                  "scene.qeli\n" +
                  kFailed);
    EXPECT_FALSE(folder.Has("rig.bin"));
}

TEST_F(HashRegistryRun, AGoodbyeThatFailsTurnsAGoodRunBad) {
    Serve([](const std::string& request) {
        return request[0] == 2 ? std::string("\0\0\0\x80", 4) : ScriptedProxy::GoodAnswer(request);
    });
    const ProgramResult run = Bake({});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              "Error: QelHashClientUtil::Shutdown : General proxy communication error\n");
    EXPECT_TRUE(folder.Has("rig.bin"));
}

TEST_F(HashRegistryRun, ARunThatFailsLaterStillSaysGoodbye) {
    Serve([](const std::string& request) { return ScriptedProxy::GoodAnswer(request); });
    folder.WriteFile("scene.qeli", "not a document");
    EXPECT_EQ(folder.Run("rigbake", {"-in", "scene.qeli", "-out", "rig.bin"}, environment).status,
              1);
    ASSERT_EQ(proxy->Requests().size(), 1u);
    EXPECT_EQ(proxy->Requests().front(), std::string("\2\0\0\0\x15\0\0\0\4\0\0\0shutdown\0", 21));
}

TEST_F(HashRegistryRun, TheRegistrysHashesStandInTheFile) {
    Serve(
        [](const std::string& request) { return ScriptedProxy::GoodAnswer(request, 0xCAFEBABE); });
    EXPECT_EQ(Bake({}).status, 0);
    EXPECT_NE(folder.ReadFile("rig.bin").find("\xBE\xBA\xFE\xCA"), std::string::npos);
    ASSERT_EQ(proxy->Requests().size(), 2u);
    // The tool's name without its folder, no resource, the category and the name in lower case.
    EXPECT_EQ(proxy->Requests().front().substr(24),
              std::string("rigbake\0<Unspecified Resource>\0joint\0registryroot\0", 50));
}

}  // namespace
