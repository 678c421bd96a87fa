#pragma once

#include "VoktRigbake/SkeletonFileReader.h"

/// Reads the procedural data of a skeleton file as an engine would, along every offset. It shares
/// nothing with the code that writes files, and throws for anything out of place.
class ProceduralFileReader : public SkeletonFileReader {
  public:
    struct Curve {
        std::uint32_t inputIndex = 0;
        std::uint32_t inputType = 0, inputComponent = 0;
        float firstTime = 0, lastTime = 0;
        std::vector<std::array<float, 4>> coefficients;
        std::vector<float> times;

        float ValueAt(float t) const {
            std::size_t k = 0;
            while (k + 1 < coefficients.size() && times[k + 1] <= t) ++k;
            const float d = t - times[k];
            const auto& c = coefficients[k];
            return c[0] + c[1] * d + c[2] * d * d + c[3] * d * d * d;
        }
    };
    struct Output {
        std::vector<Curve> curves;
        std::uint32_t index = 0, type = 0, component = 0;
    };
    struct Keys {
        std::uint32_t objectCount = 0, drivenObjectCount = 0;
        std::vector<std::pair<std::uint32_t, std::uint32_t>> objects;  // rotation order, joint
        std::vector<std::array<float, 4>> rotationAxes, jointOrients;
        std::vector<Output> outputs;
    };
    struct Item {
        std::uint32_t flags = 0, constrained = 0, target = 0;
        float weight = 0;
        std::vector<float> values;                // behind the common header
        std::uint32_t worldUp = 0, upObject = 0;  // of aim items
    };
    struct Constraints {
        std::vector<std::uint32_t> constrained, targets;
        std::vector<Item> orientation, translation, scale, aim, parent;
    };
    using Channel = std::pair<std::uint32_t, std::uint32_t>;  // hash, kind

    ProceduralFileReader(const std::string& fileBytes, bool isBigEndian)
        : SkeletonFileReader(fileBytes, isBigEndian), size(fileBytes.size()), text(fileBytes) {
        if (procedural == 0) return;
        Expect(Magic(procedural) == "PJ01", "wrong magic");
        const std::uint32_t count = U32(procedural + 0x08);
        const std::size_t kindTable = Follow(procedural + 0x0C, 4);
        const std::size_t itemTable = Follow(procedural + 0x10, 4);
        for (std::uint32_t i = 0; i < count; ++i) {
            kinds.push_back(U32(kindTable + 4 * i));
            items.push_back(Follow(itemTable + 4 * i, 16));
        }
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::size_t next =
                i + 1 < items.size() ? items[i + 1] : Follow(procedural + 4, 16);
            Expect(Follow(items[i] + 4, 16) == next, "an item ends elsewhere");
        }
        inputs = ReadChannels(procedural + 0x14);
        outputs = ReadChannels(procedural + 0x1C);
        Expect(proceduralEnd == size, "the file goes on");
    }

    std::vector<std::uint32_t> kinds;
    std::vector<std::size_t> items;  // file positions
    std::vector<Channel> inputs, outputs;

    Keys ReadKeys(std::size_t item) const {
        const std::size_t at = items.at(item);
        Expect(Magic(at) == "DK04", "no driven keys");
        Keys keys;
        keys.objectCount = U32(at + 0x08);
        keys.drivenObjectCount = U32(at + 0x0C);
        const std::size_t axes = Follow(at + 0x14, 16);
        const std::size_t orients = Follow(at + 0x18, 16);
        for (std::size_t i = 0; i < (orients - axes) / 16; ++i) {
            const std::size_t object = Follow(at + 0x10, 16) + 4 * i;
            keys.objects.emplace_back(U16(object), U16(object + 2));
            keys.rotationAxes.push_back(Four(axes + 16 * i));
            keys.jointOrients.push_back(Four(orients + 16 * i));
        }
        for (std::uint32_t i = 0; i < U32(at + 0x1C); ++i)
            keys.outputs.push_back(ReadOutput(Follow(at + 0x20, 16) + 16 * i));
        return keys;
    }

    Constraints ReadConstraints(std::size_t item) const {
        const std::size_t at = items.at(item);
        Expect(Magic(at) == "JC01", "no constraints");
        Constraints constraints;
        std::size_t joint = Follow(at + 0x08, 16);
        for (std::uint32_t i = 0; i < U16(at + 0x0C); ++i, joint += 2)
            constraints.constrained.push_back(U16(joint));
        for (std::uint32_t i = 0; i < U16(at + 0x0E); ++i, joint += 2)
            constraints.targets.push_back(U16(joint));
        constraints.orientation = ReadItems(at + 0x10, at + 0x24, 0);
        constraints.translation = ReadItems(at + 0x14, at + 0x26, 4);
        constraints.scale = ReadItems(at + 0x18, at + 0x28, 4);
        constraints.aim = ReadItems(at + 0x1C, at + 0x2A, 16);
        constraints.parent = ReadItems(at + 0x20, at + 0x2C, 8);
        return constraints;
    }

    float F32(std::size_t at) const { return std::bit_cast<float>(U32(at)); }

  private:
    static void Expect(bool holds, const char* what) {
        if (!holds) throw std::runtime_error(what);
    }
    std::string Magic(std::size_t at) const { return text.substr(at, 4); }

    std::size_t Follow(std::size_t at, std::size_t alignment) const {
        const auto place = static_cast<std::size_t>(static_cast<std::int64_t>(at) + I32(at));
        Expect(place % alignment == 0 && place <= size, "bad offset");
        return place;
    }

    std::array<float, 4> Four(std::size_t at) const {
        return {F32(at), F32(at + 4), F32(at + 8), F32(at + 12)};
    }

    std::vector<Channel> ReadChannels(std::size_t at) const {
        std::vector<Channel> channels;
        const std::uint32_t count = U32(at);
        Expect((I32(at + 4) == 0) == (count == 0), "an offset without a table");
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::size_t channel = Follow(at + 4, 16) + 8 * i;
            channels.emplace_back(U32(channel), U32(channel + 4));
        }
        return channels;
    }

    Output ReadOutput(std::size_t at) const {
        Output output;
        for (std::uint32_t i = 0; i < U32(at); ++i)
            output.curves.push_back(ReadCurve(Follow(at + 4, 4) + 28 * i));
        Expect(U32(at + 8) == 1, "not one target");
        const std::size_t target = Follow(at + 12, 8);
        output.index = U32(target);
        output.type = U16(target + 4);
        output.component = U16(target + 6);
        return output;
    }

    Curve ReadCurve(std::size_t at) const {
        Curve curve;
        curve.inputIndex = U32(at);
        curve.inputType = U16(at + 4);
        curve.inputComponent = U16(at + 6);
        curve.firstTime = F32(at + 8);
        curve.lastTime = F32(at + 12);
        const std::uint32_t keyCount = U32(at + 16);
        for (std::uint32_t i = 0; i + 1 < keyCount; ++i)
            curve.coefficients.push_back(Four(Follow(at + 20, 16) + 16 * i));
        for (std::uint32_t i = 0; i < keyCount; ++i)
            curve.times.push_back(F32(Follow(at + 24, 4) + 4 * i));
        return curve;
    }

    std::vector<Item> ReadItems(std::size_t offset, std::size_t countAt, std::size_t words) const {
        std::vector<Item> list;
        for (std::uint32_t i = 0; i < U16(countAt); ++i) {
            const std::size_t at = Follow(offset, 16) + (16 + 4 * words) * i;
            Item item{U32(at), U32(at + 4), U32(at + 8), F32(at + 12), {}, 0, 0};
            const std::size_t floats = words == 16 ? 12 : words;
            for (std::size_t k = 0; k < floats; ++k) item.values.push_back(F32(at + 16 + 4 * k));
            if (words == 16) {
                item.worldUp = U16(at + 0x40);
                item.upObject = U16(at + 0x42);
                Expect(U32(at + 0x44) == 0 && U32(at + 0x48) == 0 && U32(at + 0x4C) == 0,
                       "reserved bytes");
            }
            list.push_back(item);
        }
        return list;
    }

    std::size_t size;
    std::string text;
};
