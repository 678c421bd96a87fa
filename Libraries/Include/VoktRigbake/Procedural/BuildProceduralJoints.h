#pragma once

#include <memory>

struct ProceduralJoints;
struct SkeletonData;
class VokWorld;

/// What the user asked for.
struct ProceduralOptions {
    bool drivenKeys = true;
    bool jointConstraints = false;
    /// Prints the stages to standard output, and draws and shows a graph of all relations where
    /// Graphviz is installed.
    bool debugDependencies = false;
};

/// Gathers the driven keys and the joint constraints of `world` that `options` ask for,
/// and orders them so that nothing is read before it is up to date. Driven channels become QELCurve
/// in place.
///
/// Null when there is nothing. Throws a QelTools Exception or a VokException for relations that
/// have no order, and what DrivenKeys and JointConstraints throw.
[[nodiscard]] std::unique_ptr<ProceduralJoints> BuildProceduralJoints(
    const ProceduralOptions& options, VokWorld& world, const SkeletonData& skeleton);
