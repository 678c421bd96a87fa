/* A block of driven keys: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_DRIVEN_H
#define SKELETON_VERIFY_DRIVEN_H

#include "skeleton_verify_curves.h"

/* How many rows the tables of objects have: the number with which most of the offsets behind them
 * agree. */
static inline uint64_t skeleton_driven_rows_(const skeleton_check_* check,
                                             const skeleton_driven_layout_* block) {
    const uint64_t at = block->at;
    const int64_t axes =
        skeleton_target_(check, at + offsetof(skeleton_driven_keys, rotation_axes));
    const int64_t orients =
        skeleton_target_(check, at + offsetof(skeleton_driven_keys, joint_orients));
    const int64_t outputs = skeleton_target_(check, at + offsetof(skeleton_driven_keys, outputs));
    const int64_t objects =
        SKELETON_CAST(int64_t, skeleton_align_(at + sizeof(skeleton_driven_keys)));
    const int64_t rows[3] = {(orients - axes) / 16, (outputs - orients) / 16, block->object_count};
    int64_t best = block->object_count;
    int most = -1;
    for (int i = 0; i < 3; ++i) {
        const int64_t place = (objects + 4 * rows[i] + 15) / 16 * 16;
        const int agreeing =
            (axes == place) + (orients == place + 16 * rows[i]) + (outputs == place + 32 * rows[i]);
        if (rows[i] < 0 || agreeing <= most) continue;
        best = rows[i];
        most = agreeing;
    }
    return SKELETON_CAST(uint64_t, best);
}

static inline int skeleton_check_objects_(skeleton_check_* check, uint64_t table, uint64_t rows) {
    const uint32_t joint_count = skeleton_u16_(check, offsetof(skeleton_header, joint_count));
    for (uint64_t i = 0; i < rows; ++i) {
        const uint64_t at = table + sizeof(skeleton_driven_object) * i;
        const uint32_t order = skeleton_u16_(check, at);
        const uint32_t joint = skeleton_u16_(check, at + offsetof(skeleton_driven_object, joint));
        if (order > 5)
            return skeleton_refuse_(check, at, "objects[%llu].rotation_order is %llu, above 5",
                                    SKELETON_U_(i), SKELETON_U_(order));
        if (joint >= joint_count)
            return skeleton_refuse_(check, at + offsetof(skeleton_driven_object, joint),
                                    "objects[%llu].joint is %llu, not below %llu", SKELETON_U_(i),
                                    SKELETON_U_(joint), SKELETON_U_(joint_count));
    }
    return 1;
}

/* The three tables that have a row for each object. */
static inline void skeleton_check_driven_objects_(skeleton_check_* check,
                                                  skeleton_driven_layout_* block) {
    const uint64_t rows = skeleton_driven_rows_(check, block);
    uint64_t table;
    if (block->is_header_sound && rows > block->object_count)
        block->is_header_sound =
            skeleton_refuse_(check, block->at + offsetof(skeleton_driven_keys, object_count),
                             "object_count is %llu, but there are rows for %llu",
                             SKELETON_U_(block->object_count), SKELETON_U_(rows));
    table = skeleton_next_table_(check, &block->tables,
                                 block->at + offsetof(skeleton_driven_keys, objects), 4 * rows,
                                 "objects");
    if (table != 0) skeleton_check_objects_(check, table, rows);
    table = skeleton_next_table_(check, &block->tables,
                                 block->at + offsetof(skeleton_driven_keys, rotation_axes),
                                 16 * rows, "rotation_axes");
    if (table != 0) skeleton_check_floats_(check, table, 4 * rows, 4, "rotation_axes");
    table = skeleton_next_table_(check, &block->tables,
                                 block->at + offsetof(skeleton_driven_keys, joint_orients),
                                 16 * rows, "joint_orients");
    if (table != 0) skeleton_check_floats_(check, table, 4 * rows, 4, "joint_orients");
}

/* Where the targets stand although some output is wrong: where the first and the last output say,
 * if they agree, else behind the curves, if these can be counted; 0 if neither helps. */
static inline uint64_t skeleton_guess_targets_(const skeleton_check_* check,
                                               const skeleton_driven_layout_* block,
                                               uint64_t behind_curves) {
    const uint64_t first = block->outputs + offsetof(skeleton_driven_output, targets);
    const uint64_t steps = block->output_count - SKELETON_CAST(uint64_t, 1);
    const uint64_t last = first + sizeof(skeleton_driven_output) * steps;
    const uint64_t bytes = sizeof(skeleton_driven_target) * (steps + 1);
    const int64_t distance = skeleton_target_(check, last) - skeleton_target_(check, first);
    if (skeleton_can_lead_(check, first, bytes, block->curves, block->tables.limit) &&
        distance == SKELETON_CAST(int64_t, sizeof(skeleton_driven_target) * steps))
        return SKELETON_CAST(uint64_t, skeleton_target_(check, first));
    return behind_curves <= block->tables.limit && bytes <= block->tables.limit - behind_curves
               ? behind_curves
               : 0;
}

/* The curves of an output begin at `curve`, which moves behind them. */
static inline int skeleton_check_output_(skeleton_check_* check, uint64_t at, uint64_t limit,
                                         uint64_t* curve) {
    const uint32_t curve_count = skeleton_u32_(check, at);
    const uint64_t bytes = sizeof(skeleton_driven_curve) * SKELETON_CAST(uint64_t, curve_count);
    if (curve_count == 0) return skeleton_refuse_(check, at, "curve_count is 0");
    if (!skeleton_check_place_(check, at + offsetof(skeleton_driven_output, curves), *curve, bytes,
                               limit, "curves"))
        return 0;
    *curve += bytes;
    return 1;
}

/* Its target stands at `target`. */
static inline int skeleton_check_output_target_(skeleton_check_* check, uint64_t at, uint64_t limit,
                                                uint64_t target) {
    const uint64_t count = at + offsetof(skeleton_driven_output, target_count);
    if (skeleton_u32_(check, count) != 1)
        return skeleton_refuse_(check, count, "target_count is %llu, not 1",
                                SKELETON_U_(skeleton_u32_(check, count)));
    return skeleton_check_place_(check, at + offsetof(skeleton_driven_output, targets), target,
                                 sizeof(skeleton_driven_target), limit, "targets");
}

/* The table of outputs leads to the curves and the targets, which stand in its order. */
static inline void skeleton_check_outputs_(skeleton_check_* check, skeleton_driven_layout_* block) {
    const uint64_t size = sizeof(skeleton_driven_output);
    const uint64_t limit = block->tables.limit;
    uint64_t curve = block->outputs + size * block->output_count; /* on a boundary: no padding */
    uint64_t behind_curves = 0;
    int is_sound = 1;
    block->curves = curve;
    for (uint64_t i = 0; is_sound && i < block->output_count; ++i) {
        skeleton_enter_(check, "outputs", i);
        is_sound = skeleton_check_output_(check, block->outputs + size * i, limit, &curve);
        skeleton_leave_(check);
    }
    if (is_sound) behind_curves = skeleton_align_(curve);
    for (uint64_t i = 0; is_sound && i < block->output_count; ++i) {
        skeleton_enter_(check, "outputs", i);
        is_sound =
            skeleton_check_output_target_(check, block->outputs + size * i, limit,
                                          behind_curves + sizeof(skeleton_driven_target) * i);
        skeleton_leave_(check);
    }
    block->targets =
        is_sound ? behind_curves : skeleton_guess_targets_(check, block, behind_curves);
    if (block->targets == 0) return;
    block->are_curves_told = block->targets == behind_curves;
    block->curve_count = (block->targets - block->curves) / sizeof(skeleton_driven_curve);
    block->are_curves_sound = 1;
    block->are_targets_sound =
        !block->are_curves_told || skeleton_check_padding_(check, curve, block->targets, "targets");
}

/* Driven objects come first, in the order of the outputs that drive them. */
static inline int skeleton_check_targets_(skeleton_check_* check, skeleton_driven_layout_* block) {
    uint32_t driven = 0;
    for (uint64_t i = 0; i < block->output_count; ++i) {
        const uint64_t at = block->targets + sizeof(skeleton_driven_target) * i;
        const uint32_t index = skeleton_u32_(check, at);
        const int is_rotation = skeleton_u16_(check, at + offsetof(skeleton_driven_target, type)) ==
                                SKELETON_CHANNEL_ROTATION;
        int is_sound;
        skeleton_enter_(check, "outputs", i);
        skeleton_enter_(check, "targets", 0);
        is_sound = skeleton_check_channel_(check, block, at, 0);
        if (is_sound && is_rotation && index > driven)
            is_sound = skeleton_refuse_(check, at, "index is %llu, ahead of object %llu",
                                        SKELETON_U_(index), SKELETON_U_(driven));
        skeleton_leave_(check);
        skeleton_leave_(check);
        if (!is_sound) return 0;
        if (is_rotation && index == driven) ++driven;
    }
    if (block->is_header_sound && driven != block->driven_count)
        block->is_header_sound =
            skeleton_refuse_(check, block->at + offsetof(skeleton_driven_keys, driven_object_count),
                             "driven_object_count is %llu, not %llu",
                             SKELETON_U_(block->driven_count), SKELETON_U_(driven));
    return 1;
}

/* The block's end, where that can be told. */
static inline void skeleton_check_driven_end_(skeleton_check_* check,
                                              skeleton_driven_layout_* block,
                                              const skeleton_block_* item) {
    if (!block->is_header_sound) return;
    if (block->times_end == 0) block->tables.low = block->at + sizeof(skeleton_driven_keys);
    skeleton_end_at_(&block->tables, block->times_end);
    skeleton_check_block_end_(check, &block->tables, item);
}

/* `procedural` is the block whose item it is. */
static inline void skeleton_check_driven_keys_(skeleton_check_* check, uint64_t procedural,
                                               const skeleton_block_* item) {
    const uint64_t at = item->at;
    const uint64_t header_end = at + sizeof(skeleton_driven_keys);
    skeleton_driven_layout_ block;
    memset(&block, 0, sizeof block);
    if (item->limit - at < sizeof(skeleton_driven_keys)) {
        skeleton_refuse_(check, at + offsetof(skeleton_driven_keys, end),
                         "end is at 0x%04llX at most, within the header of its driven keys",
                         SKELETON_U_(item->limit));
        return;
    }
    block.at = at;
    block.tables = skeleton_begin_row_(header_end, header_end, item->limit);
    block.is_header_sound = item->is_header_sound;
    block.object_count = skeleton_u32_(check, at + offsetof(skeleton_driven_keys, object_count));
    block.driven_count =
        skeleton_u32_(check, at + offsetof(skeleton_driven_keys, driven_object_count));
    block.output_count = skeleton_u32_(check, at + offsetof(skeleton_driven_keys, output_count));
    block.external_input_count =
        skeleton_u32_(check, procedural + offsetof(skeleton_procedural, external_input_count));
    block.external_output_count =
        skeleton_u32_(check, procedural + offsetof(skeleton_procedural, external_output_count));
    if (block.is_header_sound && block.driven_count > block.object_count)
        block.is_header_sound =
            skeleton_refuse_(check, at + offsetof(skeleton_driven_keys, driven_object_count),
                             "driven_object_count is %llu, above the %llu of object_count",
                             SKELETON_U_(block.driven_count), SKELETON_U_(block.object_count));
    if (block.is_header_sound && block.output_count == 0)
        block.is_header_sound = skeleton_refuse_(
            check, at + offsetof(skeleton_driven_keys, output_count), "output_count is 0");
    skeleton_check_driven_objects_(check, &block);
    if (block.output_count != 0)
        block.outputs = skeleton_next_table_(
            check, &block.tables, at + offsetof(skeleton_driven_keys, outputs),
            sizeof(skeleton_driven_output) * SKELETON_CAST(uint64_t, block.output_count),
            "outputs");
    if (block.outputs != 0) skeleton_check_outputs_(check, &block);
    if (block.targets != 0) {
        skeleton_check_curves_(check, &block);
        if (block.are_targets_sound) skeleton_check_targets_(check, &block);
        skeleton_check_keys_(check, &block);
    }
    skeleton_check_driven_end_(check, &block, item);
}

#endif
