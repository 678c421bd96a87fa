#include <VokLib/VokBlendStage.h>

#include <VokLib/VokBlendTarget.h>
#include <VokLib/VokException.h>
#include <VokLib/VokFactory.h>
#include <VokLib/VokLimits.h>
#include <VokLib/VokMultiBlendTarget.h>
#include <VokLib/VokParse.h>

#include <string>

void ReadBlendStage(VokBlendStage& stage, VokParse& parse, int depth, const VokObj* owner) {
    const VokFactory::Function factory = VokFactory::FindFactory(parse.GetTag(), parse.GetTagId());
    VokBlendStage made(factory == nullptr ? nullptr : factory());
    auto* multi = dynamic_cast<VokMultiBlendTarget*>(made.get());
    if (multi == nullptr && dynamic_cast<VokBlendTarget*>(made.get()) == nullptr)
        ThrowVokException("Failed to find factory to instantiate blend target stage of type " +
                              std::string(parse.GetTag()),
                          owner);
    // Stages are destroyed and written one inside the other.
    if (depth >= VokLimits::kMaxBlendStageDepth)
        ThrowVokException("Blend targets are nested too deep: at most " +
                              std::to_string(VokLimits::kMaxBlendStageDepth) +
                              " may stand in one another.",
                          owner);
    if (multi != nullptr) multi->nesting = depth;
    stage = std::move(made);
    stage->ParseAttributes(parse);
    parse.PushNewObject(stage.get());
}
