#pragma once

#include <AnimUtil/LeastSquares/FitEffort.h>
#include <VoktRigbake/Procedural/DrivenKeys.h>
#include <VoktRigbake/Procedural/ExternalChannels.h>
#include <VoktRigbake/Procedural/JointConstraints.h>

#include <variant>
#include <vector>

/// One step of the procedural evaluation. The index of what it holds is its kind in the file: 0
/// driven keys, 1 joint constraints.
using ProceduralItem = std::variant<DrivenKeys, JointConstraints>;

/// What moves joints beside animation, in the order in which a run-time has to evaluate it. Points
/// into the scene and must not outlive it.
struct ProceduralJoints {
    std::vector<ProceduralItem> items;
    ExternalChannels externalInputs;
    ExternalChannels externalOutputs;
    /// What making curves of all sampled driven keys has cost.
    Qel::LeastSquares::FitEffort fitEffort;
};
