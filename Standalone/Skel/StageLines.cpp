#include "Picture.h"

using namespace Description;

namespace {

void AddJoint(std::vector<int>& joints, int joint) {
    if (joint >= 0) joints.push_back(joint);
}

std::vector<StageLine> LinesOf(const Skeleton&, const DrivenKeys& keys) {
    std::vector<StageLine> lines;
    for (const Output& output : keys.outputs) {
        StageLine& line = lines.emplace_back();
        line.text = output.target.label + " from ";
        AddJoint(line.written, output.target.joint);
        for (std::size_t i = 0; i < output.curves.size(); ++i) {
            line.text += (i == 0 ? "" : ", ") + output.curves[i].input.label;
            AddJoint(line.read, output.curves[i].input.joint);
        }
    }
    return lines;
}

std::vector<StageLine> LinesOf(const Skeleton& skeleton, const JointConstraints& item) {
    std::vector<StageLine> lines;
    for (const Constraint& constraint : item.constraints) {
        StageLine& line = lines.emplace_back();
        line.text = std::string(KindText(constraint.kind)) + " of " +
                    LabelOf(skeleton, constraint.joint) + " by ";
        AddJoint(line.written, constraint.joint);
        for (std::size_t i = 0; i < constraint.targets.size(); ++i) {
            const Target& target = constraint.targets[i];
            line.text += (i == 0 ? "" : ", ") + LabelOf(skeleton, target.joint);
            AddJoint(line.read, target.joint);
            AddJoint(line.read, target.upObject);
        }
        const int up = constraint.targets.front().upObject;
        if (up >= 0) line.text += ", up by " + LabelOf(skeleton, up);
    }
    return lines;
}

}  // namespace

std::vector<StageLine> StageLines(const Skeleton& skeleton, const Item& item) {
    return std::visit([&](const auto& content) { return LinesOf(skeleton, content); }, item);
}

std::string EscapeXml(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&')
            escaped += "&amp;";
        else if (c == '<')
            escaped += "&lt;";
        else if (c == '>')
            escaped += "&gt;";
        else if (c == '"')
            escaped += "&quot;";
        else
            escaped += c;
    }
    return escaped;
}
