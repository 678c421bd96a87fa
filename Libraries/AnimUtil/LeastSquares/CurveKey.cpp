#include "LeastSquares/CurveKey.h"

namespace Qel::LeastSquares {

void KeyList::Append(int sample) {
    const CurveSample& source = (*samples)[static_cast<std::size_t>(sample)];
    CurveKey key;
    key.sample = sample;
    key.previous = last;
    key.positionBefore = source.positionBefore;
    key.tangentBefore = source.tangentBefore;
    key.positionAfter = source.positionAfter;
    key.tangentAfter = source.tangentAfter;
    const int index = static_cast<int>(keys.size());
    keys.push_back(key);
    if (last != -1) At(last).next = index;
    if (first == -1) first = index;
    last = index;
}

void KeyList::Unlink(int key) {
    At(At(key).previous).next = At(key).next;
    At(At(key).next).previous = At(key).previous;
}

void KeyList::Relink(int key) {
    At(At(key).previous).next = key;
    At(At(key).next).previous = key;
}

bool KeyList::AreApart(int a, int b) const {
    return At(b).sample == At(a).sample + 1 && SampleAt(b).positionContinuous &&
           SampleAt(b).tangentContinuous;
}

CurveSegment KeyList::SegmentBetween(int a, int b) const {
    return {SampleAt(a).time,   SampleAt(b).time,     At(a).positionAfter,
            At(a).tangentAfter, At(b).positionBefore, At(b).tangentBefore};
}

std::size_t KeyList::CountSegments() const {
    std::size_t count = 0;
    for (int key = first; key != last; key = At(key).next) ++count;
    return count;
}

}  // namespace Qel::LeastSquares
