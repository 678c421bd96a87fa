/* A block of driven keys: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_DRIVEN_H
#define SKELETON_VERIFY_DRIVEN_H

#include "skeleton_check.h"

/* A block's tables in the order in which they stand. */
typedef struct skeleton_driven_layout_ {
    uint64_t at, end;
    uint64_t objects, rotation_axes, joint_orients;
    uint64_t outputs, curves, targets, coefficients, times;
    uint32_t row_count, object_count, driven_count, output_count;
    uint32_t external_input_count, external_output_count;
} skeleton_driven_layout_;

static inline uint64_t skeleton_driven_field_(const skeleton_driven_layout_* block, size_t field) {
    return block->at + field;
}

/* The header, and the tables of objects, whose rows are counted by the distance between the last
 * two. */
static inline int skeleton_check_driven_objects_(skeleton_check_* check,
                                                 skeleton_driven_layout_* block) {
    const uint64_t axes_field =
        skeleton_driven_field_(block, offsetof(skeleton_driven_keys, rotation_axes));
    const uint64_t orients_field =
        skeleton_driven_field_(block, offsetof(skeleton_driven_keys, joint_orients));
    const int64_t rows =
        (skeleton_target_(check, orients_field) - skeleton_target_(check, axes_field)) / 16;
    uint64_t objects_end, rows_bytes;
    if (rows < 0 || rows > block->object_count)
        return skeleton_refuse_(
            check, orients_field,
            "joint_orients stands %s%lu rows behind rotation_axes, not 0 to %lu",
            rows < 0 ? "-" : "", SKELETON_U_(rows < 0 ? -rows : rows),
            SKELETON_U_(block->object_count));
    block->row_count = SKELETON_CAST(uint32_t, rows);
    rows_bytes = 16 * SKELETON_CAST(uint64_t, block->row_count);
    block->objects = skeleton_align_(block->at + sizeof(skeleton_driven_keys));
    objects_end =
        block->objects + sizeof(skeleton_driven_object) * SKELETON_CAST(uint64_t, block->row_count);
    block->rotation_axes = skeleton_align_(objects_end);
    block->joint_orients = block->rotation_axes + rows_bytes;
    block->outputs = block->joint_orients + rows_bytes;
    if (!skeleton_check_table_(
            check, skeleton_driven_field_(block, offsetof(skeleton_driven_keys, objects)),
            block->at + sizeof(skeleton_driven_keys), block->objects, objects_end - block->objects,
            block->end, "objects") ||
        !skeleton_check_table_(check, axes_field, objects_end, block->rotation_axes, rows_bytes,
                               block->end, "rotation_axes") ||
        !skeleton_check_table_(check, orients_field, block->joint_orients, block->joint_orients,
                               rows_bytes, block->end, "joint_orients"))
        return 0;
    for (uint32_t i = 0; i < block->row_count; ++i) {
        const uint64_t at =
            block->objects + sizeof(skeleton_driven_object) * SKELETON_CAST(uint64_t, i);
        const uint32_t order = skeleton_u16_(check, at);
        const uint32_t joint = skeleton_u16_(check, at + offsetof(skeleton_driven_object, joint));
        const uint32_t joint_count = skeleton_u16_(check, offsetof(skeleton_header, joint_count));
        if (order > 5)
            return skeleton_refuse_(check, at, "objects[%lu].rotation_order is %lu, above 5",
                                    SKELETON_U_(i), SKELETON_U_(order));
        if (joint >= joint_count)
            return skeleton_refuse_(check, at + offsetof(skeleton_driven_object, joint),
                                    "objects[%lu].joint is %lu, not below %lu", SKELETON_U_(i),
                                    SKELETON_U_(joint), SKELETON_U_(joint_count));
    }
    for (uint64_t at = block->rotation_axes; at < block->outputs; at += 4)
        if (skeleton_is_nan_(check, at)) {
            const int is_axis = at < block->joint_orients;
            const uint64_t element =
                (at - (is_axis ? block->rotation_axes : block->joint_orients)) / 4;
            return skeleton_refuse_(check, at, "%s[%lu][%lu] is not a number",
                                    is_axis ? "rotation_axes" : "joint_orients",
                                    SKELETON_U_(element / 4), SKELETON_U_(element % 4));
        }
    return 1;
}

/* What an index beside a channel's type must stay below. */
static inline uint32_t skeleton_channel_room_(const skeleton_check_* check,
                                              const skeleton_driven_layout_* block, uint32_t type,
                                              int is_input) {
    if (type == SKELETON_CHANNEL_ROTATION)
        return is_input ? block->object_count : block->driven_count;
    if (type == SKELETON_CHANNEL_EXTERNAL)
        return is_input ? block->external_input_count : block->external_output_count;
    return skeleton_u16_(check, offsetof(skeleton_header, joint_count));
}

/* Index, type and component, which stand side by side in an input as in a target. */
static inline int skeleton_check_channel_(skeleton_check_* check,
                                          const skeleton_driven_layout_* block, uint64_t at,
                                          int is_input, const char* field, uint32_t output,
                                          uint32_t curve) {
    const uint32_t index = skeleton_u32_(check, at);
    const uint32_t type = skeleton_u16_(check, at + 4);
    const uint32_t component = skeleton_u16_(check, at + 6);
    const uint32_t most_component = type != SKELETON_CHANNEL_EXTERNAL ? 2 : is_input ? 0 : 3;
    uint32_t room;
    if (type > SKELETON_CHANNEL_EXTERNAL)
        return skeleton_refuse_(check, at + 4, "outputs[%lu].%s[%lu].%stype is %lu, above 3",
                                SKELETON_U_(output), field, SKELETON_U_(curve),
                                is_input ? "input_" : "", SKELETON_U_(type));
    room = skeleton_channel_room_(check, block, type, is_input);
    if (index >= room)
        return skeleton_refuse_(check, at, "outputs[%lu].%s[%lu].%sindex is %lu, not below %lu",
                                SKELETON_U_(output), field, SKELETON_U_(curve),
                                is_input ? "input_" : "", SKELETON_U_(index), SKELETON_U_(room));
    if (component > most_component)
        return skeleton_refuse_(check, at + 6, "outputs[%lu].%s[%lu].%scomponent is %lu, above %lu",
                                SKELETON_U_(output), field, SKELETON_U_(curve),
                                is_input ? "input_" : "", SKELETON_U_(component),
                                SKELETON_U_(most_component));
    return 1;
}

/* The table of outputs leads to the curves and the targets, which stand in its order. */
static inline int skeleton_check_driven_outputs_(skeleton_check_* check,
                                                 skeleton_driven_layout_* block) {
    const uint64_t outputs_bytes =
        sizeof(skeleton_driven_output) * SKELETON_CAST(uint64_t, block->output_count);
    uint64_t curve;
    if (block->output_count == 0)
        return skeleton_refuse_(
            check, skeleton_driven_field_(block, offsetof(skeleton_driven_keys, output_count)),
            "output_count is 0");
    if (!skeleton_check_table_(
            check, skeleton_driven_field_(block, offsetof(skeleton_driven_keys, outputs)),
            block->outputs, block->outputs, outputs_bytes, block->end, "outputs"))
        return 0;
    block->curves = skeleton_align_(block->outputs + outputs_bytes);
    curve = block->curves;
    for (uint32_t i = 0; i < block->output_count; ++i) {
        const uint64_t at =
            block->outputs + sizeof(skeleton_driven_output) * SKELETON_CAST(uint64_t, i);
        const uint32_t count = skeleton_u32_(check, at);
        const uint64_t bytes = sizeof(skeleton_driven_curve) * SKELETON_CAST(uint64_t, count);
        if (count == 0)
            return skeleton_refuse_(check, at, "outputs[%lu].curve_count is 0", SKELETON_U_(i));
        if (!skeleton_check_table_(check, at + offsetof(skeleton_driven_output, curves), curve,
                                   curve, bytes, block->end, "outputs.curves"))
            return 0;
        curve += bytes;
    }
    block->targets = skeleton_align_(curve);
    block->coefficients =
        skeleton_align_(block->targets + sizeof(skeleton_driven_target) *
                                             SKELETON_CAST(uint64_t, block->output_count));
    if (block->coefficients > block->end)
        return skeleton_refuse_(check, block->at, "the targets go on beyond the end at 0x%04lX",
                                SKELETON_U_(block->end));
    return skeleton_check_padding_(check, block->outputs + outputs_bytes, block->curves,
                                   "curves") &&
           skeleton_check_padding_(check, curve, block->targets, "targets");
}

/* Driven objects come first, in the order of the outputs that drive them. */
static inline int skeleton_check_driven_targets_(skeleton_check_* check,
                                                 skeleton_driven_layout_* block) {
    const uint64_t size = sizeof(skeleton_driven_target);
    uint32_t driven = 0;
    for (uint32_t i = 0; i < block->output_count; ++i) {
        const uint64_t output =
            block->outputs + sizeof(skeleton_driven_output) * SKELETON_CAST(uint64_t, i);
        const uint64_t at = block->targets + size * i;
        const uint32_t count =
            skeleton_u32_(check, output + offsetof(skeleton_driven_output, target_count));
        if (count != 1)
            return skeleton_refuse_(check, output + offsetof(skeleton_driven_output, target_count),
                                    "outputs[%lu].target_count is %lu, not 1", SKELETON_U_(i),
                                    SKELETON_U_(count));
        if (!skeleton_check_table_(check, output + offsetof(skeleton_driven_output, targets), at,
                                   at, size, block->end, "outputs.targets") ||
            !skeleton_check_channel_(check, block, at, 0, "targets", i, 0))
            return 0;
        if (skeleton_u16_(check, at + offsetof(skeleton_driven_target, type)) !=
            SKELETON_CHANNEL_ROTATION)
            continue;
        if (skeleton_u32_(check, at) > driven)
            return skeleton_refuse_(
                check, at, "outputs[%lu].targets[0].index is %lu, ahead of object %lu",
                SKELETON_U_(i), SKELETON_U_(skeleton_u32_(check, at)), SKELETON_U_(driven));
        if (skeleton_u32_(check, at) == driven) ++driven;
    }
    if (driven != block->driven_count)
        return skeleton_refuse_(
            check,
            skeleton_driven_field_(block, offsetof(skeleton_driven_keys, driven_object_count)),
            "driven_object_count is %lu, not %lu", SKELETON_U_(block->driven_count),
            SKELETON_U_(driven));
    return skeleton_check_padding_(check, block->targets + size * block->output_count,
                                   block->coefficients, "coefficients");
}

/* One curve's fields and numbers. */
static inline int skeleton_check_curve_(skeleton_check_* check,
                                        const skeleton_driven_layout_* block, uint64_t at,
                                        uint64_t coefficients, uint64_t times, uint32_t output,
                                        uint32_t curve) {
    const uint32_t keys = skeleton_u32_(check, at + offsetof(skeleton_driven_curve, key_count));
    const uint64_t coefficient_count = 4 * (SKELETON_CAST(uint64_t, keys) - 1);
    if (!skeleton_check_channel_(check, block, at, 1, "curves", output, curve)) return 0;
    if (!skeleton_check_table_(check, at + offsetof(skeleton_driven_curve, times), times, times,
                               4 * SKELETON_CAST(uint64_t, keys), block->end, "curves.times"))
        return 0;
    for (uint64_t i = 0; i < coefficient_count; ++i)
        if (skeleton_is_nan_(check, coefficients + 4 * i))
            return skeleton_refuse_(
                check, coefficients + 4 * i,
                "outputs[%lu].curves[%lu].coefficients[%lu][%lu] is not a number",
                SKELETON_U_(output), SKELETON_U_(curve), SKELETON_U_(i / 4), SKELETON_U_(i % 4));
    for (uint64_t i = 0; i < keys; ++i)
        if (skeleton_is_nan_(check, times + 4 * i))
            return skeleton_refuse_(check, times + 4 * i,
                                    "outputs[%lu].curves[%lu].times[%lu] is not a number",
                                    SKELETON_U_(output), SKELETON_U_(curve), SKELETON_U_(i));
    if (skeleton_u32_(check, at + offsetof(skeleton_driven_curve, first_time)) !=
        skeleton_u32_(check, times))
        return skeleton_refuse_(check, at + offsetof(skeleton_driven_curve, first_time),
                                "outputs[%lu].curves[%lu].first_time is not its first key's",
                                SKELETON_U_(output), SKELETON_U_(curve));
    if (skeleton_u32_(check, at + offsetof(skeleton_driven_curve, last_time)) !=
        skeleton_u32_(check, times + 4 * SKELETON_CAST(uint64_t, keys - 1)))
        return skeleton_refuse_(check, at + offsetof(skeleton_driven_curve, last_time),
                                "outputs[%lu].curves[%lu].last_time is not its last key's",
                                SKELETON_U_(output), SKELETON_U_(curve));
    return 1;
}

/* All coefficients stand in front of all times, both in the order of the curves: the first walk
 * finds out how many there are. `times` becomes the place behind them. */
static inline int skeleton_check_coefficients_(skeleton_check_* check,
                                               skeleton_driven_layout_* block) {
    const uint64_t curves_end = block->targets;
    block->times = block->coefficients;
    for (uint64_t at = block->curves; at + sizeof(skeleton_driven_curve) <= curves_end;
         at += sizeof(skeleton_driven_curve)) {
        const uint32_t keys = skeleton_u32_(check, at + offsetof(skeleton_driven_curve, key_count));
        const uint64_t bytes = 16 * (SKELETON_CAST(uint64_t, keys) - 1);
        if (keys < 2)
            return skeleton_refuse_(check, at + offsetof(skeleton_driven_curve, key_count),
                                    "curves.key_count is %lu, below 2", SKELETON_U_(keys));
        if (!skeleton_check_table_(check, at + offsetof(skeleton_driven_curve, coefficients),
                                   block->times, block->times, bytes, block->end,
                                   "curves.coefficients"))
            return 0;
        block->times += bytes;
    }
    return 1;
}

static inline int skeleton_check_curves_(skeleton_check_* check, skeleton_driven_layout_* block) {
    uint64_t at = block->curves;
    uint64_t coefficients = block->coefficients;
    uint64_t times = block->times;
    uint32_t used = block->driven_count; /* objects that a channel names */
    for (uint32_t output = 0; output < block->output_count; ++output) {
        const uint32_t count =
            skeleton_u32_(check, block->outputs + sizeof(skeleton_driven_output) *
                                                      SKELETON_CAST(uint64_t, output));
        for (uint32_t curve = 0; curve < count; ++curve) {
            const uint32_t keys =
                skeleton_u32_(check, at + offsetof(skeleton_driven_curve, key_count));
            if (!skeleton_check_curve_(check, block, at, coefficients, times, output, curve))
                return 0;
            if (skeleton_u16_(check, at + offsetof(skeleton_driven_curve, input_type)) ==
                    SKELETON_CHANNEL_ROTATION &&
                skeleton_u32_(check, at) >= used)
                used = skeleton_u32_(check, at) + 1;
            coefficients += 16 * (SKELETON_CAST(uint64_t, keys) - 1);
            times += 4 * SKELETON_CAST(uint64_t, keys);
            at += sizeof(skeleton_driven_curve);
        }
    }
    if (used != block->object_count)
        return skeleton_refuse_(
            check, skeleton_driven_field_(block, offsetof(skeleton_driven_keys, object_count)),
            "object_count is %lu, not %lu", SKELETON_U_(block->object_count), SKELETON_U_(used));
    return skeleton_check_table_(check,
                                 skeleton_driven_field_(block, offsetof(skeleton_driven_keys, end)),
                                 times, skeleton_align_(times), 0, block->end, "end");
}

/* The block fills the bytes from `at` to `end`; `procedural` is the block that it belongs to. */
static inline int skeleton_check_driven_keys_(skeleton_check_* check, uint64_t procedural,
                                              uint64_t at, uint64_t end) {
    skeleton_driven_layout_ block;
    memset(&block, 0, sizeof block);
    block.at = at;
    block.end = end;
    if (end - at < sizeof(skeleton_driven_keys))
        return skeleton_refuse_(check, at, "ends within the header of its driven keys");
    if (!skeleton_check_magic_(check, at, "DK04")) return 0;
    block.object_count = skeleton_u32_(check, at + offsetof(skeleton_driven_keys, object_count));
    block.driven_count =
        skeleton_u32_(check, at + offsetof(skeleton_driven_keys, driven_object_count));
    block.output_count = skeleton_u32_(check, at + offsetof(skeleton_driven_keys, output_count));
    block.external_input_count =
        skeleton_u32_(check, procedural + offsetof(skeleton_procedural, external_input_count));
    block.external_output_count =
        skeleton_u32_(check, procedural + offsetof(skeleton_procedural, external_output_count));
    if (block.driven_count > block.object_count)
        return skeleton_refuse_(check, at + offsetof(skeleton_driven_keys, driven_object_count),
                                "driven_object_count is %lu, above object_count",
                                SKELETON_U_(block.driven_count));
    if (!skeleton_check_driven_objects_(check, &block) ||
        !skeleton_check_driven_outputs_(check, &block) ||
        !skeleton_check_driven_targets_(check, &block) ||
        !skeleton_check_coefficients_(check, &block) || !skeleton_check_curves_(check, &block))
        return 0;
    return skeleton_target_(check, at + offsetof(skeleton_driven_keys, end)) ==
               SKELETON_CAST(int64_t, end) ||
           skeleton_refuse_(check, at + offsetof(skeleton_driven_keys, end),
                            "end is not where the next part begins");
}

#endif
