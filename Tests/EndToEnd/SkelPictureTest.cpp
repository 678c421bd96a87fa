#include "EndToEnd/PictureRun.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

constexpr const char* kScene = RIGBAKE_SOURCE_ROOT "/Tests/Documents/skeleton-parts.qeli";

using SkelPicture = PictureRun;

}  // namespace

TEST_F(SkelPicture, ADrawingShowsEveryJointTwiceAndEveryItemInOrder) {
    const std::string svg = Draw(Seed("parts-little"), "parts.svg", kScene);
    EXPECT_EQ(svg.find("<svg xmlns=\"http://www.w3.org/2000/svg\" "), 0u);
    EXPECT_EQ(Count(svg, "<circle "), 22u);
    EXPECT_EQ(Count(svg, "<title>10 Finger</title>"), 2u);
    EXPECT_NE(svg.find("11 joints, signature 0x3DD3DFD4"), std::string::npos);
    EXPECT_NE(svg.find(">level 2<"), std::string::npos);
    const std::vector<std::string> inOrder = {"0. driven keys",
                                              "Spine.translateY from Breath",
                                              "Twist.rotateX from Hand.rotateX, Spine.rotateZ",
                                              "2. joint constraints",
                                              "aim of Eye by Hand, up by Spine",
                                              "aim of Finger by Prop"};
    std::size_t at = 0;
    for (const std::string& text : inOrder) {
        at = svg.find(text, at);
        ASSERT_NE(at, std::string::npos) << text;
    }
}

TEST_F(SkelPicture, TheSameFileGivesTheSameBytesInEitherByteOrder) {
    EXPECT_EQ(Draw(Seed("parts-little"), "a.svg").substr(2000),
              Draw(Seed("parts-little"), "b.svg").substr(2000));
    const std::regex name("parts-(little|big)");
    EXPECT_EQ(std::regex_replace(Draw(Seed("parts-little"), "a.svg"), name, ""),
              std::regex_replace(Draw(Seed("parts-big"), "b.svg"), name, ""));
}

TEST_F(SkelPicture, NothingInAPictureComesFromElsewhere) {
    const std::string page = Draw(Seed("biped"), "a.html");
    for (const char* part : {"http:", "https:", "src=", "@import", "url(", "fetch(", "{{"})
        EXPECT_EQ(std::regex_replace(page, std::regex("http://www.w3.org/2000/svg"), "").find(part),
                  std::string::npos)
            << part;
}

TEST_F(SkelPicture, ThePictureOfTheReadmeIsDrawnFromItsExample) {
    const std::string scene = RIGBAKE_SOURCE_ROOT "/Examples/biped-procedural.qeli";
    ASSERT_EQ(folder.Rigbake({"-in", scene, "-out", "biped.bin", "-ojc", "true"}).status, 0);
    EXPECT_EQ(Draw("biped.bin", "out.svg", scene),
              folder.ReadFile(RIGBAKE_SOURCE_ROOT "/docs/pictures/biped.svg"));
}

TEST_F(SkelPicture, NamesCannotBreakOutOfThePage) {
    folder.WriteFile("evil.qeli",
                     Document(R"(<scene><joint name="&lt;/script&gt;&lt;b&gt;&quot;"/></scene>)"));
    ASSERT_EQ(folder.Rigbake({"-in", "evil.qeli", "-out", "evil"}).status, 0);
    const std::string page = Draw("evil", "a.html", "evil.qeli");
    EXPECT_EQ(Count(page, "</script>"), 2u) << "those of the page itself";
    EXPECT_NE(page.find(R"(\u003c/script>\u003cb>\")"), std::string::npos);
    EXPECT_NE(Draw("evil", "a.svg", "evil.qeli").find("0 &lt;/script&gt;&lt;b&gt;&quot;"),
              std::string::npos);
}

TEST_F(SkelPicture, ThePictureIsCalledByTheFilesName) {
    std::filesystem::create_directory(folder.GetPath() / "sub");
    EXPECT_EQ(TitleOfPicture("sub/H\xC3\xBC"
                             "fte.bin"),
              "H\xC3\xBC"
              "fte.bin");
}

TEST_F(SkelPicture, LongLinesAreWrapped) {
    std::string targets;
    for (int i = 0; i < 20; ++i)
        targets += "<joint name=\"target_number_" + std::to_string(i) + "\"/>";
    std::string constraint = "<orientationConstraint name=\"c\" constrain=\"||root|driven\">";
    for (int i = 0; i < 20; ++i)
        constraint +=
            "<target name=\"||root|target_number_" + std::to_string(i) + "\" weight=\"1\"/>";
    folder.WriteFile("long.qeli",
                     Document("<scene><joint name=\"root\"><joint name=\"driven\"/>" + targets +
                              "</joint></scene>" + constraint + "</orientationConstraint>"));
    ASSERT_EQ(folder.Rigbake({"-in", "long.qeli", "-out", "long", "-ojc", "true"}).status, 0);
    const std::string svg = Draw("long", "a.svg", "long.qeli");
    const std::regex line(">([^<]*target_number_[^<]*)</text>");
    std::string whole;
    int lines = 0;
    for (std::sregex_iterator it(svg.begin() + static_cast<std::ptrdiff_t>(svg.find("class=\"s\"")),
                                 svg.end(), line);
         it != std::sregex_iterator(); ++it, ++lines) {
        EXPECT_LE((*it)[1].length(), 112);
        whole += (*it)[1];
    }
    EXPECT_EQ(lines, 4);
    EXPECT_EQ(whole.find("orientation of driven by target_number_0, target_number_1, "), 0u);
    EXPECT_TRUE(whole.ends_with(", target_number_19"));
}

TEST_F(SkelPicture, OtherEndingsAndWhatIsReadAreRefused) {
    ProgramResult run = folder.Run("skel", {"picture", Seed("biped"), "a.png"});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.errors.find("\"a.png\" ends in neither .svg nor .html"), std::string::npos);
    folder.WriteFile("own.svg", folder.ReadFile(Seed("biped")));
    run = folder.Run("skel", {"picture", "own.svg", "./own.svg"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "./own.svg: error: The picture would replace the file\n");
    EXPECT_EQ(folder.ReadFile("own.svg"), folder.ReadFile(Seed("biped")));
    folder.WriteFile("scene.svg", OneJointDocument());
    run = folder.Run("skel", {"picture", Seed("biped"), "./scene.svg", "--names", "scene.svg"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "./scene.svg: error: The picture would replace the scene\n");
    EXPECT_EQ(folder.ReadFile("scene.svg"), OneJointDocument());
}

TEST_F(SkelPicture, TheEndingMayBeInCapitals) {
    EXPECT_EQ(Draw(Seed("biped"), "a.SVG"), Draw(Seed("biped"), "a.svg"));
    EXPECT_EQ(Draw(Seed("biped"), "a.HTML"), Draw(Seed("biped"), "a.html"));
    EXPECT_EQ(Draw(Seed("biped"), "a.Htm"), Draw(Seed("biped"), "a.html"));
}

TEST_F(SkelPicture, AMissingFolderIsNotMade) {
    const ProgramResult run = folder.Run("skel", {"picture", Seed("biped"), "new/a.svg"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "new/a.svg: error: The file cannot be written: No such file or directory\n");
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath() / "new"));
}

TEST_F(SkelPicture, ThePageWorksFromTheKeyboard) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    const std::string page = Draw(Seed("parts-little"), "a.html", kScene);
    EXPECT_EQ(Browse(page, kTools + R"(
        key("."); key("."); key(",");
        const before = bones[0].getAttribute("d");
        key("ArrowLeft"); key("+"); drawFigure();
        say(find("name").textContent, find("joints").selectedIndex, before !== bones[0].getAttribute("d"),
            state.zoom.toFixed(1), dots.length, shown()); )"),
              "1 Spine | 1 | true | 1.2 | 11 | 11");
}

TEST_F(SkelPicture, ThePageTellsAJointsNumbersAndWhatMovesIt) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    const std::string page = Draw(Seed("parts-little"), "a.html", kScene);
    EXPECT_EQ(Browse(page, kTools + R"(
        const list = find("joints");
        list.selectedIndex = 3;
        list.dispatchEvent(new Event("change"));
        const rows = [...document.querySelectorAll("#details dt")];
        const tell = term => rows.find(row => row.textContent === term).nextSibling.textContent;
        say(find("name").textContent, tell("hash"), tell("translation"), tell("written by"),
            document.querySelectorAll("#items button.touches").length); )"),
              "3 Eye | 0x8D87784E | 0, 0.4, 0.1 | 2: aim of Eye by Hand, up by Spine | 1");
}

TEST_F(SkelPicture, DroppedJointsCollapseIntoTheirStandIns) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    const std::string page = Draw(Seed("parts-little"), "a.html", kScene);
    EXPECT_EQ(Browse(page, kTools + R"(
        const row = find("row");
        row.value = "0";
        row.dispatchEvent(new Event("change"));
        pick(10); drawFigure();
        say(shown(), find("jointsTitle").textContent, find("joints").options[10].textContent,
            dots.findIndex(dot => dot.classList.contains("picked")), tag.textContent); )"),
              "8 | Joints (8 of 11) | 10 Finger \xE2\x86\x92 Arm | 2 | Arm");
}

TEST_F(SkelPicture, ALineOfAnItemPicksWhatItWritesAndMarksWhatItReads) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    const std::string page = Draw(Seed("parts-little"), "a.html", kScene);
    EXPECT_EQ(Browse(page, kTools + R"(
        const buttons = [...document.querySelectorAll("#items button")];
        buttons.find(button => button.textContent.startsWith("aim of Eye")).click();
        say(find("name").textContent, dots.flatMap((dot, i) => dot.classList.contains("read") ? [i] : []),
            document.querySelectorAll("#items > li").length); )"),
              "3 Eye | 1,8 | 4");
}

TEST_F(SkelPicture, AClickPicksTheNearestJoint) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    const std::string page = Draw(Seed("parts-little"), "a.html", kScene);
    EXPECT_EQ(Browse(page, kTools + R"(
        drawFigure();
        const box = figure.getBoundingClientRect();
        const at = {clientX: box.x + spots[4][0] + 3, clientY: box.y + spots[4][1] - 3, pointerId: 1, bubbles: true};
        figure.dispatchEvent(new PointerEvent("pointerdown", at));
        figure.dispatchEvent(new PointerEvent("pointerup", at));
        say(find("name").textContent); )"),
              "4 Prop");
}

TEST_F(SkelPicture, ThePageFollowsLightAndDark) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    const std::string page = Draw(Seed("parts-little"), "a.html", kScene);
    const std::string script = kTools + "say(getComputedStyle(document.body).backgroundColor);";
    EXPECT_EQ(Browse(page, script, "--blink-settings=preferredColorScheme=1"),
              "rgb(255, 255, 255)");
    EXPECT_EQ(Browse(page, script, "--blink-settings=preferredColorScheme=0"), "rgb(20, 24, 31)");
}
