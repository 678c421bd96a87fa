#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <AnimUtil/LeastSquares/CurveFitter.h>

// Fits the samples on standard input and prints the curve, for scripts that draw it:
//
//     FitSamples TOLERANCE
//
// In: "sample TIME VALUE", "corner TIME VALUE" or "step TIME BEFORE AFTER" on each line.
// Out: start time, end time, start value, start tangent, end value and end tangent of each segment.

namespace {

using Qel::LeastSquares::CurveFitter;
using Qel::LeastSquares::CurveSegment;

void AddSamples(CurveFitter& fitter, std::istream& in) {
    std::string kind;
    float time = 0, value = 0, after = 0;
    while (in >> kind >> time >> value) {
        if (kind == "step" && in >> after)
            fitter.AddStep(time, {value}, {after});
        else if (kind == "corner")
            fitter.AddCorner(time, {value});
        else
            fitter.AddSample(time, {value});
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    try {
        CurveFitter fitter;
        fitter.SetComponentCount(1);
        fitter.SetTolerance(argumentCount > 1 ? std::strtof(arguments[1], nullptr) : 0.001f);
        AddSamples(fitter, std::cin);
        std::vector<CurveSegment> segments;
        fitter.Solve(segments);
        std::cout.precision(9);
        for (const CurveSegment& segment : segments)
            std::cout << segment.startTime << ' ' << segment.endTime << ' '
                      << segment.startPosition[0] << ' ' << segment.startTangent[0] << ' '
                      << segment.endPosition[0] << ' ' << segment.endTangent[0] << '\n';
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
