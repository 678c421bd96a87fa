#include "Dump.h"
#include "Figure.h"
#include "PageTemplate.h"
#include "Picture.h"

#include <cmath>

using namespace Description;

namespace {

constexpr double kDegrees = 57.29577951308232;

Json JointJson(const Joint& joint, const std::array<double, 3>& place) {
    Json json = {{"label", joint.label},
                 {"hash", joint.hash ? Json(HashText(*joint.hash)) : Json(nullptr)},
                 {"parent", joint.parent},
                 {"level", joint.level},
                 {"scaleCompensate", joint.scaleCompensate},
                 {"translation", joint.translation},
                 {"rotation", joint.rotation},
                 {"scale", joint.scale}};
    const Four& q = joint.rotation;
    const double sine =
        std::sqrt(static_cast<double>(q[0]) * q[0] + static_cast<double>(q[1]) * q[1] +
                  static_cast<double>(q[2]) * q[2]);
    json["degrees"] =
        static_cast<float>(2 * std::atan2(sine, std::fabs(static_cast<double>(q[3]))) * kDegrees);
    Json& at = json["place"] = Json::array();
    for (const double number : place) at.push_back(static_cast<float>(number));
    return json;
}

Json ItemJson(const Skeleton& skeleton, const Item& item) {
    Json lines = Json::array();
    for (const StageLine& line : StageLines(skeleton, item))
        lines.push_back({{"text", line.text}, {"written", line.written}, {"read", line.read}});
    return {{"kind", item.index() == 0 ? "driven keys" : "joint constraints"},
            {"lines", std::move(lines)}};
}

std::string PageData(const Skeleton& skeleton) {
    const Figure figure = PlaceJoints(skeleton);
    Json data = {{"signature", HashText(skeleton.signature)},
                 {"byteOrder", skeleton.isBigEndian ? "big" : "little"},
                 {"size", skeleton.size}};
    Json& joints = data["joints"] = Json::array();
    for (std::size_t i = 0; i < skeleton.joints.size(); ++i)
        joints.push_back(JointJson(skeleton.joints[i], figure.places[i]));
    Json& rows = data["rows"] = Json::array();
    for (const LodRow& row : skeleton.lods)
        rows.push_back({{"limit", row.limit}, {"remap", row.remap}});
    Json& items = data["items"] = Json::array();
    for (const Item& item : skeleton.items) items.push_back(ItemJson(skeleton, item));
    // Nothing in it may end the element that holds it.
    std::string text;
    for (const char c : data.dump()) {
        if (c == '<')
            text += "\\u003c";
        else
            text += c;
    }
    return text;
}

}  // namespace

std::string MakePage(const Skeleton& skeleton, const std::string& title) {
    constexpr std::string_view kTitle = "{{TITLE}}", kData = "{{DATA}}";
    const std::string_view page = kPageTemplate;
    std::string text;
    for (std::size_t at = 0; at < page.size();) {
        if (page.substr(at).starts_with(kTitle)) {
            text += EscapeXml(title);
            at += kTitle.size();
        } else if (page.substr(at).starts_with(kData)) {
            text += PageData(skeleton);
            at += kData.size();
        } else {
            text += page[at++];
        }
    }
    return text;
}
