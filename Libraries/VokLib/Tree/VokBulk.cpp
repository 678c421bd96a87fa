#include <VokLib/Tree/VokBulk.h>

#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/ThrowVokException.h>

namespace {

void ReadInto(std::vector<float>& values, VokParse& parse, long long count) {
    parse.ReadFloats(values, count);
}
void ReadInto(std::vector<int>& values, VokParse& parse, long long count) {
    parse.ReadInts(values, count);
}
void ReadInto(std::vector<unsigned>& values, VokParse& parse, long long count) {
    parse.ReadUnsigneds(values, count);
}
void ReadInto(std::vector<bool>& values, VokParse& parse, long long count) {
    parse.ReadBools(values, count);
}

}  // namespace

void ThrowNotLoaded(const VokObj* owner) {
    ThrowVokException("contents were not loaded", owner);
}

template <class T>
void VokBulk<T>::Read(VokParse& parse, long long count) {
    if (parse.KeepsContents()) {
        ReadInto(Edit(), parse, count);
        return;
    }
    LeaveOut();
    parse.SkipValues(count);
}

template class VokBulk<float>;
template class VokBulk<int>;
template class VokBulk<unsigned>;
template class VokBulk<bool>;
