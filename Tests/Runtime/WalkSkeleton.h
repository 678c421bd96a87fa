#pragma once

#include <skeleton/skeleton.h>

/// Asks a verified skeleton for everything that the run-time header can tell, one past each end
/// included, without a check of its own. The sum keeps the compiler from leaving anything out.
inline double WalkSkeleton(const skeleton_header& header) {
    double sum = 0;
    const auto add = [&sum](const float* numbers, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) sum += static_cast<double>(numbers[i]);
    };
    const std::uint32_t rows = skeleton_lod_count(&header);
    for (std::uint32_t joint = 0; joint < header.joint_count; ++joint) {
        add(skeleton_transforms(&header)[joint].rotation, 12);
        std::uint32_t above = joint;
        for (int steps = 0; steps < 4 && above != SKELETON_NO_JOINT; ++steps)
            above = skeleton_joints(&header)[above].parent;
        for (std::uint32_t child = skeleton_joints(&header)[joint].first_child;
             child != SKELETON_NO_JOINT; child = skeleton_joints(&header)[child].next_sibling)
            sum += child;
        for (std::uint32_t row = 0; row <= rows; ++row)
            sum += skeleton_lod_stand_in(&header, row, joint);
    }
    for (std::uint32_t row = 0; row <= rows; ++row) sum += skeleton_lod_limit(&header, row);
    for (std::uint32_t hash : {0u, 1u, 0x811C56D0u, 0xFFFFFFFFu})
        sum += skeleton_find_joint(&header, hash);

    const skeleton_procedural* procedural = skeleton_find_procedural(&header);
    for (std::uint32_t item = 0; item <= skeleton_item_count(procedural); ++item) {
        if (const auto* keys = skeleton_item_driven_keys(procedural, item)) {
            skeleton_driven_rotation rotation;
            for (std::uint32_t i = 0; i <= skeleton_driven_row_count(keys); ++i)
                if (skeleton_find_driven_rotation(keys, i, &rotation) != 0) {
                    sum += skeleton_joints(&header)[rotation.joint].flags;
                    add(rotation.rotation_axis, 4);
                    add(rotation.joint_orient, 4);
                }
            for (std::uint32_t i = 0; i < keys->output_count; ++i) {
                const skeleton_driven_output* output = skeleton_driven_output_at(keys, i);
                sum += skeleton_driven_target_of(output)->index;
                for (std::uint32_t k = 0; k < output->curve_count; ++k) {
                    const skeleton_driven_curve* curve = skeleton_driven_curve_at(output, k);
                    for (const float input :
                         {-1e30f, curve->first_time, 0.0f, curve->last_time, 1e30f})
                        for (std::uint32_t clamp = 0; clamp <= SKELETON_CLAMP_BOTH; ++clamp)
                            sum += static_cast<double>(skeleton_driven_value(curve, input, clamp));
                    skeleton_hermite hermite;
                    for (std::uint32_t segment = 0; segment < curve->key_count; ++segment)
                        if (skeleton_driven_hermite(curve, segment, &hermite) != 0)
                            sum += static_cast<double>(hermite.end_slope);
                }
            }
        }
        if (const auto* constraints = skeleton_item_constraints(procedural, item)) {
            const auto addJoint = [&](std::uint32_t slot) {
                const std::uint32_t joint = skeleton_slot_joint(constraints, slot);
                if (joint != SKELETON_NO_JOINT) sum += skeleton_joints(&header)[joint].parent;
            };
            for (std::uint32_t i = 0; i < constraints->orientation_count; ++i)
                addJoint(skeleton_orientations(constraints)[i].constrained);
            for (std::uint32_t i = 0; i < constraints->translation_count; ++i)
                add(skeleton_translations(constraints)[i].offset, 4);
            for (std::uint32_t i = 0; i < constraints->scale_count; ++i)
                add(skeleton_scales(constraints)[i].offset, 4);
            for (std::uint32_t i = 0; i < constraints->aim_count; ++i) {
                addJoint(skeleton_aims(constraints)[i].up_object);
                add(skeleton_aims(constraints)[i].global_up, 4);
            }
            for (std::uint32_t i = 0; i < constraints->parent_count; ++i) {
                addJoint(skeleton_parents(constraints)[i].common.target);
                add(skeleton_parents(constraints)[i].rotation, 4);
            }
        }
    }
    return sum;
}
