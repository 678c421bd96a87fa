#include <QelTools/Exception.h>
#include <QelTools/SourcePlace.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

TEST(RepositoryPath, BeginsAtTheTopFoldersOfTheSources) {
    using QelTools::Common::RepositoryPath;
    EXPECT_EQ(RepositoryPath({"/home/me/rigbake/Libraries/VokLib/A.cpp", 1}),
              "Libraries/VokLib/A.cpp");
    EXPECT_EQ(RepositoryPath({"C:\\src\\Standalone\\Rigbake\\main.cpp", 1}),
              "Standalone/Rigbake/main.cpp");
    EXPECT_EQ(RepositoryPath({"../Libraries/A/B.cpp", 1}), "Libraries/A/B.cpp");
    EXPECT_EQ(RepositoryPath({"Libraries/A/B.cpp", 1}), "Libraries/A/B.cpp");
    EXPECT_EQ(RepositoryPath({"elsewhere.cpp", 1}), "elsewhere.cpp");
    // A checkout may itself stand in a folder of such a name.
    EXPECT_EQ(RepositoryPath({"/opt/Libraries/rigbake/Libraries/VokLib/A.cpp", 1}),
              "Libraries/VokLib/A.cpp");
}

}  // namespace
