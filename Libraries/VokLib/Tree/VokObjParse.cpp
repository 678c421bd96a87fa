#include <VokLib/Base/VokLimits.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokObj.h>

#include <cstdint>
#include <memory>
#include <string>

namespace {

/// What becomes of an element that nobody knows: refused, or left out with everything in it.
constexpr bool kRefuseUnknownTags = true;

}  // namespace

void VokObj::ParseAttributes(VokParse& parse) {
    SetName(parse.GetAttributes().GetRequired("name"));
}

void VokObj::ParseStartTag(VokParse& parse) {
    if (const VokFactory::Function make =
            VokFactory::FindFactory(parse.GetTag(), parse.GetTagId())) {
        std::unique_ptr<VokObj> made(make());
        AddChild(made.get());
        // Parented before it reads its attributes, so that failures can tell its place.
        VokObj* child = made.release();
        child->ParseAttributes(parse);
        parse.PushNewObject(child);
    } else if (!ParseCustomData(parse)) {
        if (kRefuseUnknownTags)
            ThrowVokException("Unknown tag \"" + std::string(parse.GetTag()) + "\"", this);
        parse.Skip();
    }
}

void VokObj::ParseHeldObject(VokParse& parse, VokObj& held) {
    if (heldDepth >= VokLimits::kMaxHeldDepth)
        ThrowVokException("Blend targets and blind data are nested too deep: at most " +
                              std::to_string(VokLimits::kMaxHeldDepth) +
                              " may stand in one another.",
                          this);
    held.heldDepth = static_cast<std::uint16_t>(heldDepth + 1);
    held.ParseAttributes(parse);
    parse.PushNewObject(&held);
}

bool VokObj::ParseCustomData(VokParse& parse) {
    if (customData == nullptr) {
        if (!VokCustomData::IsBegin(parse.GetTag())) return false;
        customData = std::make_unique<VokCustomData>();
    }
    return customData->ParseStartTag(parse);
}

void VokObj::ParseData(VokParse& parse) {
    if (customData != nullptr && !customData->ParseData(parse))
        ThrowVokException("Unknown data", this);
}

void VokObj::ParseEndTag(VokParse& parse) {
    if (customData == nullptr) return;
    if (!customData->ParseEndTag(parse)) ThrowVokException("Unexpected end", this);
    if (!parse.KeepsContents()) DropIdleCustomData(parse);
}

/// A table of which everything was left out is not held on to.
void VokObj::DropIdleCustomData(VokParse& parse) {
    customDataLeftOut = customDataLeftOut || customData->HasLeftOut();
    if (parse.GetTag() == "customData" && customData->IsIdle()) customData.reset();
}
