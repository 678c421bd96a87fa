/* Questions to a skeleton file that skeleton_verify has accepted, or that a trusted baker has just
 * written. */
#ifndef SKELETON_READ_H
#define SKELETON_READ_H

#include "skeleton_format.h"

#include <string.h>

/* The target of an offset, or a null pointer. */
static inline const void* skeleton_follow(const skeleton_offset* offset) {
    const char* const place = SKELETON_CAST(const char*, SKELETON_CAST(const void*, offset));
    return *offset == 0 ? NULL : place + *offset;
}

static inline const skeleton_joint* skeleton_joints(const skeleton_header* skeleton) {
    return SKELETON_CAST(const skeleton_joint*, skeleton_follow(&skeleton->joints));
}

static inline const skeleton_transform* skeleton_transforms(const skeleton_header* skeleton) {
    return SKELETON_CAST(const skeleton_transform*, skeleton_follow(&skeleton->transforms));
}

/* ---- names ---- */

/* The hash of these bytes as they stand: CRC-32 without the final complement. */
static inline uint32_t skeleton_hash_exact(const char* text, size_t length) {
    uint32_t hash = 0xFFFFFFFFu;
    for (size_t i = 0; i < length; ++i) {
        hash ^= SKELETON_CAST(unsigned char, text[i]);
        for (int bit = 0; bit < 8; ++bit)
            hash = (hash >> 1) ^ ((hash & 1u) != 0 ? 0xEDB88320u : 0u);
    }
    return hash;
}

/* The hash of these bytes in ASCII lower case: that of a channel, but for those of materials. */
static inline uint32_t skeleton_hash_lower(const char* text, size_t length) {
    uint32_t hash = 0xFFFFFFFFu;
    for (size_t i = 0; i < length; ++i) {
        const unsigned char byte = SKELETON_CAST(unsigned char, text[i]);
        hash ^= byte >= 'A' && byte <= 'Z' ? byte + 32u : byte;
        for (int bit = 0; bit < 8; ++bit)
            hash = (hash >> 1) ^ ((hash & 1u) != 0 ? 0xEDB88320u : 0u);
    }
    return hash;
}

/* The hash of a joint's name, with or without its namespaces. The name is in Latin-1, as documents
 * are: a UTF-8 name with other than ASCII letters must be converted first. */
static inline uint32_t skeleton_hash_joint_name(const char* name) {
    const char* const colon = strrchr(name, ':');
    const char* const bare = colon == NULL ? name : colon + 1;
    return skeleton_hash_lower(bare, strlen(bare));
}

/* The joint with this name hash, or -1. */
static inline int32_t skeleton_find_joint(const skeleton_header* skeleton, uint32_t name_hash) {
    const skeleton_hash* table =
        SKELETON_CAST(const skeleton_hash*, skeleton_follow(&skeleton->hashes));
    uint32_t low = 0;
    uint32_t high = skeleton->joint_count;
    while (low < high) {
        const uint32_t middle = low + (high - low) / 2;
        if (table[middle].name_hash < name_hash)
            low = middle + 1;
        else
            high = middle;
    }
    return low < skeleton->joint_count && table[low].name_hash == name_hash ? table[low].joint : -1;
}

static inline int32_t skeleton_find_joint_named(const skeleton_header* skeleton, const char* name) {
    return skeleton_find_joint(skeleton, skeleton_hash_joint_name(name));
}

/* ---- levels of detail ---- */

/* Rows of the table; 0 without one. */
static inline uint32_t skeleton_lod_count(const skeleton_header* skeleton) {
    const skeleton_lods* lods =
        SKELETON_CAST(const skeleton_lods*, skeleton_follow(&skeleton->lods));
    return lods == NULL ? 0 : lods->count;
}

/* For each joint the one that stands in for it when the levels of detail from `row` on are dropped;
 * null for a row that is not there. */
static inline const uint16_t* skeleton_lod_remap(const skeleton_header* skeleton, uint32_t row) {
    const skeleton_lods* lods =
        SKELETON_CAST(const skeleton_lods*, skeleton_follow(&skeleton->lods));
    const uint16_t* counts;
    if (row >= skeleton_lod_count(skeleton)) return NULL;
    counts = SKELETON_CAST(const uint16_t*, SKELETON_CAST(const void*, lods + 1));
    return counts + lods->count + SKELETON_CAST(size_t, row) * skeleton->joint_count;
}

/* How many joints are left when the levels of detail from `row` on are dropped: those below this
 * index. All of them for a row that is not there, so that skeleton_lod_count as `row` means "drop
 * nothing". */
static inline uint32_t skeleton_lod_limit(const skeleton_header* skeleton, uint32_t row) {
    const uint16_t* remap = skeleton_lod_remap(skeleton, row);
    uint32_t low = 0;
    uint32_t high = skeleton->joint_count;
    if (remap == NULL) return high;
    while (low < high) { /* joints that stay stand in for themselves, all others do not */
        const uint32_t middle = low + (high - low) / 2;
        if (remap[middle] == middle)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

/* The joint that stands in for `joint`; itself for a row that is not there; SKELETON_NO_JOINT if
 * none does. */
static inline uint32_t skeleton_lod_stand_in(const skeleton_header* skeleton, uint32_t row,
                                             uint32_t joint) {
    const uint16_t* remap = skeleton_lod_remap(skeleton, row);
    if (joint >= skeleton->joint_count) return SKELETON_NO_JOINT;
    return remap == NULL ? joint : remap[joint];
}

/* ---- procedural items ---- */

/* Null for a skeleton without procedural joints. */
static inline const skeleton_procedural* skeleton_find_procedural(const skeleton_header* skeleton) {
    return SKELETON_CAST(const skeleton_procedural*, skeleton_follow(&skeleton->procedural));
}

static inline uint32_t skeleton_item_count(const skeleton_procedural* procedural) {
    return procedural == NULL ? 0 : procedural->item_count;
}

/* The item at this place of the list: skeleton_driven_keys or skeleton_joint_constraints, by its
 * kind. Null out of range. */
static inline const void* skeleton_item(const skeleton_procedural* procedural, uint32_t place) {
    if (place >= skeleton_item_count(procedural)) return NULL;
    return skeleton_follow(
        SKELETON_CAST(const skeleton_offset*, skeleton_follow(&procedural->items)) + place);
}

/* True where there is an item at this place and it is of this kind, SKELETON_ITEM_.... */
static inline int skeleton_item_is(const skeleton_procedural* procedural, uint32_t place,
                                   uint32_t kind) {
    if (place >= skeleton_item_count(procedural)) return 0;
    return SKELETON_CAST(const uint32_t*, skeleton_follow(&procedural->item_kinds))[place] == kind;
}

/* Null where there is no item or one of the other kind; so, too, below. */
static inline const skeleton_driven_keys* skeleton_item_driven_keys(
    const skeleton_procedural* procedural, uint32_t place) {
    if (!skeleton_item_is(procedural, place, SKELETON_ITEM_DRIVEN_KEYS)) return NULL;
    return SKELETON_CAST(const skeleton_driven_keys*, skeleton_item(procedural, place));
}

static inline const skeleton_joint_constraints* skeleton_item_constraints(
    const skeleton_procedural* procedural, uint32_t place) {
    if (!skeleton_item_is(procedural, place, SKELETON_ITEM_JOINT_CONSTRAINTS)) return NULL;
    return SKELETON_CAST(const skeleton_joint_constraints*, skeleton_item(procedural, place));
}

/* The tables of external channels, of external_input_count and external_output_count entries; null
 * when empty. */
static inline const skeleton_external_channel* skeleton_external_inputs(
    const skeleton_procedural* procedural) {
    return SKELETON_CAST(const skeleton_external_channel*,
                         skeleton_follow(&procedural->external_inputs));
}

static inline const skeleton_external_channel* skeleton_external_outputs(
    const skeleton_procedural* procedural) {
    return SKELETON_CAST(const skeleton_external_channel*,
                         skeleton_follow(&procedural->external_outputs));
}

/* ---- driven keys ---- */

/* A joint whose rotation a block drives or reads, with what turns its Euler angles into a rotation.
 */
typedef struct skeleton_driven_rotation {
    uint32_t joint;
    uint32_t rotation_order;
    const float* rotation_axis; /* quaternion x, y, z, w */
    const float* joint_orient;  /* quaternion x, y, z, w */
} skeleton_driven_rotation;

/* How many of the block's objects have a row: all of object_count, unless some are joints outside
 * the skeleton. */
static inline uint32_t skeleton_driven_row_count(const skeleton_driven_keys* keys) {
    const char* const axes = SKELETON_CAST(const char*, skeleton_follow(&keys->rotation_axes));
    const char* const orients = SKELETON_CAST(const char*, skeleton_follow(&keys->joint_orients));
    return SKELETON_CAST(uint32_t, (orients - axes) / 16);
}

/* The object that a channel of type SKELETON_CHANNEL_ROTATION names by its index. False out of
 * range, and in a block in which rows are missing: nothing in the file says whose. */
static inline int skeleton_find_driven_rotation(const skeleton_driven_keys* keys, uint32_t index,
                                                skeleton_driven_rotation* rotation) {
    const skeleton_driven_object* objects =
        SKELETON_CAST(const skeleton_driven_object*, skeleton_follow(&keys->objects));
    if (index >= keys->object_count || skeleton_driven_row_count(keys) != keys->object_count)
        return 0;
    rotation->joint = objects[index].joint;
    rotation->rotation_order = objects[index].rotation_order;
    rotation->rotation_axis = SKELETON_CAST(const float*, skeleton_follow(&keys->rotation_axes)) +
                              4 * SKELETON_CAST(size_t, index);
    rotation->joint_orient = SKELETON_CAST(const float*, skeleton_follow(&keys->joint_orients)) +
                             4 * SKELETON_CAST(size_t, index);
    return 1;
}

/* Null out of range; so, too, below. */
static inline const skeleton_driven_output* skeleton_driven_output_at(
    const skeleton_driven_keys* keys, uint32_t place) {
    if (place >= keys->output_count) return NULL;
    return SKELETON_CAST(const skeleton_driven_output*, skeleton_follow(&keys->outputs)) + place;
}

static inline const skeleton_driven_curve* skeleton_driven_curve_at(
    const skeleton_driven_output* output, uint32_t place) {
    if (place >= output->curve_count) return NULL;
    return SKELETON_CAST(const skeleton_driven_curve*, skeleton_follow(&output->curves)) + place;
}

/* What the output writes. */
static inline const skeleton_driven_target* skeleton_driven_target_of(
    const skeleton_driven_output* output) {
    return SKELETON_CAST(const skeleton_driven_target*, skeleton_follow(&output->targets));
}

/* The segment of a curve that holds an input: the last one that starts at or before it, else the
 * first. */
static inline uint32_t skeleton_driven_segment(const skeleton_driven_curve* curve, float input) {
    const float* times = SKELETON_CAST(const float*, skeleton_follow(&curve->times));
    uint32_t low = 0;
    uint32_t high = curve->key_count - 1;
    while (high - low > 1) {
        const uint32_t middle = low + (high - low) / 2;
        if (times[middle] <= input)
            low = middle;
        else
            high = middle;
    }
    return low;
}

/* What becomes of inputs outside a curve; the file does not say, so the caller does. An end that is
 * not clamped goes on along its segment. */
#define SKELETON_CLAMP_BEFORE 1u
#define SKELETON_CLAMP_AFTER 2u
#define SKELETON_CLAMP_BOTH 3u

/* The value of a curve for an input. `clamp` is a sum of SKELETON_CLAMP_.... */
static inline float skeleton_driven_value(const skeleton_driven_curve* curve, float input,
                                          uint32_t clamp) {
    const float* times = SKELETON_CAST(const float*, skeleton_follow(&curve->times));
    const float* c = SKELETON_CAST(const float*, skeleton_follow(&curve->coefficients));
    uint32_t segment;
    float d;
    if ((clamp & SKELETON_CLAMP_BEFORE) != 0 && input < curve->first_time)
        input = curve->first_time;
    if ((clamp & SKELETON_CLAMP_AFTER) != 0 && input > curve->last_time) input = curve->last_time;
    segment = skeleton_driven_segment(curve, input);
    c += 4 * SKELETON_CAST(size_t, segment);
    d = input - times[segment];
    return c[0] + c[1] * d + c[2] * d * d + c[3] * d * d * d;
}

/* A segment as a Hermite curve: the values at its two ends, and its slopes there for one unit of
 * the input. */
typedef struct skeleton_hermite {
    float begin, end;
    float begin_value, end_value;
    float begin_slope, end_slope;
} skeleton_hermite;

/* False for a segment that is not there; a curve has one less than keys. */
static inline int skeleton_driven_hermite(const skeleton_driven_curve* curve, uint32_t segment,
                                          skeleton_hermite* hermite) {
    const float* times = SKELETON_CAST(const float*, skeleton_follow(&curve->times));
    const float* c = SKELETON_CAST(const float*, skeleton_follow(&curve->coefficients));
    float d;
    if (segment >= curve->key_count - 1) return 0;
    c += 4 * SKELETON_CAST(size_t, segment);
    d = times[segment + 1] - times[segment];
    hermite->begin = times[segment];
    hermite->end = times[segment + 1];
    hermite->begin_value = c[0];
    hermite->end_value = c[0] + c[1] * d + c[2] * d * d + c[3] * d * d * d;
    hermite->begin_slope = c[1];
    hermite->end_slope = c[1] + 2 * c[2] * d + 3 * c[3] * d * d;
    return 1;
}

/* ---- constraints ---- */

/* The joint in a slot of a block; SKELETON_NO_JOINT out of range, as for an aim constraint without
 * an up object. */
static inline uint32_t skeleton_slot_joint(const skeleton_joint_constraints* constraints,
                                           uint32_t slot) {
    const uint32_t count =
        SKELETON_CAST(uint32_t, constraints->constrained_count) + constraints->target_count;
    if (slot >= count) return SKELETON_NO_JOINT;
    return SKELETON_CAST(const uint16_t*, skeleton_follow(&constraints->joints))[slot];
}

/* The lists of a block, of orientation_count, translation_count, scale_count, aim_count and
 * parent_count entries. */
static inline const skeleton_constraint* skeleton_orientations(
    const skeleton_joint_constraints* constraints) {
    return SKELETON_CAST(const skeleton_constraint*, skeleton_follow(&constraints->orientations));
}

static inline const skeleton_offset_constraint* skeleton_translations(
    const skeleton_joint_constraints* constraints) {
    return SKELETON_CAST(const skeleton_offset_constraint*,
                         skeleton_follow(&constraints->translations));
}

static inline const skeleton_offset_constraint* skeleton_scales(
    const skeleton_joint_constraints* constraints) {
    return SKELETON_CAST(const skeleton_offset_constraint*, skeleton_follow(&constraints->scales));
}

static inline const skeleton_aim_constraint* skeleton_aims(
    const skeleton_joint_constraints* constraints) {
    return SKELETON_CAST(const skeleton_aim_constraint*, skeleton_follow(&constraints->aims));
}

static inline const skeleton_parent_constraint* skeleton_parents(
    const skeleton_joint_constraints* constraints) {
    return SKELETON_CAST(const skeleton_parent_constraint*, skeleton_follow(&constraints->parents));
}

#endif
