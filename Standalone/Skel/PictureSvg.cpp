#include "Dump.h"
#include "Figure.h"
#include "Picture.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

using namespace Description;

namespace {

constexpr double kView = 420;  // the side of a view's square, in pixels
constexpr double kMargin = 30;
constexpr double kTop = 56;              // title and legend
constexpr double kLine = 16;             // text lines
constexpr std::size_t kMostLabels = 60;  // of joints; more would hide the figure
constexpr std::size_t kColours = 6;

constexpr std::size_t kTextColumns = 112;  // of a line of text that fits the picture

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
.t{font-size:16px;font-weight:600}.q{fill:#5b6575}.f{fill:none;stroke:#d5dae2}
.b{fill:none;stroke-width:2;stroke-linecap:round}circle{stroke:#fff}
.n{font-size:9px;paint-order:stroke;stroke:#fff;stroke-width:2px}
.s{fill:#eef1f6;stroke:#c3cad6}.a{fill:none;stroke:#5b6575;stroke-width:1.5}
.l0{stroke:#1f5fbf}circle.l0,rect.l0{fill:#1f5fbf}.l1{stroke:#b8560f}circle.l1,rect.l1{fill:#b8560f}
.l2{stroke:#1c7c4a}circle.l2,rect.l2{fill:#1c7c4a}.l3{stroke:#8a3fb0}circle.l3,rect.l3{fill:#8a3fb0}
.l4{stroke:#b3261e}circle.l4,rect.l4{fill:#b3261e}.l5{stroke:#5b6575}circle.l5,rect.l5{fill:#5b6575}
@media(prefers-color-scheme:dark){svg{background:#14181f;fill:#e6eaf0}.q{fill:#9aa5b5}.f{stroke:#39424f}
circle,.n{stroke:#14181f}.s{fill:#1f2630;stroke:#414c5b}.a{stroke:#9aa5b5}
.l0{stroke:#7db0ff}circle.l0,rect.l0{fill:#7db0ff}.l1{stroke:#ffb070}circle.l1,rect.l1{fill:#ffb070}
.l2{stroke:#6fd39b}circle.l2,rect.l2{fill:#6fd39b}.l3{stroke:#d79bf5}circle.l3,rect.l3{fill:#d79bf5}
.l4{stroke:#ff8f88}circle.l4,rect.l4{fill:#ff8f88}.l5{stroke:#9aa5b5}circle.l5,rect.l5{fill:#9aa5b5}}
</style>
)";

struct Box {
    double left, top, right, bottom;

    bool Overlaps(const Box& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
};

/// What a name takes up beside a joint.
Box LabelBox(const std::string& label, double x, double y, bool isRight) {
    constexpr double kWidth = 5.2, kAbove = 4, kBelow = 3;
    const double width = kWidth * static_cast<double>(label.size());
    return {isRight ? x : x - width, y - kAbove, isRight ? x + width : x, y + kBelow};
}

struct TextLine {
    std::string_view text;
    double x;
};

/// Cuts `text` into lines that fit the picture, behind a blank where there is one.
std::vector<TextLine> Wrap(std::string_view text) {
    constexpr double kFirst = 34, kFurther = 50;
    std::vector<TextLine> lines;
    while (text.size() > kTextColumns) {
        std::size_t size = kTextColumns;
        const std::size_t blank = text.rfind(' ', size - 1);
        if (blank != std::string_view::npos && blank > 0)
            size = blank + 1;
        else  // Not in the middle of a character.
            while (size > 1 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
        lines.push_back({text.substr(0, size), lines.empty() ? kFirst : kFurther});
        text.remove_prefix(size);
    }
    lines.push_back({text, lines.empty() ? kFirst : kFurther});
    return lines;
}

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
        double x = kView - 60;
        for (int level = 0; level <= levels && level < static_cast<int>(kColours); ++level) {
            body += "<rect x=\"" + Pixels(x) + "\" y=\"35\" width=\"10\" height=\"10\" class=\"" +
                    ColourClass(level) + "\"/>\n";
            const bool isLast = level + 1 == static_cast<int>(kColours) && level < levels;
            Text(x + 15, 44,
                 level == 0 ? "always there"
                            : "level " + std::to_string(level) + (isLast ? " and up" : ""),
                 " class=\"q\"");
            x += level == 0 ? 100 : 62;
        }
    }

    std::array<double, 2> PlaceOf(std::size_t joint, std::size_t axis, double left) const {
        const auto& place = figure.places[joint];
        const double middleX = (figure.low[axis] + figure.high[axis]) / 2;
        const double middleY = (figure.low[1] + figure.high[1]) / 2;
        return {left + kView / 2 + (place[axis] - middleX) * pixels,
                kTop + kView / 2 - (place[1] - middleY) * pixels};
    }

    /// Many joints make small dots, so that they leave the figure to be seen.
    double DotSize() const {
        return std::clamp(35 / std::sqrt(static_cast<double>(skeleton.joints.size())), 1.2, 3.0);
    }

    /// Bones of one level are one path, so that a thousand joints stay a small file.
    void DrawView(const char* name, std::size_t axis, double left) {
        body += "<rect class=\"f\" x=\"" + Pixels(left + 8) + "\" y=\"" + Pixels(kTop) +
                "\" width=\"" + Pixels(kView - 16) + "\" height=\"" + Pixels(kView - 8) +
                "\" rx=\"6\"/>\n";
        Text(left + 18, kTop + 18, name, " class=\"q\"");
        const std::string radius = Pixels(DotSize());
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
                    y + "\" r=\"" + radius + "\"><title>" + std::to_string(i) + " " +
                    EscapeXml(joint.label) + "</title></circle>\n";
        }
        for (std::size_t level = 0; level < kColours; ++level)
            if (!bones[level].empty())
                body += "<path class=\"b l" + std::to_string(level) + "\" d=\"" + bones[level] +
                        "\"/>\n";
        body += dots;
        if (skeleton.joints.size() <= kMostLabels) DrawLabels(axis, left);
    }

    /// Names beside the joints, right or left; one that would cover another name or a joint is left
    /// to the dot's title.
    void DrawLabels(std::size_t axis, double left) {
        constexpr double kDot = 3, kAway = 5;
        std::vector<Box> taken;
        for (std::size_t i = 0; i < skeleton.joints.size(); ++i) {
            const auto at = PlaceOf(i, axis, left);
            taken.push_back({at[0] - kDot, at[1] - kDot, at[0] + kDot, at[1] + kDot});
        }
        for (std::size_t i = 0; i < skeleton.joints.size(); ++i) {
            const std::string& label = skeleton.joints[i].label;
            const auto at = PlaceOf(i, axis, left);
            for (const bool isRight : {true, false}) {
                const Box box = LabelBox(label, at[0] + (isRight ? kAway : -kAway), at[1], isRight);
                if (box.left < left + 10 || box.right > left + kView - 10 ||
                    std::any_of(taken.begin(), taken.end(),
                                [&box](const Box& other) { return box.Overlaps(other); }))
                    continue;
                taken.push_back(box);
                Text(at[0] + (isRight ? kAway : -kAway), at[1] + 3, label,
                     isRight ? " class=\"q n\"" : " class=\"q n\" text-anchor=\"end\"");
                break;
            }
        }
    }

    void DrawItems() {
        double y = kTop + kView + 8;
        for (std::size_t i = 0; i < skeleton.items.size(); ++i) {
            const std::vector<StageLine> stageLines = StageLines(skeleton, skeleton.items[i]);
            std::vector<TextLine> lines;
            for (const StageLine& line : stageLines)
                for (const TextLine& part : Wrap(line.text)) lines.push_back(part);
            const double boxHeight = kLine * static_cast<double>(lines.size() + 1) + 12;
            body += "<rect class=\"s\" x=\"8\" y=\"" + Pixels(y) + "\" width=\"" +
                    Pixels(2 * kView - 16) + "\" height=\"" + Pixels(boxHeight) + "\" rx=\"6\"/>\n";
            Text(18, y + 18,
                 std::to_string(i) +
                     (skeleton.items[i].index() == 0 ? ". driven keys" : ". joint constraints"),
                 " font-weight=\"600\"");
            for (std::size_t k = 0; k < lines.size(); ++k)
                Text(lines[k].x, y + 18 + kLine * static_cast<double>(k + 1),
                     std::string(lines[k].text), "");
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
