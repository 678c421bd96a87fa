#pragma once

#include "Description.h"

#include <array>
#include <vector>

/// Where the joints of a bind pose stand, as a picture shows them.
struct Figure {
    std::vector<std::array<double, 3>> places;  ///< in the roots' space
    std::array<double, 3> low = {};             ///< the smallest box around all of them
    std::array<double, 3> high = {};
};

/// Places that are no finite numbers are put on the parent, or at the origin.
Figure PlaceJoints(const Description::Skeleton& skeleton);
