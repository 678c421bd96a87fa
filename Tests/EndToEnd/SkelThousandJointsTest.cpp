#include "EndToEnd/PictureRun.h"

#include <BiffLib/CBlock.h>
#include <HashClient/QelHashClientUtil.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <VoktRigbake/Procedural/BuildProceduralJoints.h>
#include <VoktRigbake/Procedural/ProceduralJoints.h>
#include <VoktRigbake/Skeleton/BuildSkeleton.h>

#include <sstream>

namespace {

constexpr int kSegments = 40;
constexpr int kLegJoints = 12;  // on each side
constexpr std::size_t kJoints = kSegments * (1 + 2 * kLegJoints);

/// A thing with forty segments and two long legs at each, whose joints go in three levels of
/// detail, the tips first, and each left tip looks at the right one.
class Crawler {
  public:
    Crawler() {
        std::string body;
        std::string path = "|";
        for (int i = 0; i < kSegments; ++i) {
            const std::string segment = "segment" + std::to_string(i);
            path += "|" + segment;
            body += "<joint name=\"" + segment + "\"><translate>" + (i == 0 ? "0 2 0" : "0 0 1") +
                    "</translate>";
            AddLeg(path, segment + "_left", "0.5", body);
            AddLeg(path, segment + "_right", "-0.5", body);
        }
        for (int i = 0; i < kSegments; ++i) body += "</joint>";
        document = "<scene>" + body + "</scene>" + constraints;
        for (int level = 1; level <= 3; ++level)
            document += "<objset name=\"skelLodSet" + std::to_string(level) + "\" type=\"set\">" +
                        members[level] + "</objset>";
    }
    std::string Text() const { return Document(document); }

  private:
    void AddLeg(std::string path, const std::string& leg, const std::string& side,
                std::string& body) {
        for (int i = 0; i < kLegJoints; ++i) {
            const std::string name = leg + "_" + std::to_string(i);
            path += "|" + name;
            body += "<joint name=\"" + name + "\"><translate>" + side + (i < 4 ? " 0.2" : " -0.4") +
                    " 0.02</translate>";
            if (i >= 3) members[i / 3] += "<member path=\"" + path + "\" membership=\"\"/>";
        }
        for (int i = 0; i < kLegJoints; ++i) body += "</joint>";
        if (side[0] != '-') {
            leftTip = path;
            return;
        }
        constraints +=
            "<aimConstraint name=\"look\" constrain=\"" + leftTip +
            "\"><aim>1 0 0</aim><up>0 1 0</up><globalup>0 1 0</globalup><target name=\"" + path +
            "\" weight=\"1\"/></aimConstraint>";
    }

    std::string members[4], leftTip, constraints, document;
};

/// The skeleton of a document, as one that is not made for animation and so knows no limit.
std::string Bake(const std::string& document) {
    const VokLib library{true, true, true, true, true};
    QelHashClientUtil::Initialise();
    VokWorld world;
    VokParse parse;
    parse.ParseBuffer(world, document.data(), document.size(),
                      VokParse::kFirstBlock | VokParse::kLastBlock, nullptr);
    VokItHierarchy it(world.GetHierarchy(), VokItHierarchy::Kind::DepthFirst, VokJoint::TypeId());
    const auto skeleton =
        BuildSkeleton(world, {static_cast<VokJoint*>(it.Current())}, false, nullptr);
    ProceduralOptions options;
    options.jointConstraints = true;
    const auto procedural = BuildProceduralJoints(options, world, *skeleton);
    Biff::CBlock block;
    WriteSkeleton(*skeleton, block, procedural.get(), kSkeletonForAnimation + 1);
    std::ostringstream bytes(std::ios::binary);
    block.Write(bytes, Biff::kLittleEndian);
    QelHashClientUtil::Shutdown();
    return bytes.str();
}

class ThousandJoints : public PictureRun {
  protected:
    ThousandJoints() {
        const std::string scene = Crawler().Text();
        folder.WriteFile("crawler.qeli", scene);
        folder.WriteFile("crawler.bin", Bake(scene));
    }
    std::string DrawPage() { return Draw("crawler.bin", "crawler.html", "crawler.qeli"); }
};

}  // namespace

TEST_F(ThousandJoints, AreCheckedDumpedAndDrawn) {
    EXPECT_EQ(folder.Run("skel", {"check", "crawler.bin"}).output, "crawler.bin: OK\n");
    const std::string text =
        folder.Run("skel", {"dump", "crawler.bin", "--names", "crawler.qeli"}).output;
    EXPECT_NE(text.find("segment39_right_11"), std::string::npos);
    const std::string svg = Draw("crawler.bin", "crawler.svg", "crawler.qeli");
    EXPECT_EQ(Count(svg, "<circle "), 2 * kJoints);
    EXPECT_NE(svg.find(">level 3<"), std::string::npos);
}

TEST_F(ThousandJoints, AreListedAndPickedFromTheKeyboard) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    EXPECT_EQ(Browse(DrawPage(), kTools + R"(
        let faults = 0;
        addEventListener("error", () => ++faults);
        const list = find("joints");
        const entries = list.options.length;
        pick(997);
        key("."); key("."); key("."); key(".");
        const last = find("name").textContent;
        const rows = [...document.querySelectorAll("#details dt")];
        const level = rows.find(row => row.textContent === "level").nextSibling.textContent;
        list.selectedIndex = 500;
        list.dispatchEvent(new Event("change"));
        say(entries, dots.length, last, level, find("name").textContent.startsWith("500 "), faults); )"),
              "1000 | 1000 | 999 segment39_right_11 | 3: dropped with rows 0 to 2 of 3 | true | 0");
}

TEST_F(ThousandJoints, AreFoundByAPartOfTheirNames) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    EXPECT_EQ(Browse(DrawPage(), kTools + R"(
        const box = find("search");
        const found = [];
        const note = () => found.push(find("name").textContent);
        box.value = "MENT17_left_1";
        box.dispatchEvent(new Event("input"));
        note();
        for (let i = 0; i < 3; ++i) { box.dispatchEvent(new KeyboardEvent("keydown", {key: "Enter"})); note(); }
        box.value = "nothing has it";
        box.dispatchEvent(new Event("input"));
        note();
        say(...found); )"),
              "121 segment17_left_1 | 863 segment17_left_10 | 864 segment17_left_11 | "
              "121 segment17_left_1 | 121 segment17_left_1");
}

TEST_F(ThousandJoints, HaveSmallDotsAndThePickedOneIsSeen) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    EXPECT_EQ(Browse(DrawPage(), kTools + R"(
        pick(3); drawFigure();
        const small = dots[4].getAttribute("r");
        zoom(16); drawFigure();
        say(small, dots[4].getAttribute("r"), dots[3].getAttribute("r"), figure.lastChild.previousSibling === dots[3]); )"),
              "1.5 | 4.0 | 7 | true");
}

TEST_F(ThousandJoints, CollapseLevelByLevel) {
    if (!HasBrowser()) GTEST_SKIP() << kNoBrowser;
    EXPECT_EQ(
        Browse(DrawPage(), kTools + R"(
        const row = find("row");
        const shownAt = value => {
            row.value = value;
            row.dispatchEvent(new Event("change"));
            drawFigure();
            return shown();
        };
        pick(999);
        say(shownAt("0"), tag.textContent, shownAt("1"), tag.textContent, shownAt("2"), tag.textContent,
            shownAt("3"), tag.textContent, find("joints").options.length); )"),
        "280 | segment39_right_2 | 520 | segment39_right_5 | 760 | segment39_right_8 | 1000 | "
        "segment39_right_11 | 1000");
}
