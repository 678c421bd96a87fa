#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Shading/VokCamera.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

TEST(Camera, WritesFiveFloatsAlways) {
    EXPECT_EQ(Rewritten<VokCamera>(R"(<camera name="c"><orthographicWidth>3</orthographicWidth>
<focalLength>0.035</focalLength><nearClipPlane>0.5</nearClipPlane></camera>)"),
              "<camera "
              "name=\"c\">\n<nearClipPlane>0.5</nearClipPlane>\n<farClipPlane>0.0</farClipPlane>\n"
              "<focalLength>3.50000001e-2</focalLength>\n<verticalFilmAperture>0.0</"
              "verticalFilmAperture>\n"
              "<horizontalFilmAperture>0.0</horizontalFilmAperture>\n</camera>");
}

TEST(Camera, AnOrthographicOneSaysSo) {
    const std::string camera =
        "<camera "
        "name=\"c\">\n<nearClipPlane>1.0</nearClipPlane>\n<farClipPlane>2.0</farClipPlane>\n"
        "<focalLength>3.0</focalLength>\n<verticalFilmAperture>4.0</verticalFilmAperture>\n"
        "<horizontalFilmAperture>5.0</horizontalFilmAperture>\n<orthographic>1</orthographic>\n";
    EXPECT_EQ(Rewritten<VokCamera>(camera + "</camera>"), camera + "</camera>");
    EXPECT_EQ(
        Rewritten<VokCamera>(camera + "<orthographicWidth>6.0</orthographicWidth>\n</camera>"),
        camera + "<orthographicWidth>6.0</orthographicWidth>\n</camera>");
}

}  // namespace

}  // namespace SceneTest
