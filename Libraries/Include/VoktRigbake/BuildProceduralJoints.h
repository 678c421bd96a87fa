#pragma once

#include <memory>

struct ProceduralJoints;
struct SkeletonData;
class VokWorld;
class VoktRigbake;

/// Gathers the driven keys and the joint constraints of `world` that the component's flags ask for,
/// and orders them so that nothing is read before it is up to date. Driven channels become QELCurve
/// in place. With the component's debug flag the stages are printed to standard output, and a graph
/// of all relations is drawn and shown where Graphviz is installed.
///
/// Null when there is nothing. Throws a QelTools Exception or a VokException for relations that
/// have no order, and what DrivenKeys and JointConstraints throw.
std::unique_ptr<ProceduralJoints> BuildProceduralJoints(const VoktRigbake& component,
                                                        VokWorld& world,
                                                        const SkeletonData& skeleton);
