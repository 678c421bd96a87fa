#include <VokLib/Library/VokObjConvert.h>

#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokObj.h>

#include <memory>

VokObjConvert::~VokObjConvert() noexcept(false) = default;

void VokObjConvert::RegisterDataCopier(VokTypeId target, VokTypeId source, DataCopier copier) {
    if (!copiers.try_emplace({target, source}, copier).second)
        ThrowVokException("Duplicate data copiers.");
}

void VokObjConvert::CopyData(VokObj& target, VokObj& source) const {
    target.GetCustomData() = source.GetCustomData();
    const auto copier = copiers.find({target.GetTypeId(), source.GetTypeId()});
    if (copier != copiers.end()) copier->second(target, source);
}

VokObj* VokObjConvert::Convert(VokObj* source, std::string_view targetType) {
    const VokFactory::Function make = VokFactory::FindFactory(targetType);
    if (make == nullptr)
        ThrowVokException("Failed to find factory to create a new object.", source);
    std::unique_ptr<VokObj> target(make());
    target->SetName(source->GetName());
    VokObj* parent = source->GetParent();
    if (parent != nullptr) parent->InsertChildBefore(target.get(), source);
    target->AdoptChildren(*source);
    try {
        CopyData(*target, *source);
        VokObjLinkStore::Get().SwapLinkTargets(source, target.get());
    } catch (...) {
        source->AdoptChildren(*target);
        if (parent != nullptr) parent->RemoveChild(target.get());
        throw;
    }
    if (parent != nullptr) parent->RemoveChild(source);
    delete source;
    return target.release();
}
