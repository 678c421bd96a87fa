#include <VokLib/Tree/ThrowVokException.h>

#include <VokLib/Links/VokPath.h>

#include <utility>

namespace {

std::string PathOf(const VokObj* object) {
    try {
        if (object != nullptr) return VokPath(object).GetText();
    } catch (...) {
    }
    return {};
}

}  // namespace

void ThrowVokException(std::string message, const VokObj* object,
                       const QelTools::Common::SourcePlace& place) {
    throw VokException(std::move(message), PathOf(object), place);
}
