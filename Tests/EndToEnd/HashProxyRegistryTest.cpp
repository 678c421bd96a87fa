#include "EndToEnd/HashRegistryRun.h"
#include "HashProxy/Collision.h"

TEST_F(HashRegistryRun, GivesTheFileOfARunWithoutARegistry) {
    const std::vector<std::string> names{"hips", "Spine1", "ns:head", "b\xE9ret"};
    EXPECT_EQ(Bake(names).status, 0);
    EXPECT_EQ(Bake(names, "again.bin").status, 0);
    environment.erase("QEL_HASH_SERVER_NAME");
    EXPECT_EQ(Bake(names, "without.bin").status, 0);
    EXPECT_EQ(folder.ReadFile("rig.bin"), folder.ReadFile("without.bin"));
    EXPECT_EQ(folder.ReadFile("again.bin"), folder.ReadFile("without.bin"));
    EXPECT_NE(registry.Server(), 0);  // a second one steps aside
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
    const ProgramResult run = Run("ghost.qeli", "ghost.bin");
    EXPECT_EQ(run.status, 1);
    std::string shown = "    " + WithoutBanner(run.output);
    shown.insert(shown.find('\n') + 1, "    ");
    const std::string guide =
        ProxyFolder::Content(std::string(RIGBAKE_SOURCE_ROOT) + "/docs/hash-registry.md");
    EXPECT_NE(guide.find(shown), std::string::npos) << shown;
}

TEST_F(HashRegistryRun, FiftyToolsShareOneProxy) {
    EXPECT_EQ(Bake({}).status, 0);
    std::vector<std::string> documents;
    for (int i = 0; i < 50; ++i) {
        documents.push_back(std::to_string(i));
        folder.WriteFile(documents.back(), JointDocument({"own" + documents.back(), "shared"}));
    }
    BakeAtOnce(documents);
    EXPECT_TRUE(Eventually([this] { return registry.Proxies().size() == 1; }));
}

TEST_F(HashRegistryRun, AFewToolsThatStartTheProxyTogetherAllFindIt) {
    std::vector<std::string> documents;
    for (int i = 0; i < 6; ++i) {
        documents.push_back(std::to_string(i));
        folder.WriteFile(documents.back(), JointDocument({}));
    }
    BakeAtOnce(documents);
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
    const std::size_t room = 4096 - 24 - (ToolName().size() + 1) - 23 - 17 - 1;
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
    const ProgramResult run = Run("scene.qeli", "rig.bin");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              std::string(kInternal) +
                  "QelHashClientUtil::Initialise : Unable to connect to proxy process (141:2)\n" +
                  kFailed);
}

TEST_F(HashRegistryRun, WithoutAProgramNoLaterStageRuns) {
    UseAProgramThatServesNothing();
    std::filesystem::remove(environment["PATH"] + "/QelHashProxy.exe");
    folder.WriteFile("scene.qeli", "this would fail in the second stage");
    const ProgramResult run = Run("scene.qeli", "rig.bin");
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
                  "QelHashClientUtil::AddString : General proxy communication error (262:" +
                  std::to_string(kPipeIsNotConnected) + ") : scene.qeli\n" + kFailed);
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
    EXPECT_EQ(Run("scene.qeli", "rig.bin").status, 1);
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
              ToolName() + std::string("\0<Unspecified Resource>\0joint\0registryroot\0", 43));
}

TEST_F(HashRegistryRun, ADebugLogThatIsTheSceneOrTheSkeletonIsRefused) {
    EXPECT_EQ(Bake({}).status, 0);
    const std::string scene = folder.ReadFile("scene.qeli");
    const std::string skeleton = folder.ReadFile("rig.bin");
    std::filesystem::create_hard_link(folder.GetPath() / "rig.bin", folder.GetPath() / "hard");
    const auto expectRefused = [this](const std::string& log, const std::string& out,
                                      const std::string& words) {
        environment["QEL_HASH_PROXY_DEBUG_MODE"] = "file:" + log;
        const ProgramResult run = Run("scene.qeli", out);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(
            WithoutBanner(run.output),
            "Error: 102 An error occurred while validating arguments; " + words + "\n" + kFailed);
    };
    for (const std::string log : {"rig.bin", "./rig.bin", "hard"})
        expectRefused(log, "rig.bin", "Output file \"rig.bin\" matches the log file.");
    expectRefused(folder.Path("new.bin"), "new.bin",
                  "Output file \"new.bin\" matches the log file.");
    const std::string input = WithSeparators(folder.Path("scene.qeli"));
    expectRefused(input, "new.bin", "Output file \"" + input + "\" matches an input file.");
    EXPECT_EQ(folder.ReadFile("scene.qeli"), scene);
    EXPECT_EQ(folder.ReadFile("rig.bin"), skeleton);
    EXPECT_FALSE(folder.Has("new.bin"));
}

TEST_F(HashRegistryRun, TheDebugLogAndTheLogAreTwoFiles) {
    EXPECT_EQ(Bake({}).status, 0);
    folder.WriteFile("lines", "of others");
    std::filesystem::create_hard_link(folder.GetPath() / "lines", folder.GetPath() / "hard");
    const auto run = [this](const std::string& debugLog, const std::string& log) {
        environment["QEL_HASH_PROXY_DEBUG_MODE"] = "file:" + debugLog;
        return folder.Run("rigbake", {"-in", "scene.qeli", "-out", "new.bin", "-logfile", log},
                          environment);
    };
    const auto expectRefused = [&](const std::string& debugLog, const std::string& log) {
        const ProgramResult refused = run(debugLog, log);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(WithoutBanner(refused.output),
                  "Error: 102 An error occurred while validating arguments; Log file \"" + log +
                      "\" matches the registry's log file.\n" + kFailed);
    };
    expectRefused("lines", "./lines");
    expectRefused(folder.Path("lines"), "hard");
    expectRefused(folder.Path("fresh"), "fresh");
    EXPECT_EQ(folder.ReadFile("lines"), "of others");
    EXPECT_FALSE(folder.Has("fresh"));
    EXPECT_FALSE(folder.Has("new.bin"));
    EXPECT_EQ(run(kNullDevice, kNullDevice).status, 0);
    EXPECT_EQ(run("lines", "fresh").status, 0);
}

TEST_F(HashRegistryRun, TheDatabaseIsNoOutput) {
    EXPECT_EQ(Bake({}).status, 0);
    folder.WriteFile("names.db", "old");
    const auto expectRefused = [this](std::vector<std::string> more, const std::string& words) {
        if (more.front() != "-in") more.insert(more.begin(), {"-in", "scene.qeli"});
        const ProgramResult run = folder.Run("rigbake", more, environment);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(WithoutBanner(run.output),
                  "Error: 102 An error occurred while validating arguments; " + words +
                      " matches the registry's database.\n" + kFailed);
    };
    environment["QEL_HASH_DATABASE"] = folder.Path("names.db");
    expectRefused({"-out", "names.db"}, "Output file \"names.db\"");
    expectRefused({"-out", "new.bin", "-logfile", "./names.db"}, "Log file \"./names.db\"");
    for (const std::string end : {"-journal", "-wal", "-shm"})
        expectRefused({"-out", "names.db" + end}, "Output file \"names.db" + end + "\"");
    expectRefused({"-out", "none/../names.db"}, "Output file \"none/../names.db\"");
    environment["QEL_HASH_PROXY_DEBUG_MODE"] = "file:names.db";
    const std::string log = WithSeparators(folder.Path("names.db"));
    expectRefused({"-out", "new.bin"}, "Log file \"" + log + "\"");
    environment.erase("QEL_HASH_PROXY_DEBUG_MODE");
    std::filesystem::rename(folder.GetPath() / "scene.qeli", folder.GetPath() / "names.db-wal");
    expectRefused({"-in", "names.db-wal", "-out", "new.bin"}, "Input file \"names.db-wal\"");
    std::filesystem::rename(folder.GetPath() / "names.db-wal", folder.GetPath() / "scene.qeli");
    expectRefused({"-out", "names", "-ble", "-bs", ".db"}, "Output file \"names.db\"");
    EXPECT_EQ(folder.ReadFile("names.db"), "old");
    environment.erase("QEL_HASH_DATABASE");
    environment["XDG_DATA_HOME"] = folder.Path();
    environment["LOCALAPPDATA"] = folder.Path();
    const std::string standard = WithSeparators("QelHashProxy/registry.sqlite");
    expectRefused({"-out", standard}, "Output file \"" + standard + "\"");
    environment["QEL_HASH_SERVER_NAME"] = "";
    EXPECT_EQ(Run("scene.qeli", standard).status, 0);
}

TEST_F(HashRegistryRun, ADebugLogThatIsNotWrittenIsNotRefused) {
    EXPECT_EQ(Bake({}).status, 0);
    const std::string skeleton = folder.ReadFile("rig.bin");
    environment["QEL_HASH_PROXY_DEBUG_MODE"] = "rig.bin";
    EXPECT_EQ(Bake({}).status, 0);
    environment["QEL_HASH_PROXY_DEBUG_MODE"] = "file:rig.bin";
    for (const std::string server : {"", "local"}) {
        environment["QEL_HASH_SERVER_NAME"] = server;
        EXPECT_EQ(Bake({}).status, server.empty() ? 0 : 1);
        EXPECT_EQ(folder.ReadFile("rig.bin"), skeleton);
    }
}
