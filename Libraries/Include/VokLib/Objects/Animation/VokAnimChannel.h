#pragma once

#include <VokLib/Document/VokElement.h>
#include <VokLib/Objects/Animation/AnimInterp.h>

#include <array>
#include <string>
#include <vector>

/// The keys of one animated attribute. Which arrays are in use depends on the kind: a Timestep
/// channel has evenly spaced samples over its duration and no key times; Tangent, QELHermite and
/// SplitTangent have tangents, the last in both arrays. A document is not held to its own counts:
/// an array that it does not give is empty, whatever numKeys says.
class VokAnimChannel : public VokElement<VokAnimChannel, VokObj> {
  public:
    static constexpr std::string_view kElementName = "animChannel";
    static std::span<const VokChildElement<VokAnimChannel>> ChildElements();
    static std::span<const VokAttributeRow<VokAnimChannel>> AttributeRows();

    /// What is animated: the text of attribute "channel", empty when there is none.
    std::string GetChannel() const { return attributes.GetString("channel"); }
    /// Gives a channel without a name the text as its name, with "_" for each "|".
    void SetChannel(std::string_view text);
    /// True for a driven key: the keys are over the value of another channel instead of time.
    bool IsDrivenKey() const { return attributes.Has("inputObject"); }

    /// Floats per key, never 0: setting that throws "0 is not a permitted stride. There must be at
    /// least one float value per key.".
    unsigned GetKeyStride() const { return keyStride; }
    void SetKeyStride(unsigned stride);

    /// The time of a Timestep channel's last sample, in seconds; for another kind throws "Anim type
    /// must be time step to use the time step" when read and "Anim type must be time step to use
    /// the duration" when set.
    float GetDuration() const;
    void SetDuration(float time);

    VokAttributes attributes;  ///< "channel", and for a driven key "inputObject" and "inputChannel"
    AnimInterp interp = AnimInterp::Timestep;
    unsigned numKeys = 0;
    bool hasTimeOffset = false;
    float timeOffset = 0;          ///< seconds
    std::vector<float> keyValues;  ///< numKeys x stride floats, key by key
    std::vector<float> keyTimes;   ///< numKeys seconds, or values of what drives the channel
    std::array<std::vector<float>, 2> tangents;  ///< derivatives by what the key times count

  private:
    static void ReadAnimData(VokAnimChannel& channel, VokParse& parse);
    static void WriteAnimData(const VokAnimChannel& channel, VokFile& file, std::string_view name);
    static void ReadTangents(VokAnimChannel& channel, VokParse& parse);
    long long GetValueCount() const { return static_cast<long long>(numKeys) * keyStride; }

    unsigned keyStride = 1;
    float duration = 0;         // seconds
    unsigned tangentIndex = 0;  // of the tangents element to be read next
};
