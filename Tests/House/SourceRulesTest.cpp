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
    EXPECT_TRUE(isRead("Libraries/Include/VokLib/Tree/VokObj.h"));
    EXPECT_TRUE(isRead("Libraries/Platform/Process_posix.cpp"));
    EXPECT_TRUE(isRead("Standalone/Rigbake/main.cpp"));
    EXPECT_TRUE(isRead("Tests/House/SourceRulesTest.cpp"));
    for (const SourceFile& file : files)
        for (const std::string& fault : FaultsOf(file)) ADD_FAILURE() << fault;
}

TEST(SourceRules, AnIncludeFromAboveIsAFault) {
    EXPECT_EQ(
        FaultsOf({"Libraries/VokLib/Tree/A.cpp",
                  "#include <map>\n#include <VoktFramework/Tool/VoktTool.h>\n"}),
        Faults{"Libraries/VokLib/Tree/A.cpp: VokLib includes VoktFramework/Tool/VoktTool.h from "
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
    EXPECT_EQ(FaultsOf({"Libraries/VoktRigbake/File/A.cpp",
                        "#include <VoktRigbake/A.h>\n#include <BiffLib/CBlock.h>\n"
                        "#include \"Joints/B.h\"\n// #include <windows.h>\n"}),
              Faults{});
    EXPECT_EQ(FaultsOf({"Tests/QelTools/A.cpp", "#include <VoktRigbake/A.h>\n"}), Faults{});
}

TEST(SourceRules, LibrariesHashWhatDocumentsSayWithAKey) {
    const std::string path = "Libraries/VokLib/Tree/A.cpp";
    for (const char* key : {"string", "string_view", "uint32_t"})
        for (const char* table : {"std::unordered_map<std::", "std::unordered_set<std::"}) {
            const std::string start = std::string(table) + key;
            EXPECT_EQ(FaultsOf({path, start + ", int> a;\n"}),
                      Faults{path + ": hash table without KeyedHash"});
            EXPECT_EQ(FaultsOf({path, start + ", int, KeyedHash> a;\n"}), Faults{});
            EXPECT_EQ(FaultsOf({"Tests/VokLib/A.cpp", start + ", int> a;\n"}), Faults{});
        }
    EXPECT_EQ(FaultsOf({path, "std::unordered_map<const VokObj*, std::string> a;\n"}), Faults{});
}

TEST(SourceRules, SystemHeadersStandInThePlatformAlone) {
    for (const char* header : {"<unistd.h>", "<windows.h>", "<sys/stat.h>", "<fcntl.h>"}) {
        const std::string text = std::string("#include ") + header + "\n";
        EXPECT_EQ(FaultsOf({"Libraries/VokLib/Text/A.cpp", text}).size(), 1u) << header;
        EXPECT_EQ(FaultsOf({"Standalone/Rigbake/main.cpp", text}).size(), 1u) << header;
        EXPECT_EQ(FaultsOf({"Tests/VokLib/A.cpp", text}).size(), 1u) << header;
        EXPECT_EQ(FaultsOf({"Libraries/Platform/A_posix.cpp", text}), Faults{}) << header;
        EXPECT_EQ(FaultsOf({"Tests/Platform/A.cpp", text}), Faults{}) << header;
    }
}

TEST(SourceRules, PlatformConditionalsStandInThePlatformAlone) {
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Text/A.cpp", "#ifdef _WIN32\n#endif\n"}),
              Faults{"Libraries/VokLib/Text/A.cpp: platform conditional _WIN32"});
    EXPECT_EQ(FaultsOf({"Tests/VokLib/A.cpp", "#if defined(__linux__) && 1\n"}).size(), 1u);
    EXPECT_EQ(FaultsOf({"Libraries/Platform/A_posix.cpp", "#ifdef __linux__\n"}), Faults{});
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Text/A.cpp", "#ifdef RIGBAKE_OPTION\n"}), Faults{});
}

TEST(SourceRules, ProgramsKeepNothingOfAFileInHashTables) {
    EXPECT_EQ(FaultsOf({"Standalone/Skel/A.cpp", "#include <map>\n#include <unordered_map>\n"}),
              Faults{"Standalone/Skel/A.cpp: hash table unordered_map, whose places a file can "
                     "choose"});
    EXPECT_EQ(FaultsOf({"Standalone/Qeli/A.h", "#include <unordered_set>\n"}).size(), 1u);
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Text/A.cpp", "#include <unordered_map>\n"}), Faults{});
}

TEST(SourceRules, AFileEndsWithinSixHundredLines) {
    std::string text;
    for (int i = 0; i < 600; ++i) text += "\n";
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Text/A.cpp", text}), Faults{});
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Text/A.cpp", text + "\n"}),
              Faults{"Libraries/VokLib/Text/A.cpp: 601 lines"});
}

TEST(SourceRules, AFolderThatLooksUpInItsLibraryIsAFault) {
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Text/A.cpp",
                        "#include \"Text/B.h\"\n#include <VokLib/Base/C.h>\n"
                        "#include <VokLib/Document/VokParse.h>\n"}),
              Faults{"Libraries/VokLib/Text/A.cpp: Text includes VokLib/Document/VokParse.h, but "
                     "Document stands above it in VokLib"});
    EXPECT_EQ(
        FaultsOf({"Libraries/Include/VoktRigbake/Skeleton/A.h", "#include \"Procedural/B.h\"\n"}),
        Faults{"Libraries/Include/VoktRigbake/Skeleton/A.h: Skeleton includes "
               "Procedural/B.h, but Procedural stands above it in VoktRigbake"});
}

TEST(SourceRules, LinksTreeAndDocumentKnowEachOther) {
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Links/A.cpp",
                        "#include \"Document/B.h\"\n#include <VokLib/Tree/C.h>\n"}),
              Faults{});
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Tree/A.cpp", "#include \"Links/B.h\"\n"}), Faults{});
}

TEST(SourceRules, AFolderWithoutAFloorIsAFault) {
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/Attic/A.cpp", ""}),
              Faults{"Libraries/VokLib/Attic/A.cpp: the folder \"Attic\" has no floor in VokLib"});
    EXPECT_EQ(FaultsOf({"Libraries/VokLib/A.cpp", ""}),
              Faults{"Libraries/VokLib/A.cpp: the folder \"\" has no floor in VokLib"});
}

TEST(SourceRules, ALibraryWithoutAFloorIsAFault) {
    EXPECT_EQ(FaultsOf({"Libraries/Extra/A.cpp", ""}),
              Faults{"Libraries/Extra/A.cpp: the library has no floor"});
}

}  // namespace
