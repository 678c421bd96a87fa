#pragma once

#include <QelTools/Singleton.h>
#include <VokLib/Base/VokTypeId.h>

#include <map>
#include <string_view>
#include <utility>

class VokObj;

/// Turns an object into an object of another type, in place. A concrete converter registers what it
/// knows to copy between pairs of types.
class VokObjConvert : public QelTools::Common::Singleton<VokObjConvert> {
  public:
    static const char* SingletonName() { return "VokObjConvert"; }

    /// Copies what the source's type holds; throws a VokException when the target cannot hold it.
    using DataCopier = void (*)(VokObj& target, VokObj& source);

    VokObjConvert() = default;
    virtual ~VokObjConvert() noexcept(false);

    /// Replaces `source` by a new object of the element type `targetType`, which takes over its
    /// name, place, children, custom data and the links that point at it; returns the new object
    /// and destroys `source`. A pair of types without a copier is no error. When it throws, the
    /// tree is as it was.
    VokObj* Convert(VokObj* source, std::string_view targetType);

  protected:
    /// A pair that is already there throws "Duplicate data copiers.".
    void RegisterDataCopier(VokTypeId target, VokTypeId source, DataCopier copier);

  private:
    void CopyData(VokObj& target, VokObj& source) const;

    std::map<std::pair<VokTypeId, VokTypeId>, DataCopier> copiers;  // by (target, source)
};
