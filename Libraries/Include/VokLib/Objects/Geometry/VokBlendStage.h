#pragma once

#include <VokLib/Tree/VokObj.h>

#include <memory>

class VokParse;

/// What one step of a blend leads to: a blendtarget, or a multiBlendTarget with steps of its own.
/// It belongs to the object that holds it and is none of its children.
using VokBlendStage = std::unique_ptr<VokObj>;

/// Makes the stage that the current start tag names, lets it read its attributes and hands it the
/// parser. Throws "Failed to find factory to instantiate blend target stage of type " and the tag
/// for anything else, "Internal error in blendshape parse" when `stage` is there already, and where
/// stages are nested too deep.
void ReadBlendStage(VokBlendStage& stage, VokParse& parse, VokObj& owner);
