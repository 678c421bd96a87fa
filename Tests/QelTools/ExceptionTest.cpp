#include <QelTools/Exception.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using QelTools::Common::Exception;
using QelTools::Common::TextException;

TEST(Exception, CarriesItsMessage) {
    EXPECT_STREQ(Exception("text").what(), "text");
    EXPECT_STREQ(Exception(std::string("text")).what(), "text");
    EXPECT_STREQ(Exception("").what(), "");
}

TEST(Exception, HasNoPositionUnlessItIsSet) {
    const Exception exception("text");
    EXPECT_EQ(exception.GetFile(), "");
    EXPECT_EQ(exception.GetLine(), "");
}

TEST(Exception, ACopyKeepsEverything) {
    Exception exception("text");
    exception.SetPlace({"Libraries/A/B.cpp", 12});
    const Exception copy(exception);
    EXPECT_STREQ(copy.what(), "text");
    EXPECT_EQ(copy.GetFile(), "Libraries/A/B.cpp");
    EXPECT_EQ(copy.GetLine(), "12");
}

TEST(Exception, ThrowingRecordsTheCallersPosition) {
    const int lineBefore = __LINE__;
    try {
        QelTools::Common::ThrowException("text");
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "text");
        EXPECT_EQ(exception.GetFile(), "Tests/QelTools/ExceptionTest.cpp");
        EXPECT_EQ(exception.GetLine(), std::to_string(lineBefore + 2));
        return;
    }
    FAIL() << "nothing thrown";
}

TEST(Exception, ATextExceptionIsNothingButItsText) {
    EXPECT_STREQ(TextException("text").what(), "text");
    EXPECT_FALSE((std::is_base_of_v<Exception, TextException>));
}

}  // namespace
