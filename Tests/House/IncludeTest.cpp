#include "House/SourceRules.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Faults = std::vector<std::string>;

TEST(House, EverySourceKeepsTheRules) {
    const std::vector<SourceFile> files = ReadCheckout(RIGBAKE_SOURCE_ROOT);
    const auto isRead = [&files](const std::string& path) {
        return std::any_of(files.begin(), files.end(),
                           [&path](const SourceFile& file) { return file.path == path; });
    };
    EXPECT_TRUE(isRead("Libraries/Include/VokLib/VokObj.h"));
    EXPECT_TRUE(isRead("Libraries/Platform/Process_posix.cpp"));
    EXPECT_TRUE(isRead("Standalone/Rigbake/main.cpp"));
    EXPECT_TRUE(isRead("Tests/House/IncludeTest.cpp"));
    for (const SourceFile& file : files)
        for (const std::string& fault : FaultsOf(file)) ADD_FAILURE() << fault;
}

TEST(SourceRules, AnIncludeFromAboveIsAFault) {
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Core/A.cpp",
                        "#include <map>\n#include <VoktFramework/VoktTool.h>\n"}),
              Faults{"Libraries/VokLib/Core/A.cpp: VokLib includes VoktFramework/VoktTool.h from "
                     "above"});
    EXPECT_EQ(FaultsOf({"Libraries/Include/QelTools/A.h", "  # include \"VokLib/VokObj.h\"\n"}),
              Faults{"Libraries/Include/QelTools/A.h: QelTools includes VokLib/VokObj.h from "
                     "above"});
}

TEST(SourceRules, NeighboursOnAFloorDoNotKnowEachOther) {
    EXPECT_EQ(FaultsOf({"Libraries/BiffLib/A.cpp", "#include <HashClient/B.h>\n"}).size(), 1u);
    EXPECT_EQ(FaultsOf({"Libraries/Platform/A_posix.cpp", "#include <QelTools/B.h>\n"}).size(), 1u);
    EXPECT_EQ(FaultsOf({"Libraries/AnimUtil/LeastSquares/A.cpp", "#include <VokLib/B.h>\n"}),
              Faults{"Libraries/AnimUtil/LeastSquares/A.cpp: the curve fitter includes "
                     "VokLib/B.h"});
}

TEST(SourceRules, IncludesFromBelowAndOfTheOwnLibraryAreFine) {
    EXPECT_EQ(FaultsOf({"Libraries/VoktRigbake/A.cpp",
                        "#include <VoktRigbake/A.h>\n#include <BiffLib/CBlock.h>\n"
                        "#include \"Joints/B.h\"\n// #include <windows.h>\n"}),
              Faults{});
    EXPECT_EQ(FaultsOf({"Tests/QelTools/A.cpp", "#include <VoktRigbake/A.h>\n"}), Faults{});
}

TEST(SourceRules, SystemHeadersStandInThePlatformAlone) {
    for (const char* header : {"<unistd.h>", "<windows.h>", "<sys/stat.h>", "<fcntl.h>"}) {
        const std::string text = std::string("#include ") + header + "\n";
        EXPECT_EQ(FaultsOf({"Libraries/VokLib/A.cpp", text}).size(), 1u) << header;
        EXPECT_EQ(FaultsOf({"Standalone/Rigbake/main.cpp", text}).size(), 1u) << header;
        EXPECT_EQ(FaultsOf({"Tests/VokLib/A.cpp", text}).size(), 1u) << header;
        EXPECT_EQ(FaultsOf({"Libraries/Platform/A_posix.cpp", text}), Faults{}) << header;
        EXPECT_EQ(FaultsOf({"Tests/Platform/A.cpp", text}), Faults{}) << header;
    }
}

TEST(SourceRules, PlatformConditionalsStandInThePlatformAlone) {
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/A.cpp", "#ifdef _WIN32\n#endif\n"}),
              Faults{"Libraries/VokLib/A.cpp: platform conditional _WIN32"});
    EXPECT_EQ(FaultsOf({"Tests/VokLib/A.cpp", "#if defined(__linux__) && 1\n"}).size(), 1u);
    EXPECT_EQ(FaultsOf({"Libraries/Platform/A_posix.cpp", "#ifdef __linux__\n"}), Faults{});
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/A.cpp", "#ifdef RIGBAKE_OPTION\n"}), Faults{});
}

TEST(SourceRules, AFileEndsWithinSixHundredLines) {
    std::string text;
    for (int i = 0; i < 600; ++i) text += "\n";
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/A.cpp", text}), Faults{});
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/A.cpp", text + "\n"}),
              Faults{"Libraries/VokLib/A.cpp: 601 lines"});
}

TEST(SourceRules, ALibraryWithoutAFloorIsAFault) {
    EXPECT_EQ(FaultsOf({"Libraries/Extra/A.cpp", ""}),
              Faults{"Libraries/Extra/A.cpp: the library has no floor"});
}

}  // namespace
