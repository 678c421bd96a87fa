#include "Dump.h"
#include "Figure.h"
#include "Picture.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

using namespace Description;

namespace {

constexpr double kView = 420;  // the side of a view's square, in pixels
constexpr double kMargin = 30;
constexpr double kTop = 56;              // title and legend
constexpr double kLine = 16;             // text lines
constexpr std::size_t kMostLabels = 60;  // of joints; more would hide the figure
constexpr std::size_t kColours = 6;

/// Pixels with one digit behind the point: files stay small, and the same everywhere.
std::string Pixels(double number) {
    char text[40];
    const double rounded = std::round(number * 10) / 10 + 0.0;
    const auto end = std::to_chars(text, text + sizeof text, rounded, std::chars_format::fixed, 1);
    std::string shortened(text, end.ptr);
    if (shortened.ends_with(".0")) shortened.resize(shortened.size() - 2);
    return shortened == "-0" ? "0" : shortened;
}

std::string ColourClass(int level) {
    return "l" +
           std::to_string(std::min<std::size_t>(static_cast<std::size_t>(level), kColours - 1));
}

const char* const kStyle = R"(<style>
svg{background:#fff;font:12px system-ui,sans-serif;fill:#1c2330}
h1,.t{font-size:16px;font-weight:600}.q{fill:#5b6575}.f{fill:none;stroke:#d5dae2}
.b{fill:none;stroke-width:2;stroke-linecap:round}circle{stroke:#fff}
.s{fill:#eef1f6;stroke:#c3cad6}.a{fill:none;stroke:#5b6575;stroke-width:1.5}
.l0{stroke:#1f5fbf}circle.l0,rect.l0{fill:#1f5fbf}.l1{stroke:#b8560f}circle.l1,rect.l1{fill:#b8560f}
.l2{stroke:#1c7c4a}circle.l2,rect.l2{fill:#1c7c4a}.l3{stroke:#8a3fb0}circle.l3,rect.l3{fill:#8a3fb0}
.l4{stroke:#b3261e}circle.l4,rect.l4{fill:#b3261e}.l5{stroke:#5b6575}circle.l5,rect.l5{fill:#5b6575}
@media(prefers-color-scheme:dark){svg{background:#14181f;fill:#e6eaf0}.q{fill:#9aa5b5}.f{stroke:#39424f}
circle{stroke:#14181f}.s{fill:#1f2630;stroke:#414c5b}.a{stroke:#9aa5b5}
.l0{stroke:#7db0ff}circle.l0,rect.l0{fill:#7db0ff}.l1{stroke:#ffb070}circle.l1,rect.l1{fill:#ffb070}
.l2{stroke:#6fd39b}circle.l2,rect.l2{fill:#6fd39b}.l3{stroke:#d79bf5}circle.l3,rect.l3{fill:#d79bf5}
.l4{stroke:#ff8f88}circle.l4,rect.l4{fill:#ff8f88}.l5{stroke:#9aa5b5}circle.l5,rect.l5{fill:#9aa5b5}}
</style>
)";

/// Draws one skeleton.
class Drawing {
  public:
    Drawing(const Skeleton& whole, const std::string& name)
        : skeleton(whole), title(name), figure(PlaceJoints(whole)) {
        double extent = 0;
        for (std::size_t i = 0; i < 3; ++i)
            extent = std::max(extent, figure.high[i] - figure.low[i]);
        pixels = extent > 0 ? (kView - 2 * kMargin) / extent : 1;
    }

    std::string Draw() {
        DrawHead();
        DrawView("front", 0, 0);
        DrawView("side", 2, kView);
        DrawItems();
        return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Pixels(2 * kView) +
               "\" height=\"" + Pixels(height) + "\" viewBox=\"0 0 " + Pixels(2 * kView) + " " +
               Pixels(height) + "\" role=\"img\" aria-label=\"" + EscapeXml(title) + "\">\n" +
               kStyle + body + "</svg>\n";
    }

  private:
    void Text(double x, double y, const std::string& text, const char* style) {
        body += "<text x=\"" + Pixels(x) + "\" y=\"" + Pixels(y) + "\"" + style + ">" +
                EscapeXml(text) + "</text>\n";
    }

    void DrawHead() {
        Text(16, 24, title, " class=\"t\"");
        Text(16, 44,
             std::to_string(skeleton.joints.size()) + " joints, signature " +
                 HashText(skeleton.signature),
             " class=\"q\"");
        int levels = 0;
        for (const Joint& joint : skeleton.joints) levels = std::max(levels, joint.level);
        double x = kView;
        for (int level = 0; level <= levels && level < static_cast<int>(kColours); ++level) {
            body += "<rect x=\"" + Pixels(x) + "\" y=\"35\" width=\"10\" height=\"10\" class=\"" +
                    ColourClass(level) + "\"/>\n";
            Text(x + 15, 44, level == 0 ? "always there" : "level " + std::to_string(level),
                 " class=\"q\"");
            x += 100;
        }
    }

    std::array<double, 2> PlaceOf(std::size_t joint, std::size_t axis, double left) const {
        const auto& place = figure.places[joint];
        const double middleX = (figure.low[axis] + figure.high[axis]) / 2;
        const double middleY = (figure.low[1] + figure.high[1]) / 2;
        return {left + kView / 2 + (place[axis] - middleX) * pixels,
                kTop + kView / 2 - (place[1] - middleY) * pixels};
    }

    /// Bones of one level are one path, so that a thousand joints stay a small file.
    void DrawView(const char* name, std::size_t axis, double left) {
        body += "<rect class=\"f\" x=\"" + Pixels(left + 8) + "\" y=\"" + Pixels(kTop) +
                "\" width=\"" + Pixels(kView - 16) + "\" height=\"" + Pixels(kView - 8) +
                "\" rx=\"6\"/>\n";
        Text(left + 18, kTop + 18, name, " class=\"q\"");
        std::array<std::string, kColours> bones;
        std::string dots, labels;
        for (std::size_t i = 0; i < skeleton.joints.size(); ++i) {
            const Joint& joint = skeleton.joints[i];
            const auto at = PlaceOf(i, axis, left);
            const std::string x = Pixels(at[0]), y = Pixels(at[1]);
            if (joint.parent >= 0) {
                const auto from = PlaceOf(static_cast<std::size_t>(joint.parent), axis, left);
                bones[std::min<std::size_t>(static_cast<std::size_t>(joint.level), kColours - 1)] +=
                    "M" + Pixels(from[0]) + " " + Pixels(from[1]) + "L" + x + " " + y;
            }
            dots += "<circle class=\"" + ColourClass(joint.level) + "\" cx=\"" + x + "\" cy=\"" +
                    y + "\" r=\"3\"><title>" + std::to_string(i) + " " + EscapeXml(joint.label) +
                    "</title></circle>\n";
        }
        for (std::size_t level = 0; level < kColours; ++level)
            if (!bones[level].empty())
                body += "<path class=\"b l" + std::to_string(level) + "\" d=\"" + bones[level] +
                        "\"/>\n";
        body += dots;
        if (skeleton.joints.size() <= kMostLabels) DrawLabels(axis, left);
    }

    /// Names beside the joints; one that would cover another is left to the dot's title.
    void DrawLabels(std::size_t axis, double left) {
        constexpr double kWidth = 5.2, kHeight = 10;
        std::vector<std::array<double, 4>> taken;
        for (std::size_t i = 0; i < skeleton.joints.size(); ++i) {
            const std::string& label = skeleton.joints[i].label;
            const auto at = PlaceOf(i, axis, left);
            const double width = kWidth * static_cast<double>(label.size());
            const std::array<double, 4> box = {at[0] + 5, at[1] - kHeight + 3, at[0] + 5 + width,
                                               at[1] + 3};
            const bool isFree = box[2] < left + kView - 10 &&
                                std::none_of(taken.begin(), taken.end(), [&box](const auto& other) {
                                    return box[0] < other[2] && other[0] < box[2] &&
                                           box[1] < other[3] && other[1] < box[3];
                                });
            if (!isFree) continue;
            taken.push_back(box);
            Text(box[0], at[1] + 3, label, " class=\"q\" style=\"font-size:9px\"");
        }
    }

    void DrawItems() {
        double y = kTop + kView + 8;
        for (std::size_t i = 0; i < skeleton.items.size(); ++i) {
            const std::vector<StageLine> lines = StageLines(skeleton, skeleton.items[i]);
            const double boxHeight = kLine * static_cast<double>(lines.size() + 1) + 12;
            body += "<rect class=\"s\" x=\"8\" y=\"" + Pixels(y) + "\" width=\"" +
                    Pixels(2 * kView - 16) + "\" height=\"" + Pixels(boxHeight) + "\" rx=\"6\"/>\n";
            Text(18, y + 18,
                 std::to_string(i) +
                     (skeleton.items[i].index() == 0 ? ". driven keys" : ". joint constraints"),
                 " font-weight=\"600\"");
            for (std::size_t k = 0; k < lines.size(); ++k)
                Text(34, y + 18 + kLine * static_cast<double>(k + 1), lines[k].text, "");
            y += boxHeight;
            if (i + 1 < skeleton.items.size())
                body += "<path class=\"a\" d=\"M" + Pixels(kView) + " " + Pixels(y) +
                        "v14m-4 -5l4 5l4 -5\"/>\n";
            y += 16;
        }
        height = y;
    }

    const Skeleton& skeleton;
    const std::string& title;
    const Figure figure;
    double pixels;  // for one unit of the scene
    double height = 0;
    std::string body;
};

}  // namespace

std::string DrawSvg(const Skeleton& skeleton, const std::string& title) {
    return Drawing(skeleton, title).Draw();
}
