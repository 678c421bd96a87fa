#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Links/VokObjLink.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// A light source. Angles are radians.
class VokLight : public VokElement<VokLight, VokObj> {
  public:
    static constexpr std::string_view kElementName = "light";
    static std::span<const VokChildElement<VokLight>> ChildElements();
    static std::span<const VokAttributeRow<VokLight>> AttributeRows();

    /// In the order of the format's table; Unknown is what a text outside it reads as, and cannot
    /// be written.
    enum class Type : std::uint32_t { Directional, Point, Spot, Area, Volume, Ambient, Unknown };
    enum class VolumeShape : std::uint32_t { None, Box, Sphere, Cylinder, Cone };
    enum class Interpolation : std::uint32_t { None, Linear, Smooth, Spline };

    /// Colours along the light's reach.
    struct Ramp {
        explicit Ramp(unsigned count) : numEntries(count) {}
        unsigned numEntries;
        std::vector<float> positions;
        std::vector<float> colours;  ///< three for each entry
        std::vector<Interpolation> interpolationTypes;
    };
    struct RampEntry {
        float position;
        VokVector3 colour;
        Interpolation interpolation;
    };

    /// An entry of the ramp; throws "index out of range", also without a ramp, and "ramp size
    /// mismatch".
    RampEntry GetRampEntry(std::size_t index) const;

    Type type = Type::Directional;
    bool castShadows = false;
    bool hasAmbient = false;
    bool hasDiffuse = false;
    bool hasSpecular = false;
    VolumeShape volumeShape = VolumeShape::None;
    float intensity = 0;
    VokVector3 colour;
    VokObjLinkHandle colourTexture{this};
    float coneAngle = 0;
    float penumbraAngle = 0;
    float dropOff = 0;
    float decayRate = 0;
    std::optional<Ramp> ramp;

  private:
    void CheckRampSizes() const;
    static void WriteRamp(const VokLight& light, VokFile& file, std::string_view name);
};
