/* Turns a skeleton file into the other byte order, in place. */
#ifndef SKELETON_SWAP_H
#define SKELETON_SWAP_H

#include "skeleton_verify.h"

/* The file while it is turned: numbers are read before they are reversed. */
typedef struct skeleton_turn_ {
    skeleton_check_ file;
    unsigned char* bytes;
} skeleton_turn_;

static inline void skeleton_turn16_(skeleton_turn_* turn, uint64_t at, uint64_t count) {
    for (uint64_t i = 0; i < count; ++i) {
        unsigned char* const number = turn->bytes + at + 2 * i;
        const unsigned char first = number[0];
        number[0] = number[1];
        number[1] = first;
    }
}

static inline void skeleton_turn32_(skeleton_turn_* turn, uint64_t at, uint64_t count) {
    for (uint64_t i = 0; i < count; ++i) {
        unsigned char* const number = turn->bytes + at + 4 * i;
        const unsigned char first = number[0];
        const unsigned char second = number[1];
        number[0] = number[3];
        number[1] = number[2];
        number[2] = second;
        number[3] = first;
    }
}

static inline uint64_t skeleton_turn_place_(const skeleton_turn_* turn, uint64_t field) {
    return SKELETON_CAST(uint64_t, skeleton_target_(&turn->file, field));
}

static inline void skeleton_turn_driven_keys_(skeleton_turn_* turn, uint64_t at, uint64_t end) {
    const uint64_t objects =
        skeleton_turn_place_(turn, at + offsetof(skeleton_driven_keys, objects));
    const uint64_t axes =
        skeleton_turn_place_(turn, at + offsetof(skeleton_driven_keys, rotation_axes));
    const uint64_t orients =
        skeleton_turn_place_(turn, at + offsetof(skeleton_driven_keys, joint_orients));
    const uint64_t outputs =
        skeleton_turn_place_(turn, at + offsetof(skeleton_driven_keys, outputs));
    const uint32_t count =
        skeleton_u32_(&turn->file, at + offsetof(skeleton_driven_keys, output_count));
    const uint64_t curves =
        skeleton_turn_place_(turn, outputs + offsetof(skeleton_driven_output, curves));
    const uint64_t targets =
        skeleton_turn_place_(turn, outputs + offsetof(skeleton_driven_output, targets));
    const uint64_t coefficients =
        skeleton_turn_place_(turn, curves + offsetof(skeleton_driven_curve, coefficients));
    skeleton_turn16_(turn, objects, 2 * (orients - axes) / 16);
    skeleton_turn32_(turn, axes, (outputs - axes) / 4);
    skeleton_turn32_(turn, outputs, 4 * SKELETON_CAST(uint64_t, count));
    for (uint64_t curve = curves; curve + sizeof(skeleton_driven_curve) <= targets;
         curve += sizeof(skeleton_driven_curve)) {
        skeleton_turn32_(turn, curve, 1);
        skeleton_turn16_(turn, curve + 4, 2);
        skeleton_turn32_(turn, curve + 8, 5);
    }
    for (uint32_t i = 0; i < count; ++i) {
        skeleton_turn32_(turn, targets + 8 * SKELETON_CAST(uint64_t, i), 1);
        skeleton_turn16_(turn, targets + 8 * SKELETON_CAST(uint64_t, i) + 4, 2);
    }
    skeleton_turn32_(turn, coefficients, (end - coefficients) / 4);
    skeleton_turn32_(turn, at + 4, 8);
}

static inline void skeleton_turn_constraints_(skeleton_turn_* turn, uint64_t at, uint64_t end) {
    const uint64_t joints =
        skeleton_turn_place_(turn, at + offsetof(skeleton_joint_constraints, joints));
    const uint64_t orientations =
        skeleton_turn_place_(turn, at + offsetof(skeleton_joint_constraints, orientations));
    const uint64_t aims =
        skeleton_turn_place_(turn, at + offsetof(skeleton_joint_constraints, aims));
    const uint64_t parents =
        skeleton_turn_place_(turn, at + offsetof(skeleton_joint_constraints, parents));
    skeleton_turn16_(turn, joints, (orientations - joints) / 2);
    skeleton_turn32_(turn, orientations, (aims - orientations) / 4);
    for (uint64_t aim = aims; aim < parents; aim += sizeof(skeleton_aim_constraint)) {
        skeleton_turn32_(turn, aim, 16);
        skeleton_turn16_(turn, aim + offsetof(skeleton_aim_constraint, world_up), 2);
    }
    skeleton_turn32_(turn, parents, (end - parents) / 4);
    skeleton_turn32_(turn, at + 4, 2);
    skeleton_turn16_(turn, at + offsetof(skeleton_joint_constraints, constrained_count), 2);
    skeleton_turn32_(turn, at + offsetof(skeleton_joint_constraints, orientations), 5);
    skeleton_turn16_(turn, at + offsetof(skeleton_joint_constraints, orientation_count), 6);
}

static inline void skeleton_turn_procedural_(skeleton_turn_* turn, uint64_t at) {
    const uint32_t count =
        skeleton_u32_(&turn->file, at + offsetof(skeleton_procedural, item_count));
    const uint64_t kinds = at + sizeof(skeleton_procedural);
    const uint64_t items = kinds + 4 * SKELETON_CAST(uint64_t, count);
    const uint64_t items_end =
        skeleton_turn_place_(turn, at + offsetof(skeleton_procedural, items_end));
    for (uint32_t i = 0; i < count; ++i) {
        const uint64_t item = skeleton_turn_place_(turn, items + 4 * SKELETON_CAST(uint64_t, i));
        const uint64_t next =
            i + 1 < count ? skeleton_turn_place_(turn, items + 4 * SKELETON_CAST(uint64_t, i + 1))
                          : items_end;
        if (skeleton_u32_(&turn->file, kinds + 4 * SKELETON_CAST(uint64_t, i)) ==
            SKELETON_ITEM_DRIVEN_KEYS)
            skeleton_turn_driven_keys_(turn, item, next);
        else
            skeleton_turn_constraints_(turn, item, next);
    }
    /* The external channels, and the zeros around them. */
    skeleton_turn32_(turn, items_end, (turn->file.size - items_end) / 4);
    skeleton_turn32_(turn, kinds, 2 * SKELETON_CAST(uint64_t, count));
    skeleton_turn32_(turn, at + 4, 8);
}

/* Reverses every number of a sound file, whichever order it is in; twice gives the same bytes
 * again. A file that is not sound stays as it is: 0, and `fault`, which may be null, tells the
 * reason. */
static inline int skeleton_swap(void* bytes, size_t size, skeleton_fault* fault) {
    skeleton_turn_ turn;
    uint64_t joints, transforms, hashes, lods, procedural;
    uint32_t count;
    if (skeleton_find_faults(bytes, size, fault, fault == NULL ? 0 : 1) != 0) return 0;
    turn.file = skeleton_begin_check_(bytes, size, NULL, 0);
    turn.file.reversed = skeleton_is_reversed(bytes, size);
    turn.bytes = SKELETON_CAST(unsigned char*, bytes);
    count = skeleton_u16_(&turn.file, offsetof(skeleton_header, joint_count));
    joints = skeleton_turn_place_(&turn, offsetof(skeleton_header, joints));
    transforms = skeleton_turn_place_(&turn, offsetof(skeleton_header, transforms));
    hashes = skeleton_turn_place_(&turn, offsetof(skeleton_header, hashes));
    lods = skeleton_turn_place_(&turn, offsetof(skeleton_header, lods));
    procedural = skeleton_turn_place_(&turn, offsetof(skeleton_header, procedural));
    if (procedural != offsetof(skeleton_header, procedural))
        skeleton_turn_procedural_(&turn, procedural);
    if (lods != offsetof(skeleton_header, lods)) {
        const uint64_t rows = skeleton_u32_(&turn.file, lods);
        skeleton_turn32_(&turn, lods, 1);
        skeleton_turn16_(&turn, lods + 4, rows * (1 + SKELETON_CAST(uint64_t, count)));
    }
    skeleton_turn32_(&turn, hashes, 2 * SKELETON_CAST(uint64_t, count));
    skeleton_turn32_(&turn, transforms, 12 * SKELETON_CAST(uint64_t, count));
    skeleton_turn16_(&turn, joints, 4 * SKELETON_CAST(uint64_t, count));
    skeleton_turn32_(&turn, offsetof(skeleton_header, signature), 1);
    skeleton_turn16_(&turn, offsetof(skeleton_header, reserved0), 2);
    skeleton_turn32_(&turn, offsetof(skeleton_header, joints), 9);
    return 1;
}

#endif
