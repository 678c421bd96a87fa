#include "ReadBack.h"

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

/// Two documents, the one as if it were what was read of the other.
class ReadBack : public SceneTest::Test {
  protected:
    Failure FailureOfReading(const std::string& writtenScene, const std::string& readScene) {
        Parse(written, Document("<scene>" + writtenScene + "</scene>"));
        Parse(read, Document("<scene>" + readScene + "</scene>"));
        return FailureOf([this] { CheckReadBack(written, read); });
    }

    VokWorld written;
    VokWorld read;
};

}  // namespace

TEST_F(ReadBack, TheSameObjectsPass) {
    EXPECT_EQ(FailureOfReading("<joint name='a'/>", "<joint name='a'/>").text, "");
}

TEST_F(ReadBack, AnObjectThatIsMissingIsNamed) {
    EXPECT_EQ(FailureOfReading("<joint name='a'/><joint name='b'/>", "<joint name='a'/>"),
              OfObject("The written document would be read without this object", "||b"));
}

TEST_F(ReadBack, AFurtherObjectIsNamed) {
    EXPECT_EQ(FailureOfReading("<joint name='a'/>", "<joint name='a'/><joint name='b'/>"),
              OfObject("The written document would be read with a further object", "||b"));
}

TEST_F(ReadBack, AnotherUpAxisIsNoticed) {
    read.SetUpAxis(1);
    EXPECT_EQ(FailureOfReading("<joint name='a'/>", "<joint name='a'/>").text,
              "The written document would be read with another up axis");
}
