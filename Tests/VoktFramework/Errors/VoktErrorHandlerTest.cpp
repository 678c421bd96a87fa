#include <VoktFramework/Errors/VoktErrorHandler.h>

#include <VokLib/Links/VokPath.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace {

using QelTools::Common::Exception;

class ErrorHandler : public testing::Test {
  protected:
    std::string Report() const {
        std::ostringstream stream;
        handler.Print(stream);
        return stream.str();
    }

    /// Held by a pointer, for its destructor may throw and a test's must not.
    const std::unique_ptr<VoktErrorHandler> owner = std::make_unique<VoktErrorHandler>();
    VoktErrorHandler& handler = *owner;
};

Exception At(const char* message, const char* file, int line) {
    return Exception(message, {file, line});
}

TEST_F(ErrorHandler, ReportsTheTextsOfTheCatalogue) {
    for (const int id : {0, 1, 2, 100, 101, 102, 103, 200, 201, 202, 203, 204, 10000})
        handler.Add(VoktError(id));
    EXPECT_EQ(Report(),
              "Warning: 10000 An unknown warning occurred\n"
              "Error: 0 An unknown error occurred\n"
              "Error: 1 An internal error occurred\n"
              "Error: 2 An internal error occurred\n"
              "Error: 100 An error occurred while adding components to the tool\n"
              "Error: 101 An error occurred while parsing the command line\n"
              "Error: 102 An error occurred while validating arguments\n"
              "Error: 103 An error occurred during tool processing\n"
              "Error: 200 Unhandled argument\n"
              "Error: 201 Unable to establish communication with hash server\n"
              "Error: 202 A problem occurred while importing references\n"
              "Error: 203 Unimplemented virtual method\n"
              "Error: 204 Cannot open file for write\n");
}

TEST_F(ErrorHandler, AnUnregisteredIdIsReportedWithoutText) {
    handler.Add(VoktError(1100));
    handler.Add(VoktError(10100, "cause"));
    handler.Add(VoktError(-5));
    EXPECT_EQ(Report(), "Warning: 10100 ; cause\nError: 1100 \nError: -5 \n");
}

TEST_F(ErrorHandler, AWarningAddedAfterAnErrorStandsAheadOfIt) {
    handler.Add(VoktError(103, "first"));
    handler.Add(VoktError(10000, "second"));
    handler.Add(VoktError(9999, "third"));
    handler.Add(VoktError(10001, "fourth"));
    EXPECT_EQ(Report(),
              "Warning: 10000 An unknown warning occurred; second\n"
              "Warning: 10001 ; fourth\n"
              "Error: 103 An error occurred during tool processing; first\n"
              "Error: 9999 ; third\n");
}

TEST_F(ErrorHandler, EqualRecordsAreReportedEach) {
    handler.Add(VoktError(200, "-x"));
    handler.Add(VoktError(200, "-x"));
    EXPECT_EQ(Report(), "Error: 200 Unhandled argument; -x\nError: 200 Unhandled argument; -x\n");
    EXPECT_EQ(handler.CountErrors(), 2u);
}

TEST_F(ErrorHandler, LineBreaksBecomeBlanksOnTheOneLine) {
    handler.Add(VoktError(102, "one\ntwo\n"));
    handler.Add(VoktError(Exception("a\nb\r\nc"), 2));
    EXPECT_EQ(Report(),
              "Error: 102 An error occurred while validating arguments; one two \n"
              "Error: 2 An internal error occurred; a b\r c\n");
}

TEST_F(ErrorHandler, TheContextIsThatOfTheMomentOfAdding) {
    handler.Add(VoktError(200, "a"));
    handler.SetContext("scene.qeli");
    handler.Add(VoktError(200, "b"));
    handler.SetContext("");
    handler.Add(VoktError(200, "c"));
    EXPECT_EQ(Report(),
              "Error: 200 Unhandled argument; a\n"
              "Error: 200 Unhandled argument; b : scene.qeli\n"
              "Error: 200 Unhandled argument; c\n");
}

TEST_F(ErrorHandler, AWholeLineHasItsPiecesInOrder) {
    VokWorld world;
    VokException failure("the message", VokPath(world.GetHierarchy()).GetText());
    failure.SetPlace({"Libraries/A/B.cpp", 17});
    handler.SetContext("scene.qeli");
    handler.Add(VoktError(failure, 1));
    EXPECT_EQ(Report(),
              "Error: 1 An internal error occurred; the message : scene.qeli {|} "
              "<Libraries/A/B.cpp:17>\n");
}

TEST_F(ErrorHandler, HalfAPositionIsStillReported) {
    handler.Add(VoktError(At("m", "A.cpp", 3), 2));
    EXPECT_EQ(Report(), "Error: 2 An internal error occurred; m <A.cpp:3>\n");
}

TEST_F(ErrorHandler, RegisteringTheSameTextAgainIsHarmless) {
    handler.Register(1100, "No skeleton found");
    handler.Register(1100, "No skeleton found");
    handler.Add(VoktError(1100));
    EXPECT_EQ(Report(), "Error: 1100 No skeleton found\n");
}

TEST_F(ErrorHandler, RegisteringAnotherTextThrows) {
    handler.Register(1100, "No skeleton found");
    try {
        handler.Register(1100, "No skeleton");
        FAIL() << "nothing thrown";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "Duplicate VoktError id registered");
        EXPECT_EQ(exception.GetFile(), "Libraries/VoktFramework/Errors/VoktErrorHandler.cpp");
        EXPECT_NE(exception.GetLine(), "");
    }
    handler.Add(VoktError(1100));
    EXPECT_EQ(Report(), "Error: 1100 No skeleton found\n");
}

TEST_F(ErrorHandler, WarningsDoNotCount) {
    EXPECT_EQ(handler.CountErrors(), 0u);
    handler.Add(VoktError(10000));
    handler.Add(VoktError(20000));
    EXPECT_EQ(handler.CountErrors(), 0u);
    handler.Add(VoktError(9999));
    EXPECT_EQ(handler.CountErrors(), 1u);
}

TEST_F(ErrorHandler, TheSeverityModeDecidesWhatCounts) {
    handler.SetSeverityMode(VoktErrorHandler::kNeverCount);
    handler.Add(VoktError(100));
    EXPECT_EQ(handler.CountErrors(), 0u);
    handler.SetSeverityMode(VoktErrorHandler::kAlwaysCount);
    handler.Add(VoktError(10000));
    EXPECT_EQ(handler.CountErrors(), 1u);
    handler.SetSeverityMode(VoktErrorHandler::kCountById);
    handler.Add(VoktError(10000));
    EXPECT_EQ(handler.CountErrors(), 1u);
}

TEST_F(ErrorHandler, IsTheOneHandlerOfTheProcess) {
    EXPECT_EQ(&VoktErrorHandler::Get(), &handler);
    try {
        VoktErrorHandler second;
        FAIL() << "nothing thrown";
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(),
                     "QelTools::Common::Singleton<class VoktErrorHandler>::Singleton: we already "
                     "have an instance");
    }
    EXPECT_EQ(&VoktErrorHandler::Get(), &handler);
}

TEST(NoErrorHandler, GetThrows) {
    try {
        VoktErrorHandler::Get();
        FAIL() << "nothing thrown";
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(),
                     "QelTools::Common::Singleton<class VoktErrorHandler>::Get: we don't have an "
                     "instance");
    }
}

class DetailedReport : public ErrorHandler {
  protected:
    DetailedReport() { handler.SetDetailed(true); }
};

TEST_F(DetailedReport, HasABlockForEachField) {
    VokWorld world;
    VokException failure("the message", VokPath(world.GetHierarchy()).GetText());
    failure.SetPlace({"Libraries/A/B.cpp", 17});
    handler.SetContext("scene.qeli");
    handler.Add(VoktError(failure, 1));
    EXPECT_EQ(Report(),
              "Error: 1\n"
              "    Description: An internal error occurred\n"
              "    Message: the message\n"
              "    Context: scene.qeli\n"
              "    CauseObject: |\n"
              "    FileLine: Libraries/A/B.cpp:17\n");
}

TEST_F(DetailedReport, LeavesOutWhatIsEmptyAndPutsWarningsFirst) {
    handler.Add(VoktError(5));
    handler.Add(VoktError(10000, "cause"));
    EXPECT_EQ(Report(),
              "Warning: 10000\n"
              "    Description: An unknown warning occurred\n"
              "    CauseMessage: cause\n"
              "Error: 5\n");
}

TEST_F(DetailedReport, FurtherLinesStandUnderTheFirst) {
    handler.Add(VoktError(5, "one\r\ntwo\rthree\n\nfive\n"));
    EXPECT_EQ(Report(),
              "Error: 5\n"
              "    CauseMessage: one\n"
              "                  two\n"
              "                  three\n"
              "                  \n"
              "                  five\n"
              "                  \n");
}

}  // namespace
