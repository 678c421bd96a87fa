#include "Figure.h"

#include <algorithm>
#include <cmath>

using Description::Joint;

namespace {

using Vector = std::array<double, 3>;

/// What takes a point from a joint's space to the roots': three axes and a place.
struct Frame {
    std::array<Vector, 3> axes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    Vector place = {};
};

Vector Apply(const Frame& frame, const Vector& point) {
    Vector result = frame.place;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k) result[k] += point[i] * frame.axes[i][k];
    return result;
}

/// The rows of a rotation, so that a row vector times them is turned.
std::array<Vector, 3> RotationRows(const Description::Four& q) {
    const double x = q[0], y = q[1], z = q[2], w = q[3];
    return {{{1 - 2 * y * y - 2 * z * z, 2 * x * y + 2 * w * z, 2 * x * z - 2 * w * y},
             {2 * x * y - 2 * w * z, 1 - 2 * x * x - 2 * z * z, 2 * y * z + 2 * w * x},
             {2 * x * z + 2 * w * y, 2 * y * z - 2 * w * x, 1 - 2 * x * x - 2 * y * y}}};
}

/// Scale, rotation, the inverse of the parent's scale where the joint compensates, translation.
Frame FrameOf(const Joint& joint, const Joint* parentJoint, const Frame& parent) {
    const bool compensates = joint.scaleCompensate && parentJoint != nullptr;
    std::array<Vector, 3> rows = RotationRows(joint.rotation);
    Frame local;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            rows[i][k] *= static_cast<double>(joint.scale[i]);
            if (compensates) rows[i][k] /= static_cast<double>(parentJoint->scale[k]);
        }
        local.place[i] = static_cast<double>(joint.translation[i]);
    }
    Frame frame;
    const Frame turn{parent.axes, {}};
    for (std::size_t i = 0; i < 3; ++i) frame.axes[i] = Apply(turn, rows[i]);
    frame.place = Apply(parent, local.place);
    return frame;
}

bool IsFinite(const Vector& vector) {
    return std::all_of(vector.begin(), vector.end(), [](double x) { return std::isfinite(x); });
}

bool IsFinite(const Frame& frame) {
    return IsFinite(frame.place) && std::all_of(frame.axes.begin(), frame.axes.end(),
                                                [](const Vector& axis) { return IsFinite(axis); });
}

}  // namespace

Figure PlaceJoints(const Description::Skeleton& skeleton) {
    Figure figure;
    std::vector<Frame> frames;
    for (const Joint& joint : skeleton.joints) {
        const auto parent = static_cast<std::size_t>(joint.parent);
        const Joint* parentJoint = joint.parent < 0 ? nullptr : &skeleton.joints[parent];
        const Frame above = joint.parent < 0 ? Frame() : frames[parent];
        const Frame frame = FrameOf(joint, parentJoint, above);
        frames.push_back(IsFinite(frame) ? frame : above);
        figure.places.push_back(frames.back().place);
    }
    figure.low = figure.high = figure.places.front();
    for (const Vector& place : figure.places)
        for (std::size_t i = 0; i < 3; ++i) {
            figure.low[i] = std::min(figure.low[i], place[i]);
            figure.high[i] = std::max(figure.high[i], place[i]);
        }
    return figure;
}
