#pragma once

#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokObj.h>

/// The checked downcast: null stays null; an object that is no `T` throws a VokException "vok_cast
/// failed" with the object's path. `T::TypeId()` names the type.
template <class T>
T* vok_cast(VokObj* object,
            const QelTools::Common::SourcePlace& place = QelTools::Common::SourcePlace::Current()) {
    if (object == nullptr) return nullptr;
    if (!object->IsA(T::TypeId())) ThrowVokException("vok_cast failed", object, place);
    return static_cast<T*>(object);
}

/// `object` as a `T` when it is exactly of that type, else null.
template <class T>
T* ExactCast(VokObj* object) {
    return object != nullptr && object->IsExactly(T::TypeId()) ? static_cast<T*>(object) : nullptr;
}
template <class T>
const T* ExactCast(const VokObj* object) {
    return object != nullptr && object->IsExactly(T::TypeId()) ? static_cast<const T*>(object)
                                                               : nullptr;
}
