#pragma once

class VokAimConstraint;
class VokObj;

/// True for the world up methods that take an object's translation or rotation.
bool WantsUpObject(const VokAimConstraint& constraint);

/// The up object, or null.
VokObj* FindUpObject(const VokAimConstraint& constraint);
