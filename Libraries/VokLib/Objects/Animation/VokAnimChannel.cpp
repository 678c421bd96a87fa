#include <VokLib/Objects/Animation/VokAnimChannel.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <algorithm>

using namespace VokFields;

namespace {

bool HasKeyTimes(AnimInterp interp) {
    return interp != AnimInterp::Timestep;
}

/// How many tangent arrays a kind writes. The weighted kinds and QELCurve write none, although a
/// reader takes them.
std::size_t WrittenTangents(AnimInterp interp) {
    switch (interp) {
        case AnimInterp::Tangent:
        case AnimInterp::QELHermite:
            return 1;
        case AnimInterp::SplitTangent:
            return 2;
        default:
            return 0;
    }
}

void WriteFloatArray(const std::vector<float>& values, VokFile& file, std::string_view name) {
    file.OpenTag(name);
    file.WriteFloatArray(values);
    file.CloseTag(name);
}

}  // namespace

std::span<const VokAttributeRow<VokAnimChannel>> VokAnimChannel::AttributeRows() {
    static constexpr VokAttributeRow<VokAnimChannel> rows[] = {
        {.read =
             [](VokAnimChannel& channel, const VokAttributes& given) {
                 if (const char* text = given.Find("channel")) channel.SetChannel(text);
             }},
        // An input channel without an input object is dropped.
        {.read =
             [](VokAnimChannel& channel, const VokAttributes& given) {
                 const char* input = given.Find("inputObject");
                 if (input == nullptr) return;
                 channel.attributes.SetString("inputObject", input);
                 channel.attributes.SetString("inputChannel",
                                              GetRequired(given, "inputChannel", &channel));
             }},
        {.write =
             [](const VokAnimChannel& channel, VokAttributes& written) {
                 for (std::size_t i = 0; i < channel.attributes.GetCount(); ++i)
                     written.Set(channel.attributes.GetName(i), channel.attributes.GetValue(i));
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokAnimChannel>> VokAnimChannel::ChildElements() {
    static constexpr VokChildElement<VokAnimChannel> rows[] = {
        {.name = "animData", .start = ReadAnimData, .write = WriteAnimData},
        {.name = "keyValues",
         .data =
             [](VokAnimChannel& channel, VokParse& parse) {
                 parse.ReadFloats(channel.keyValues, channel.GetValueCount());
             },
         .within = "animData"},
        {.name = "keyTimes",
         .data = [](VokAnimChannel& channel,
                    VokParse& parse) { parse.ReadFloats(channel.keyTimes, channel.numKeys); },
         .within = "animData"},
        {.name = "tangents",
         .data = ReadTangents,
         .within = "animData",
         .end = [](VokAnimChannel& channel, VokParse&) { ++channel.tangentIndex; }},
    };
    return rows;
}

void VokAnimChannel::ReadAnimData(VokAnimChannel& channel, VokParse& parse) {
    const VokAttributes& given = parse.GetAttributes();
    // A text that is none of the ten leaves the kind as it was.
    channel.interp =
        FindAnimInterp(GetRequired(given, "interp", &channel)).value_or(channel.interp);
    channel.numKeys = GetCount(given, "numKeys", 0);
    channel.SetKeyStride(GetCount(given, "keyStride", 1));
    if (given.Has("timeOffset")) {
        channel.hasTimeOffset = true;
        channel.timeOffset = given.GetFloat("timeOffset", 0);
    }
    if (given.Has("duration")) channel.SetDuration(given.GetFloat("duration", 0));
}

void VokAnimChannel::ReadTangents(VokAnimChannel& channel, VokParse& parse) {
    if (channel.tangentIndex >= channel.tangents.size())
        ThrowVokException("Too many tangents elements when parsing animation channel.", &channel);
    parse.ReadFloats(channel.tangents[channel.tangentIndex], channel.GetValueCount());
}

void VokAnimChannel::WriteAnimData(const VokAnimChannel& channel, VokFile& file,
                                   std::string_view tag) {
    VokAttributes written;
    written.SetString("interp", GetAnimInterpText(channel.interp));
    written.SetUnsigned("numKeys", channel.numKeys);
    if (channel.keyStride != 1) written.SetUnsigned("keyStride", channel.keyStride);
    if (channel.hasTimeOffset) written.SetFloat("timeOffset", channel.timeOffset);
    if (channel.interp == AnimInterp::Timestep) written.SetFloat("duration", channel.duration);

    file.OpenTag(tag, written);
    WriteFloatArray(channel.keyValues, file, "keyValues");
    if (HasKeyTimes(channel.interp)) WriteFloatArray(channel.keyTimes, file, "keyTimes");
    for (std::size_t i = 0; i < WrittenTangents(channel.interp); ++i)
        WriteFloatArray(channel.tangents[i], file, "tangents");
    file.CloseTag(tag);
}

void VokAnimChannel::SetChannel(std::string_view text) {
    attributes.SetString("channel", text);
    if (!GetName().empty()) return;
    std::string ownName(text);
    std::replace(ownName.begin(), ownName.end(), '|', '_');
    SetName(std::move(ownName));
}

void VokAnimChannel::SetKeyStride(unsigned stride) {
    if (stride == 0)
        ThrowVokException(
            "0 is not a permitted stride. There must be at least one float value per key.", this);
    keyStride = stride;
}

float VokAnimChannel::GetDuration() const {
    if (interp != AnimInterp::Timestep)
        ThrowVokException("Anim type must be time step to use the time step", this);
    return duration;
}

void VokAnimChannel::SetDuration(float time) {
    if (interp != AnimInterp::Timestep)
        ThrowVokException("Anim type must be time step to use the duration", this);
    duration = time;
}
