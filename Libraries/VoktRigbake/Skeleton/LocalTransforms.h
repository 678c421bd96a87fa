#pragma once

struct SkeletonData;
class VokWorld;

/// Gives each joint of the list its transform relative to its parent: from the bind pose where that
/// has an element for the joint, else from the joint itself. The bind pose is the first pose
/// directly under `world` that is marked as one and has an element for any joint of the list.
void FillLocalTransforms(const VokWorld& world, SkeletonData& skeleton);
