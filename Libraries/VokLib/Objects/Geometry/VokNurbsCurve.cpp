#include <VokLib/Objects/Geometry/VokNurbsCurve.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

namespace {

constexpr VokEnumText<VokNurbsCurve::Form, 3> kForms{{"open", "closed", "periodic"}};
constexpr long long kFloatsPerPoint = 3;

unsigned ReadRequiredCount(const VokNurbsCurve& curve, const VokAttributes& attributes,
                           const char* missing) {
    if (!attributes.Has("count")) ThrowVokException(missing, &curve);
    return GetCount(attributes, "count", 0);
}

void WriteList(const std::vector<float>& values, long long perItem, VokFile& file,
               std::string_view name) {
    VokAttributes attributes;
    attributes.SetUnsigned("count",
                           static_cast<unsigned>(static_cast<long long>(values.size()) / perItem));
    file.OpenTag(name, attributes);
    file.WriteFloats(values.data(), values.size());
    file.CloseTag(name);
}

}  // namespace

std::span<const VokAttributeRow<VokNurbsCurve>> VokNurbsCurve::AttributeRows() {
    static constexpr VokAttributeRow<VokNurbsCurve> rows[] = {
        {.read =
             [](VokNurbsCurve& curve, const VokAttributes& attributes) {
                 if (!attributes.Has("degree"))
                     ThrowVokException("Nurbs curve missing degree attribute", &curve);
                 curve.degree = attributes.GetUnsigned("degree", 0);
             },
         .write =
             [](const VokNurbsCurve& curve, VokAttributes& attributes) {
                 attributes.SetUnsigned("degree", curve.degree);
             }},
        {.read =
             [](VokNurbsCurve& curve, const VokAttributes& attributes) {
                 const char* text = attributes.Find("form");
                 if (text == nullptr) return;
                 const auto found = kForms.Find(text);
                 if (!found)
                     ThrowVokException(
                         "NurbsCurve has no form for string \"" + std::string(text) + "\".",
                         &curve);
                 curve.form = *found;
             },
         .write =
             [](const VokNurbsCurve& curve, VokAttributes& attributes) {
                 const auto text = kForms.TextOf(curve.form);
                 if (!text) ThrowVokException("NurbsCurve form enum is out of range.", &curve);
                 attributes.SetString("form", *text);
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokNurbsCurve>> VokNurbsCurve::ChildElements() {
    static constexpr VokChildElement<VokNurbsCurve> rows[] = {
        {.name = "points",
         .start =
             [](VokNurbsCurve& curve, VokParse& parse) {
                 curve.claimedCount = ReadRequiredCount(
                     curve, parse.GetAttributes(), "Nurbs curve missing points count attribute");
             },
         .data =
             [](VokNurbsCurve& curve, VokParse& parse) {
                 curve.points.Read(parse, curve.claimedCount * kFloatsPerPoint);
             },
         .write =
             [](const VokNurbsCurve& curve, VokFile& file, std::string_view name) {
                 WriteList(curve.points.Get(), kFloatsPerPoint, file, name);
             },
         .isBulk = true},
        {.name = "knots",
         .start =
             [](VokNurbsCurve& curve, VokParse& parse) {
                 curve.claimedCount = ReadRequiredCount(
                     curve, parse.GetAttributes(), "Nurbs curve missing knots count attribute");
             },
         .data = [](VokNurbsCurve& curve,
                    VokParse& parse) { curve.knots.Read(parse, curve.claimedCount); },
         .write = [](const VokNurbsCurve& curve, VokFile& file,
                     std::string_view name) { WriteList(curve.knots.Get(), 1, file, name); },
         .isBulk = true},
    };
    return rows;
}
