#pragma once

#include "Procedural/Dependencies.h"

class ProceduralScene;
struct SkeletonData;

/// Driven keys read their input and drive what their anim targets; blends drive what they target. A
/// driven key whose input does not resolve has no relations at all.
void AddDrivenKeyDependencies(const ProceduralScene& scene, Dependencies& dependencies);

/// Constraints read their targets and drive what they constrain.
void AddConstraintDependencies(const ProceduralScene& scene, Dependencies& dependencies);

/// Refuses a joint that constraints and driven keys move, or two constraints of which none aims; of
/// two constraints one of which aims, that one comes last. More than two have no order. Throws a
/// QelTools Exception for the first such joint of the document.
void OrderConstraintsOfJoints(Dependencies& dependencies);

/// Aim constraints read their up objects. Throws a VokException for one that wants an up object and
/// names none.
void AddUpObjectDependencies(const ProceduralScene& scene, Dependencies& dependencies);

/// Joints follow their parents, so that what reads a joint waits for what moves its parent.
void AddParentDependencies(const SkeletonData& skeleton, Dependencies& dependencies);
