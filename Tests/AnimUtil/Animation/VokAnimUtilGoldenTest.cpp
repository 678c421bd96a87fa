#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimDiscontinuities.h>

#include <VokLib/Base/VokException.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "AnimUtil/ChannelTestTools.h"
#include "AnimUtil/GoldenText.h"

namespace VokAnimUtil {
namespace {

/// A channel as its lines in the file describe it; each thing that is done starts from a new one.
std::unique_ptr<VokAnimChannel> MakeGoldenChannel(const std::vector<GoldenLine>& lines) {
    auto channel = std::make_unique<VokAnimChannel>();
    VokAnimDiscontinuities* marks = nullptr;
    for (const GoldenLine& line : lines) {
        if (line[0] == "channel") {
            channel->interp = *FindAnimInterp(line[1]);
            channel->SetKeyStride(static_cast<unsigned>(std::stoul(line[2])));
            channel->numKeys = static_cast<unsigned>(std::stoul(line[3]));
        } else if (line[0] == "duration") {
            channel->SetDuration(FromBits(line[1]));
        } else if (line[0] == "offset") {
            channel->timeOffset = FromBits(line[1]);
        } else if (line[0] == "times") {
            channel->keyTimes = FromBits(line, 1);
        } else if (line[0] == "values") {
            channel->keyValues = FromBits(line, 1);
        } else if (line[0] == "tangents") {
            channel->tangents[0] = FromBits(line, 1);
        } else {
            if (marks == nullptr) {
                marks = new VokAnimDiscontinuities;
                channel->AddChild(marks);
                marks->SetComponentCount(channel->GetKeyStride());
            }
            const bool isStep = line[0] == "step";
            using Kind = VokAnimDiscontinuities::Kind;
            const std::size_t mark = marks->GetCount();
            marks->Add(isStep ? Kind::Step : Kind::Corner, FromBits(line[1]));
            const std::vector<float> values = FromBits(line, 2);
            const auto middle =
                values.begin() + static_cast<std::ptrdiff_t>(channel->GetKeyStride());
            std::copy(values.begin(), middle, marks->GetBefore(mark).begin());
            std::copy(middle, values.end(), marks->GetAfter(mark).begin());
        }
    }
    return channel;
}

using Text = std::vector<std::string>;

void AppendValues(Text& text, const char* name, const std::vector<float>& values) {
    if (values.empty()) return;
    text.emplace_back(name);
    for (const float value : values) text.back() += ' ' + ToBits(value);
}

Text Describe(const VokAnimChannel& channel) {
    Text text{std::string(GetAnimInterpText(channel.interp)) + ' ' +
              std::to_string(channel.GetKeyStride()) + ' ' + std::to_string(channel.numKeys)};
    if (channel.interp == AnimInterp::Timestep)
        AppendValues(text, "duration", {channel.GetDuration()});
    AppendValues(text, "times", channel.keyTimes);
    AppendValues(text, "values", channel.keyValues);
    AppendValues(text, "tangents", channel.tangents[0]);
    EXPECT_TRUE(channel.tangents[1].empty());
    return text;
}

Text EvaluateAll(const VokAnimChannel& channel, const GoldenLine& work, bool hinted) {
    Text text;
    unsigned hint = 0;
    for (const float time : FromBits(work, 2)) {
        std::array<float, 8> values{};
        std::string line = ToBits(time);
        try {
            Evaluate(values.data(), channel, time, hinted ? &hint : nullptr);
            for (unsigned c = 0; c < GetComponentCount(channel); ++c)
                line += ' ' + ToBits(values[c]);
        } catch (const VokException& caught) {
            EXPECT_STREQ(caught.what(),
                         "Failed to find key index when evaluating animation value.");
            line += " fails";
        }
        text.push_back(hinted ? line + " hint " + std::to_string(hint) : line);
    }
    return text;
}

Text TransformAlone(std::unique_ptr<VokAnimChannel> channel, const std::string& text) {
    const auto anim = std::make_unique<VokAnim>();
    channel->SetChannel(text);
    anim->AddChild(channel.get());
    const VokAnimChannel& held = *channel.release();
    Transform(*anim);
    return Describe(held);
}

Text Do(const GoldenLine& work, const std::vector<GoldenLine>& lines) {
    auto channel = MakeGoldenChannel(lines);
    try {
        if (work[1] == "evaluate") return EvaluateAll(*channel, work, false);
        if (work[1] == "evaluate_hinted") return EvaluateAll(*channel, work, true);
        if (work[1] == "transform") return TransformAlone(std::move(channel), work[2]);
        if (work[1] == "convert")
            ConvertTypeIfNeeded(*channel, *FindAnimInterp(work[2]), nullptr);
        else if (work[1] == "resample")
            ResampleToTimestep(*channel, *channel, FromBits(work[2]));
        else
            ConvertTimestepToQelHermite(*channel, *channel, FromBits(work[2]), work[3] == "1",
                                        work[4] == "1", std::stoi(work[5]));
    } catch (const std::exception& caught) {
        return {caught.what()};
    }
    return Describe(*channel);
}

TEST(GoldenChannels, EveryChannelIsEvaluatedAndConvertedToTheBit) {
    const std::vector<GoldenLine> all = ReadGoldenLines("converted-channels.txt");
    std::string name;
    std::vector<GoldenLine> channel;
    std::size_t count = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i][0] == "case") {
            name = all[i][1];
        } else if (all[i][0] != "do") {
            if (all[i][0] == "channel") channel.clear();
            channel.push_back(all[i]);
        } else {
            const GoldenLine& work = all[i];
            Text wanted;
            for (; i + 1 < all.size() && (all[i + 1][0] == "=" || all[i + 1][0] == "!"); ++i)
                wanted.push_back(JoinWords(all[i + 1], 1));
            EXPECT_EQ(Do(work, channel), wanted) << name << ": " << JoinWords(work, 1);
            ++count;
        }
    }
    EXPECT_GE(count, 90u);
}

}  // namespace
}  // namespace VokAnimUtil
