#include <VokLib/Objects/Geometry/VokBlendshapeController.h>

std::span<const VokChildElement<VokBlendshapeController>> VokBlendshapeController::ChildElements() {
    static constexpr VokChildElement<VokBlendshapeController> rows[] = {
        {.name = "weight",
         .start =
             [](VokBlendshapeController& controller, VokParse& parse) {
                 controller.weights.emplace_back().name =
                     parse.GetAttributes().GetString("weightName");
             },
         .data = [](VokBlendshapeController& controller,
                    VokParse& parse) { controller.weights.back().value = parse.ReadFloat(); },
         .write =
             [](const VokBlendshapeController& controller, VokFile& file, std::string_view name) {
                 for (const Weight& weight : controller.weights) {
                     VokAttributes attributes;
                     attributes.SetString("weightName", weight.name);
                     file.OpenTag(name, attributes);
                     file.WriteFloat(weight.value);
                     file.CloseTag(name);
                 }
             }},
    };
    return rows;
}
