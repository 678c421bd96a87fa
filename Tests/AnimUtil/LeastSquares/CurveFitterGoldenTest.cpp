#include <AnimUtil/LeastSquares/CurveFitter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "AnimUtil/GoldenText.h"

namespace Qel::LeastSquares {
namespace {

/// One series of samples and what a model of the fitter, which shares no code with it, fits to it.
struct GoldenCurve {
    std::string name;
    CurveFitter fitter;
    std::size_t width = 0;  // values given for each sample
    std::vector<std::string> result;
};

CurveSample MakeSample(const GoldenLine& line, std::size_t width) {
    const char kind = line[0][0];
    const std::vector<float> values = FromBits(line, 2);
    CurveSample sample;
    sample.time = FromBits(line[1]);
    sample.soft = kind == 'f' || kind == 'g' || kind == 'h';
    sample.positionContinuous = kind != 's' && kind != 'h';
    sample.tangentContinuous = kind == 'p' || kind == 'f';
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(width);
    Components before{}, after{};
    std::copy(values.begin(), middle, before.begin());
    if (middle == values.end())
        after = before;
    else
        std::copy(middle, values.end(), after.begin());
    sample.SetPosition(before, after);
    return sample;
}

std::vector<GoldenCurve> ReadGoldenCurves() {
    std::vector<GoldenCurve> curves;
    for (const GoldenLine& line : ReadGoldenLines("fitted-curves.txt")) {
        if (line[0] == "curve") {
            curves.emplace_back();
            curves.back().name = line[1];
            continue;
        }
        GoldenCurve& curve = curves.back();
        if (line[0] == "settings") {
            curve.fitter.SetTolerance(FromBits(line[1]));
            curve.fitter.SetLooping(line[2] == "1");
            curve.fitter.SetComponentCount(std::stoi(line[3]));
            curve.fitter.SetMaxSolverComplexity(std::stoi(line[4]));
            curve.width = std::stoul(line[5]);
        } else if (line[0] == "=" || line[0] == "!") {
            curve.result.push_back(JoinWords(line, 1));
        } else {
            curve.fitter.AddSample(MakeSample(line, curve.width));
        }
    }
    return curves;
}

std::string TextOf(const CurveSegment& segment, std::size_t width) {
    std::string text = ToBits(segment.startTime) + ' ' + ToBits(segment.endTime);
    for (const Components* part :
         {&segment.startPosition, &segment.startTangent, &segment.endPosition, &segment.endTangent})
        for (std::size_t c = 0; c < width; ++c) text += ' ' + ToBits((*part)[c]);
    return text;
}

std::vector<std::string> Fit(GoldenCurve& curve) {
    std::vector<std::string> result;
    std::vector<CurveSegment> segments;
    try {
        curve.fitter.Solve(segments);
    } catch (const Error& error) {
        return {error.what()};
    }
    for (const CurveSegment& segment : segments) result.push_back(TextOf(segment, curve.width));
    return result;
}

TEST(GoldenCurves, EveryCurveIsFittedToTheBit) {
    std::vector<GoldenCurve> curves = ReadGoldenCurves();
    EXPECT_GE(curves.size(), 80u);
    for (GoldenCurve& curve : curves) EXPECT_EQ(Fit(curve), curve.result) << curve.name;
}

}  // namespace
}  // namespace Qel::LeastSquares
