#pragma once

#include <VokLib/CustomData/VokCustomAttribute.h>
#include <VokLib/CustomData/VokCustomData.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "VokLib/SceneTestTools.h"

/// The custom data of a document's root, in and out.
namespace CustomDataTest {

inline std::string Write(const VokCustomData& data) {
    std::ostringstream out;
    VokDocumentFile file(out);
    data.Write(file);
    return out.str();
}

inline std::string CustomData(std::string_view attributes) {
    return "<customData>" + std::string(attributes) + "</customData>";
}

/// A world whose custom data holds `attributes`, read from a document.
class Loaded {
  public:
    explicit Loaded(std::string_view attributes) : scene(CustomData(attributes)) {}

    VokCustomData& Data() { return scene.world.GetCustomData(); }
    template <class Attribute>
    Attribute& First() {
        return dynamic_cast<Attribute&>(Data().GetAttribute(0));
    }
    std::string Written() { return Write(Data()); }

  private:
    SceneTest::Scene scene;
};

/// The text of the failure of reading `attributes`.
inline std::string LoadFailure(std::string_view attributes) {
    return FailureOf([&] { Loaded loaded(attributes); }).text;
}

inline std::vector<int> IndicesOf(const VokCustomAttribute& attribute) {
    std::vector<int> indices;
    attribute.GetIndices(indices);
    return indices;
}

inline constexpr const char* kNoValue = "No value found for given attribute array index";
inline constexpr const char* kNotSingle = "Array attribute treated as non-array attribute";
inline constexpr const char* kNotArray = "Non-array attribute treated as array attribute";

}  // namespace CustomDataTest
