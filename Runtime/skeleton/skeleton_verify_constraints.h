/* A block of joint constraints: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_CONSTRAINTS_H
#define SKELETON_VERIFY_CONSTRAINTS_H

#include "skeleton_check_tables.h"

#define SKELETON_ANY_ 0x7FC00000u

/* One of the five lists of a block: where its fields stand in the header, and what its entries are.
 */
typedef struct skeleton_list_ {
    const char* name;
    size_t offset_field, count_field;
    uint64_t entry_bytes;
    const char* vectors[3]; /* of four floats, behind the common part */
    uint32_t fourth;        /* bits of the first vector's fourth element, SKELETON_ANY_ if it means
                               nothing */
} skeleton_list_;

/* The joints of one half of the table, each above the one in front of it. */
static inline int skeleton_check_slots_(skeleton_check_* check, uint64_t table, uint32_t first,
                                        uint32_t count) {
    const uint32_t joint_count = skeleton_u16_(check, offsetof(skeleton_header, joint_count));
    for (uint32_t slot = first; slot < first + count; ++slot) {
        const uint64_t at = table + 2 * SKELETON_CAST(uint64_t, slot);
        const uint32_t joint = skeleton_u16_(check, at);
        if (joint >= joint_count)
            return skeleton_refuse_(check, at, "joints[%llu] is %llu, not below %llu",
                                    SKELETON_U_(slot), SKELETON_U_(joint),
                                    SKELETON_U_(joint_count));
        if (slot > first && joint <= skeleton_u16_(check, at - 2))
            return skeleton_refuse_(check, at, "joints[%llu] is %llu, not above %llu",
                                    SKELETON_U_(slot), SKELETON_U_(joint),
                                    SKELETON_U_(skeleton_u16_(check, at - 2)));
    }
    return 1;
}

/* Entries of one constraint stand in a row: the first has the flag of the first target, the last
 * that of the last. */
static inline int skeleton_check_flags_(skeleton_check_* check, const skeleton_list_* list,
                                        uint64_t at, uint32_t entry, uint32_t count) {
    const uint32_t flags = skeleton_u32_(check, at);
    const int begins = (flags & SKELETON_CONSTRAINT_FIRST_TARGET) != 0;
    const int is_ended = entry == 0 || (skeleton_u32_(check, at - list->entry_bytes) &
                                        SKELETON_CONSTRAINT_LAST_TARGET) != 0;
    const uint32_t constrained =
        skeleton_u32_(check, at + offsetof(skeleton_constraint, constrained));
    if (flags > (SKELETON_CONSTRAINT_FIRST_TARGET | SKELETON_CONSTRAINT_LAST_TARGET))
        return skeleton_refuse_(check, at, "flags is %llu, above 3", SKELETON_U_(flags));
    if (begins != is_ended)
        return skeleton_refuse_(
            check, at, "flags is %llu, %s", SKELETON_U_(flags),
            begins ? "though the constraint in front has no last target" : "no first target");
    if (entry + 1 == count && (flags & SKELETON_CONSTRAINT_LAST_TARGET) == 0)
        return skeleton_refuse_(check, at, "flags is %llu, no last target", SKELETON_U_(flags));
    if (!begins &&
        constrained != skeleton_u32_(check, at - list->entry_bytes +
                                                offsetof(skeleton_constraint, constrained)))
        return skeleton_refuse_(check, at + offsetof(skeleton_constraint, constrained),
                                "constrained is %llu, another one within one constraint",
                                SKELETON_U_(constrained));
    return 1;
}

/* What an aim entry has behind its vectors. */
static inline int skeleton_check_world_up_(skeleton_check_* check, uint64_t at,
                                           uint32_t slot_count) {
    const uint32_t world_up =
        skeleton_u16_(check, at + offsetof(skeleton_aim_constraint, world_up));
    const uint32_t object = skeleton_u16_(check, at + offsetof(skeleton_aim_constraint, up_object));
    const uint64_t reserved = at + offsetof(skeleton_aim_constraint, reserved);
    if (world_up > SKELETON_WORLD_UP_OBJECT_ROTATION)
        return skeleton_refuse_(check, at + offsetof(skeleton_aim_constraint, world_up),
                                "world_up is %llu, above 2", SKELETON_U_(world_up));
    if (world_up == SKELETON_WORLD_UP_VECTOR ? object != SKELETON_NO_JOINT : object >= slot_count)
        return skeleton_refuse_(
            check, at + offsetof(skeleton_aim_constraint, up_object),
            "up_object is %llu, not %s%llu", SKELETON_U_(object),
            world_up == SKELETON_WORLD_UP_VECTOR ? "" : "below ",
            SKELETON_U_(world_up == SKELETON_WORLD_UP_VECTOR ? SKELETON_NO_JOINT : slot_count));
    for (uint64_t i = 0; i < 12; ++i)
        if (check->bytes[reserved + i] != 0)
            return skeleton_refuse_(check, reserved + i, "reserved[%llu] is not 0", SKELETON_U_(i));
    return 1;
}

static inline int skeleton_check_numbers_(skeleton_check_* check, const skeleton_list_* list,
                                          uint64_t at) {
    const uint64_t weight = at + offsetof(skeleton_constraint, weight);
    const uint64_t vectors = at + sizeof(skeleton_constraint);
    if (skeleton_is_nan_(check, weight))
        return skeleton_refuse_(check, weight, "weight is not a number");
    for (uint64_t i = 0; i < 3 && list->vectors[i] != NULL; ++i)
        if (!skeleton_check_floats_(check, vectors + 16 * i, 4, 1, list->vectors[i])) return 0;
    if (list->fourth != SKELETON_ANY_ && skeleton_u32_(check, vectors + 12) != list->fourth)
        return skeleton_refuse_(check, vectors + 12, "%s[3] is not %s", list->vectors[0],
                                list->fourth == 0 ? "0" : "1");
    return 1;
}

static inline int skeleton_check_entry_(skeleton_check_* check, const skeleton_list_* list,
                                        uint64_t at, uint32_t constrained_count,
                                        uint32_t slot_count) {
    const uint32_t constrained =
        skeleton_u32_(check, at + offsetof(skeleton_constraint, constrained));
    const uint32_t target = skeleton_u32_(check, at + offsetof(skeleton_constraint, target));
    if (constrained >= constrained_count)
        return skeleton_refuse_(check, at + offsetof(skeleton_constraint, constrained),
                                "constrained is %llu, not below %llu", SKELETON_U_(constrained),
                                SKELETON_U_(constrained_count));
    if (target < constrained_count || target >= slot_count)
        return skeleton_refuse_(check, at + offsetof(skeleton_constraint, target),
                                "target is %llu, not from %llu to below %llu", SKELETON_U_(target),
                                SKELETON_U_(constrained_count), SKELETON_U_(slot_count));
    return skeleton_check_numbers_(check, list, at);
}

static inline int skeleton_check_list_(skeleton_check_* check, const skeleton_list_* list,
                                       uint64_t block, uint64_t place) {
    const uint32_t constrained_count =
        skeleton_u16_(check, block + offsetof(skeleton_joint_constraints, constrained_count));
    const uint32_t slot_count =
        constrained_count +
        skeleton_u16_(check, block + offsetof(skeleton_joint_constraints, target_count));
    const uint32_t count = skeleton_u16_(check, block + list->count_field);
    int is_sound = 1;
    for (uint32_t entry = 0; is_sound && entry < count; ++entry) {
        const uint64_t at = place + entry * list->entry_bytes;
        skeleton_enter_(check, list->name, entry);
        is_sound = skeleton_check_flags_(check, list, at, entry, count) &&
                   skeleton_check_entry_(check, list, at, constrained_count, slot_count) &&
                   (list->entry_bytes != sizeof(skeleton_aim_constraint) ||
                    skeleton_check_world_up_(check, at, slot_count));
        skeleton_leave_(check);
    }
    return is_sound;
}

/* Gives the number of entries. */
static inline uint32_t skeleton_check_lists_(skeleton_check_* check, skeleton_row_* tables,
                                             uint64_t at) {
    static const skeleton_list_ kLists[5] = {
        {"orientations",
         offsetof(skeleton_joint_constraints, orientations),
         offsetof(skeleton_joint_constraints, orientation_count),
         sizeof(skeleton_constraint),
         {NULL, NULL, NULL},
         SKELETON_ANY_},
        {"translations",
         offsetof(skeleton_joint_constraints, translations),
         offsetof(skeleton_joint_constraints, translation_count),
         sizeof(skeleton_offset_constraint),
         {"offset", NULL, NULL},
         SKELETON_ANY_},
        {"scales",
         offsetof(skeleton_joint_constraints, scales),
         offsetof(skeleton_joint_constraints, scale_count),
         sizeof(skeleton_offset_constraint),
         {"offset", NULL, NULL},
         0},
        {"aims",
         offsetof(skeleton_joint_constraints, aims),
         offsetof(skeleton_joint_constraints, aim_count),
         sizeof(skeleton_aim_constraint),
         {"aim", "up", "global_up"},
         SKELETON_ANY_},
        {"parents",
         offsetof(skeleton_joint_constraints, parents),
         offsetof(skeleton_joint_constraints, parent_count),
         sizeof(skeleton_parent_constraint),
         {"translation", "rotation", NULL},
         0x3F800000u},
    };
    uint32_t entries = 0;
    for (int i = 0; i < 5; ++i) {
        const uint32_t count = skeleton_u16_(check, at + kLists[i].count_field);
        const uint64_t place = skeleton_next_table_(check, tables, at + kLists[i].offset_field,
                                                    count * kLists[i].entry_bytes, kLists[i].name);
        if (place != 0) skeleton_check_list_(check, kLists + i, at, place);
        entries += count;
    }
    return entries;
}

static inline void skeleton_check_constraints_(skeleton_check_* check,
                                               const skeleton_block_* block) {
    const uint64_t at = block->at;
    const uint64_t header_end = at + sizeof(skeleton_joint_constraints);
    skeleton_row_ tables = skeleton_begin_row_(header_end, header_end, block->limit);
    uint32_t constrained_count, target_count;
    uint64_t joints;
    int is_sound;
    if (block->limit - at < sizeof(skeleton_joint_constraints)) {
        skeleton_refuse_(check, at + offsetof(skeleton_joint_constraints, end),
                         "end is at 0x%04llX at most, within the header of its constraints",
                         SKELETON_U_(block->limit));
        return;
    }
    constrained_count =
        skeleton_u16_(check, at + offsetof(skeleton_joint_constraints, constrained_count));
    target_count = skeleton_u16_(check, at + offsetof(skeleton_joint_constraints, target_count));
    is_sound = block->is_header_sound;
    if (is_sound && skeleton_u16_(check, at + offsetof(skeleton_joint_constraints, reserved)) != 0)
        is_sound = skeleton_refuse_(check, at + offsetof(skeleton_joint_constraints, reserved),
                                    "reserved is not 0");
    joints = skeleton_next_table_(check, &tables, at + offsetof(skeleton_joint_constraints, joints),
                                  2 * (SKELETON_CAST(uint64_t, constrained_count) + target_count),
                                  "joints");
    if (joints != 0 && skeleton_check_slots_(check, joints, 0, constrained_count))
        skeleton_check_slots_(check, joints, constrained_count, target_count);
    if (skeleton_check_lists_(check, &tables, at) == 0 && is_sound)
        is_sound =
            skeleton_refuse_(check, at + offsetof(skeleton_joint_constraints, orientation_count),
                             "orientation_count is 0, as are the counts of the other lists");
    if (is_sound) skeleton_check_block_end_(check, &tables, block);
}

#endif
