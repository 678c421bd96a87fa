#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>

#include <VokLib/Links/VokPath.h>
#include <gtest/gtest.h>

namespace {

using QelTools::Common::Exception;

Exception At(const char* message, const char* file, int line) {
    return Exception(message, {file, line});
}

TEST(VoktErrorTest, KeepsWhatItIsMadeOf) {
    const VoktError byId(7);
    EXPECT_EQ(byId.GetId(), 7);
    EXPECT_STREQ(byId.what(), "");
    EXPECT_EQ(byId.GetCauseMessage(), "");

    const VoktError withCause(7, "cause");
    EXPECT_STREQ(withCause.what(), "");
    EXPECT_EQ(VoktError(withCause).GetCauseMessage(), "cause");
    EXPECT_EQ(VoktError(withCause).GetId(), 7);

    const VoktError fromException(At("m", "A.cpp", 3), 2);
    EXPECT_STREQ(fromException.what(), "m");
    EXPECT_EQ(fromException.GetFile(), "A.cpp");
    EXPECT_EQ(fromException.GetLine(), "3");
    EXPECT_EQ(fromException.GetCauseMessage(), "");
    EXPECT_TRUE(fromException.GetCauseObject().empty());
}

TEST(VoktErrorTest, IdsFromTenThousandUpAreWarnings) {
    EXPECT_FALSE(VoktError(9999).IsWarning());
    EXPECT_TRUE(VoktError(10000).IsWarning());
}

}  // namespace
