#pragma once

#include <AnimUtil/LeastSquares/CurveSample.h>
#include <AnimUtil/LeastSquares/CurveSegment.h>

#include <array>
#include <cstddef>
#include <vector>

namespace Qel::LeastSquares {

/// A key of the curve while it is fitted: it stands on one of the samples and is linked to its
/// neighbours by their places in the list, -1 for none.
struct CurveKey {
    int sample = 0;
    int previous = -1;
    int next = -1;
    int silentSpan = -1;  ///< which of SilentSpans solved it last, -1 for none
    bool solved = false;  ///< an unknown of the current local solve
    std::array<int, 4>
        indices{};  ///< variables of position before, tangent before, position after, tangent after
    Components positionBefore{};
    Components tangentBefore{};
    Components positionAfter{};
    Components tangentAfter{};
};

/// All keys, in order of time; a removed key is unlinked and keeps its place.
struct KeyList {
    std::vector<CurveSample>* samples = nullptr;
    std::vector<CurveKey> keys;
    int first = -1;
    int last = -1;

    void Append(int sample);
    void Unlink(int key);
    /// Puts a key back between the neighbours that it names.
    void Relink(int key);
    CurveKey& At(int key) { return keys[static_cast<std::size_t>(key)]; }
    const CurveKey& At(int key) const { return keys[static_cast<std::size_t>(key)]; }
    const CurveSample& SampleAt(int key) const {
        return (*samples)[static_cast<std::size_t>(At(key).sample)];
    }
    /// Whether neighbours stand on neighbouring samples and the curve runs through the second one:
    /// no sample between them then has to do with both.
    bool AreApart(int a, int b) const;
    CurveSegment SegmentBetween(int a, int b) const;
    std::size_t CountSegments() const;
};

}  // namespace Qel::LeastSquares
