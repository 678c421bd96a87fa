#pragma once

#include "Description.h"

#include <string>
#include <vector>

/// One thing that a run-time computes or needs for it, in the order of evaluation: a target of a
/// constraint, a curve of a driven channel, or the rotation of an object of driven keys.
struct EvaluationStep {
    /// What it is, by hashes: two channels may go by one name.
    std::string key;
    std::string what;        ///< the same for people: "aim of Eye by Hand"
    std::string numbers;     ///< "weight 1, offset (0, 0, 0, 0)"
    std::string exact = {};  ///< what the numbers say by a name, by hashes
    int item = 0;
    int group = 0;               ///< the item's constraint or output, -1 for its table of objects
    int place = 0;               ///< within the group
    std::string placeText = {};  ///< the three of them: "item 2, constraint 0, target 1"
};

std::vector<EvaluationStep> EvaluationSteps(const Description::Skeleton& skeleton);
