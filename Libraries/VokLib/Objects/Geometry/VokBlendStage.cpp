#include <VokLib/Objects/Geometry/VokBlendStage.h>

#include <VokLib/Document/VokParse.h>
#include <VokLib/Objects/Geometry/VokBlendTarget.h>
#include <VokLib/Objects/Geometry/VokMultiBlendTarget.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokFactory.h>

#include <string>
#include <utility>

void ReadBlendStage(VokBlendStage& stage, VokParse& parse, VokObj& owner) {
    if (stage != nullptr) ThrowVokException("Internal error in blendshape parse", &owner);
    const VokFactory::Function factory = VokFactory::FindFactory(parse.GetTag(), parse.GetTagId());
    VokBlendStage made(factory == nullptr ? nullptr : factory());
    if (made == nullptr ||
        (!made->IsA(VokBlendTarget::TypeId()) && !made->IsA(VokMultiBlendTarget::TypeId())))
        ThrowVokException("Failed to find factory to instantiate blend target stage of type " +
                              std::string(parse.GetTag()),
                          &owner);
    stage = std::move(made);
    owner.ParseHeldObject(parse, *stage);
}
