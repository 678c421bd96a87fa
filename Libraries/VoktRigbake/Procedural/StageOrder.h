#pragma once

#include "Procedural/Dependencies.h"

#include <vector>

/// What a stage may hold.
enum class StageClass { Channels, Constraints, Blends };

/// Objects of one class that do not depend on each other, in document order; never empty.
struct Stage {
    StageClass objectClass = StageClass::Channels;
    std::vector<const VokObj*> objects;
};

/// Puts the channels, constraints and blends among the objects of `dependencies` into stages, in
/// the order in which they can be evaluated: pass by pass all other objects that are ready are done
/// with first, else all channels that are ready become a stage, else all constraints, else all
/// blends. The cost is near linear in the relations.
///
/// Throws a QelTools Exception "Circular dependencies in the procedural joint DAG (constraints &
/// driven keys) can not be handled." when nothing is ready; an object that depends on itself never
/// is.
std::vector<Stage> OrderStages(const Dependencies& dependencies);
