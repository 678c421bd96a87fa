/* The curves of a block of driven keys: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_CURVES_H
#define SKELETON_VERIFY_CURVES_H

#include "skeleton_check_tables.h"

/* What is known of a block: its tables in the order in which they stand, 0 where that is lost. */
typedef struct skeleton_driven_layout_ {
    uint64_t at;
    skeleton_row_ tables;
    uint64_t outputs, curves, targets, coefficients, times, times_end;
    uint64_t curve_count;
    uint32_t object_count, driven_count, output_count;
    uint32_t external_input_count, external_output_count;
    int is_header_sound; /* no fault of it is noted yet: a table may still disagree with it */
    int are_curves_sound, are_targets_sound;
    int are_curves_told; /* the outputs tell whose each curve is */
} skeleton_driven_layout_;

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
                                          int is_input) {
    const uint32_t index = skeleton_u32_(check, at);
    const uint32_t type = skeleton_u16_(check, at + 4);
    const uint32_t component = skeleton_u16_(check, at + 6);
    const uint32_t most_component = type != SKELETON_CHANNEL_EXTERNAL ? 2 : is_input ? 0 : 3;
    const char* const prefix = is_input ? "input_" : "";
    uint32_t room;
    if (type > SKELETON_CHANNEL_EXTERNAL)
        return skeleton_refuse_(check, at + 4, "%stype is %llu, above 3", prefix,
                                SKELETON_U_(type));
    room = skeleton_channel_room_(check, block, type, is_input);
    if (index >= room)
        return skeleton_refuse_(check, at, "%sindex is %llu, not below %llu", prefix,
                                SKELETON_U_(index), SKELETON_U_(room));
    if (component > most_component)
        return skeleton_refuse_(check, at + 6, "%scomponent is %llu, above %llu", prefix,
                                SKELETON_U_(component), SKELETON_U_(most_component));
    return 1;
}

/* A curve on the way through all of them. */
typedef struct skeleton_curve_ {
    uint64_t at;
    uint64_t number;        /* among the curves of the block */
    uint64_t output, place; /* whose it is, and where among those of the output */
    uint32_t keys;
} skeleton_curve_;

static inline skeleton_curve_ skeleton_first_curve_(const skeleton_check_* check,
                                                    const skeleton_driven_layout_* block) {
    skeleton_curve_ curve;
    memset(&curve, 0, sizeof curve);
    curve.at = block->curves;
    if (block->curve_count != 0)
        curve.keys = skeleton_u32_(check, curve.at + offsetof(skeleton_driven_curve, key_count));
    return curve;
}

static inline void skeleton_next_curve_(const skeleton_check_* check,
                                        const skeleton_driven_layout_* block,
                                        skeleton_curve_* curve) {
    curve->at += sizeof(skeleton_driven_curve);
    ++curve->place;
    if (++curve->number == block->curve_count) return;
    curve->keys = skeleton_u32_(check, curve->at + offsetof(skeleton_driven_curve, key_count));
    if (block->are_curves_told &&
        curve->place ==
            skeleton_u32_(check, block->outputs + sizeof(skeleton_driven_output) * curve->output)) {
        ++curve->output;
        curve->place = 0;
    }
}

static inline void skeleton_enter_curve_(skeleton_check_* check,
                                         const skeleton_driven_layout_* block,
                                         const skeleton_curve_* curve) {
    if (block->are_curves_told) skeleton_enter_(check, "outputs", curve->output);
    skeleton_enter_(check, "curves", block->are_curves_told ? curve->place : curve->number);
}

static inline void skeleton_leave_curve_(skeleton_check_* check,
                                         const skeleton_driven_layout_* block) {
    skeleton_leave_(check);
    if (block->are_curves_told) skeleton_leave_(check);
}

static inline uint64_t skeleton_curve_bytes_(const skeleton_curve_* curve) {
    return 16 * (SKELETON_CAST(uint64_t, curve->keys) - 1);
}

/* Its coefficients stand at `place`. */
static inline int skeleton_check_curve_(skeleton_check_* check,
                                        const skeleton_driven_layout_* block,
                                        const skeleton_curve_* curve, uint64_t place) {
    if (!skeleton_check_channel_(check, block, curve->at, 1)) return 0;
    if (curve->keys < 2)
        return skeleton_refuse_(check, curve->at + offsetof(skeleton_driven_curve, key_count),
                                "key_count is %llu, below 2", SKELETON_U_(curve->keys));
    return skeleton_check_place_(check, curve->at + offsetof(skeleton_driven_curve, coefficients),
                                 place, skeleton_curve_bytes_(curve), block->tables.limit,
                                 "coefficients");
}

/* Its times stand at `place`. */
static inline int skeleton_check_times_(skeleton_check_* check,
                                        const skeleton_driven_layout_* block,
                                        const skeleton_curve_* curve, uint64_t place) {
    const uint64_t bytes = 4 * SKELETON_CAST(uint64_t, curve->keys);
    const uint64_t first = curve->at + offsetof(skeleton_driven_curve, first_time);
    const uint64_t last = curve->at + offsetof(skeleton_driven_curve, last_time);
    const uint64_t last_place = place + bytes - 4;
    if (!skeleton_check_place_(check, curve->at + offsetof(skeleton_driven_curve, times), place,
                               bytes, block->tables.limit, "times"))
        return 0;
    /* A time that is no number is a fault of the times alone. */
    if (skeleton_u32_(check, first) != skeleton_u32_(check, place) &&
        !skeleton_is_nan_(check, place))
        return skeleton_refuse_(check, first, "first_time is not its first key's");
    if (skeleton_u32_(check, last) != skeleton_u32_(check, last_place) &&
        !skeleton_is_nan_(check, last_place))
        return skeleton_refuse_(check, last, "last_time is not its last key's");
    return 1;
}

/* All coefficients stand in front of all times, both in the order of the curves. A curve may have
 * another fault than their places, which are followed all the same. */
static inline void skeleton_check_all_times_(skeleton_check_* check,
                                             skeleton_driven_layout_* block) {
    const uint64_t limit = block->tables.limit;
    uint64_t place = block->times;
    skeleton_curve_ curve = skeleton_first_curve_(check, block);
    for (; curve.number < block->curve_count; skeleton_next_curve_(check, block, &curve)) {
        const uint64_t bytes = 4 * SKELETON_CAST(uint64_t, curve.keys);
        skeleton_enter_curve_(check, block, &curve);
        if (block->are_curves_sound)
            block->are_curves_sound = skeleton_check_times_(check, block, &curve, place);
        skeleton_leave_curve_(check, block);
        if (!skeleton_is_at_(check, curve.at + offsetof(skeleton_driven_curve, times), place, bytes,
                             limit))
            return;
        place += bytes;
    }
    block->times_end = place;
}

static inline void skeleton_check_curves_(skeleton_check_* check, skeleton_driven_layout_* block) {
    const uint64_t targets_end = block->targets + sizeof(skeleton_driven_target) *
                                                      SKELETON_CAST(uint64_t, block->output_count);
    const uint64_t limit = block->tables.limit;
    uint64_t place = skeleton_align_(targets_end);
    uint32_t used = block->driven_count; /* objects that a channel names */
    skeleton_curve_ curve = skeleton_first_curve_(check, block);
    block->coefficients = place;
    if (block->curve_count == 0) block->are_curves_sound = 0;
    for (; curve.number < block->curve_count; skeleton_next_curve_(check, block, &curve)) {
        const uint32_t index = skeleton_u32_(check, curve.at);
        skeleton_enter_curve_(check, block, &curve);
        if (block->are_curves_sound)
            block->are_curves_sound = skeleton_check_curve_(check, block, &curve, place);
        skeleton_leave_curve_(check, block);
        if (curve.keys < 2 ||
            !skeleton_is_at_(check, curve.at + offsetof(skeleton_driven_curve, coefficients), place,
                             skeleton_curve_bytes_(&curve), limit))
            return;
        if (skeleton_u16_(check, curve.at + offsetof(skeleton_driven_curve, input_type)) ==
                SKELETON_CHANNEL_ROTATION &&
            index >= used)
            used = index + 1;
        place += skeleton_curve_bytes_(&curve);
    }
    block->times = place;
    skeleton_check_all_times_(check, block);
    if (block->is_header_sound && block->are_curves_sound && used != block->object_count)
        block->is_header_sound = skeleton_refuse_(
            check, block->at + offsetof(skeleton_driven_keys, object_count),
            "object_count is %llu, not %llu", SKELETON_U_(block->object_count), SKELETON_U_(used));
}

/* The keys, named by their curve. */
static inline void skeleton_check_keys_of_curves_(skeleton_check_* check,
                                                  const skeleton_driven_layout_* block,
                                                  int are_coefficients_sound) {
    uint64_t coefficients = block->coefficients;
    uint64_t times = block->times;
    int are_times_sound = 1;
    skeleton_curve_ curve = skeleton_first_curve_(check, block);
    for (; curve.number < block->curve_count; skeleton_next_curve_(check, block, &curve)) {
        const uint64_t segments = SKELETON_CAST(uint64_t, curve.keys) - 1;
        skeleton_enter_curve_(check, block, &curve);
        if (are_coefficients_sound)
            are_coefficients_sound =
                skeleton_check_floats_(check, coefficients, 4 * segments, 4, "coefficients");
        if (are_times_sound)
            are_times_sound = skeleton_check_floats_(check, times, curve.keys, 1, "times");
        skeleton_leave_curve_(check, block);
        coefficients += 16 * segments;
        times += 4 * SKELETON_CAST(uint64_t, curve.keys);
    }
}

/* Coefficients and times are numbers. Where those of one curve cannot be told from those of
 * another, they are named by their place among all of them. */
static inline void skeleton_check_keys_(skeleton_check_* check, skeleton_driven_layout_* block) {
    const uint64_t targets_end = block->targets + sizeof(skeleton_driven_target) *
                                                      SKELETON_CAST(uint64_t, block->output_count);
    const uint64_t limit = block->tables.limit;
    const uint64_t field = block->curves + offsetof(skeleton_driven_curve, times);
    int are_coefficients_sound;
    if (block->coefficients > limit) return;
    are_coefficients_sound =
        skeleton_check_padding_(check, targets_end, block->coefficients, "coefficients");
    if (block->times_end != 0) {
        skeleton_check_keys_of_curves_(check, block, are_coefficients_sound);
        return;
    }
    if (block->times == 0) {
        if (block->curve_count == 0 ||
            !skeleton_can_lead_(check, field, 0, block->coefficients, limit))
            return;
        block->times = SKELETON_CAST(uint64_t, skeleton_target_(check, field));
    }
    if (are_coefficients_sound)
        skeleton_check_floats_(check, block->coefficients, (block->times - block->coefficients) / 4,
                               4, "coefficients");
    skeleton_check_floats_(check, block->times, (limit - block->times) / 4, 1, "times");
}

#endif
