#include <VokLib/Document/VokParse.h>
#include <VokLib/Objects/Geometry/VokBlindData.h>
#include <VokLib/Text/VokFile.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <type_traits>
#include <utility>

namespace {

constexpr const char* kNotInt = "Attempt to set int blind data on non-int array";
constexpr const char* kNotFloat = "Attempt to set float blind data on non-float array";
constexpr const char* kNotBool = "Attempt to set bool blind data on non-bool array";

template <class T>
void Store(std::vector<T>& values, std::size_t index, T value) {
    if (index >= values.size()) values.resize(index + 1);
    values[index] = value;
}

}  // namespace

BlindDataBase::BlindDataBase(std::string columnName, BlindDataType columnType, const VokObj* table)
    : owner(table), name(std::move(columnName)), type(columnType) {}

BlindDataBase::~BlindDataBase() = default;

void BlindDataBase::SetInt(std::size_t, int) {
    ThrowVokException(kNotInt, owner);
}

void BlindDataBase::SetFloat(std::size_t, float) {
    ThrowVokException(kNotFloat, owner);
}

void BlindDataBase::SetBool(std::size_t, bool) {
    ThrowVokException(kNotBool, owner);
}

template <class T>
void BlindData<T>::SetInt(std::size_t index, int value) {
    if constexpr (std::is_same_v<T, int>)
        Store(values.Edit(), index, value);
    else
        BlindDataBase::SetInt(index, value);
}

template <class T>
void BlindData<T>::SetFloat(std::size_t index, float value) {
    if constexpr (std::is_same_v<T, float>)
        Store(values.Edit(), index, value);
    else
        BlindDataBase::SetFloat(index, value);
}

template <class T>
void BlindData<T>::SetBool(std::size_t index, bool value) {
    if constexpr (std::is_same_v<T, bool>)
        Store(values.Edit(), index, value);
    else
        BlindDataBase::SetBool(index, value);
}

template <class T>
void BlindData<T>::Read(VokParse& parse, long long count) {
    values.Read(parse, count);
}

template <class T>
void BlindData<T>::WriteValues(VokFile& file) const {
    for (const auto value : values.Get()) {
        if constexpr (std::is_same_v<T, int>)
            file.WriteInt(value);
        else if constexpr (std::is_same_v<T, float>)
            file.WriteFloat(value);
        else
            file.WriteBool(value);
    }
}

template class BlindData<int>;
template class BlindData<float>;
template class BlindData<bool>;
