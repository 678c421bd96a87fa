/* A block of joint constraints: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_CONSTRAINTS_H
#define SKELETON_VERIFY_CONSTRAINTS_H

#include "skeleton_check.h"

/* One of the five lists of a block: where its fields stand in the header, and what its entries are.
 */
typedef struct skeleton_list_ {
    const char* name;
    size_t offset_field, count_field;
    uint64_t entry_bytes;
    uint32_t float_count; /* numbers behind the common part */
} skeleton_list_;

/* The joints of one half of the table, each above the one in front of it. */
static inline int skeleton_check_slots_(skeleton_check_* check, uint64_t table, uint32_t first,
                                        uint32_t count) {
    const uint32_t joint_count = skeleton_u16_(check, offsetof(skeleton_header, joint_count));
    for (uint32_t slot = first; slot < first + count; ++slot) {
        const uint64_t at = table + 2 * SKELETON_CAST(uint64_t, slot);
        const uint32_t joint = skeleton_u16_(check, at);
        if (joint >= joint_count)
            return skeleton_refuse_(check, at, "joints[%lu] is %lu, not below %lu",
                                    SKELETON_U_(slot), SKELETON_U_(joint),
                                    SKELETON_U_(joint_count));
        if (slot > first && joint <= skeleton_u16_(check, at - 2))
            return skeleton_refuse_(check, at, "joints[%lu] is %lu, not above %lu",
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
        return skeleton_refuse_(check, at, "%s[%lu].flags is %lu, above 3", list->name,
                                SKELETON_U_(entry), SKELETON_U_(flags));
    if (begins != is_ended)
        return skeleton_refuse_(
            check, at, "%s[%lu].flags is %lu, %s", list->name, SKELETON_U_(entry),
            SKELETON_U_(flags),
            begins ? "though the constraint in front has no last target" : "no first target");
    if (entry + 1 == count && (flags & SKELETON_CONSTRAINT_LAST_TARGET) == 0)
        return skeleton_refuse_(check, at, "%s[%lu].flags is %lu, no last target", list->name,
                                SKELETON_U_(entry), SKELETON_U_(flags));
    if (!begins &&
        constrained != skeleton_u32_(check, at - list->entry_bytes +
                                                offsetof(skeleton_constraint, constrained)))
        return skeleton_refuse_(check, at + offsetof(skeleton_constraint, constrained),
                                "%s[%lu].constrained is %lu, another one within one constraint",
                                list->name, SKELETON_U_(entry), SKELETON_U_(constrained));
    return 1;
}

/* What an aim entry has behind its vectors. */
static inline int skeleton_check_world_up_(skeleton_check_* check, uint64_t at, uint32_t entry,
                                           uint32_t slot_count) {
    const uint32_t world_up =
        skeleton_u16_(check, at + offsetof(skeleton_aim_constraint, world_up));
    const uint32_t object = skeleton_u16_(check, at + offsetof(skeleton_aim_constraint, up_object));
    const uint64_t reserved = at + offsetof(skeleton_aim_constraint, reserved);
    if (world_up > SKELETON_WORLD_UP_OBJECT_ROTATION)
        return skeleton_refuse_(check, at + offsetof(skeleton_aim_constraint, world_up),
                                "aims[%lu].world_up is %lu, above 2", SKELETON_U_(entry),
                                SKELETON_U_(world_up));
    if (world_up == SKELETON_WORLD_UP_VECTOR ? object != SKELETON_NO_JOINT : object >= slot_count)
        return skeleton_refuse_(
            check, at + offsetof(skeleton_aim_constraint, up_object),
            "aims[%lu].up_object is %lu, not %s%lu", SKELETON_U_(entry), SKELETON_U_(object),
            world_up == SKELETON_WORLD_UP_VECTOR ? "" : "below ",
            SKELETON_U_(world_up == SKELETON_WORLD_UP_VECTOR ? SKELETON_NO_JOINT : slot_count));
    for (uint64_t i = 0; i < 12; ++i)
        if (check->bytes[reserved + i] != 0)
            return skeleton_refuse_(check, reserved + i, "aims[%lu].reserved[%lu] is not 0",
                                    SKELETON_U_(entry), SKELETON_U_(i));
    return 1;
}

/* The fourth element of a vector where the file states it. */
static inline int skeleton_check_fourth_(skeleton_check_* check, const skeleton_list_* list,
                                         uint64_t at, uint32_t entry) {
    const uint64_t fourth = at + sizeof(skeleton_constraint) + 12;
    if (strcmp(list->name, "scales") == 0 && skeleton_u32_(check, fourth) != 0)
        return skeleton_refuse_(check, fourth, "scales[%lu].offset[3] is not 0",
                                SKELETON_U_(entry));
    if (strcmp(list->name, "parents") == 0 && skeleton_u32_(check, fourth) != 0x3F800000u)
        return skeleton_refuse_(check, fourth, "parents[%lu].translation[3] is not 1",
                                SKELETON_U_(entry));
    return 1;
}

static inline int skeleton_check_entry_(skeleton_check_* check, const skeleton_list_* list,
                                        uint64_t at, uint32_t entry, uint32_t constrained_count,
                                        uint32_t slot_count) {
    const uint32_t constrained =
        skeleton_u32_(check, at + offsetof(skeleton_constraint, constrained));
    const uint32_t target = skeleton_u32_(check, at + offsetof(skeleton_constraint, target));
    if (constrained >= constrained_count)
        return skeleton_refuse_(check, at + offsetof(skeleton_constraint, constrained),
                                "%s[%lu].constrained is %lu, not below %lu", list->name,
                                SKELETON_U_(entry), SKELETON_U_(constrained),
                                SKELETON_U_(constrained_count));
    if (target < constrained_count || target >= slot_count)
        return skeleton_refuse_(check, at + offsetof(skeleton_constraint, target),
                                "%s[%lu].target is %lu, not from %lu to below %lu", list->name,
                                SKELETON_U_(entry), SKELETON_U_(target),
                                SKELETON_U_(constrained_count), SKELETON_U_(slot_count));
    for (uint32_t i = 0; i <= list->float_count; ++i) {
        const uint64_t number =
            at + offsetof(skeleton_constraint, weight) + 4 * SKELETON_CAST(uint64_t, i);
        if (skeleton_is_nan_(check, number))
            return skeleton_refuse_(check, number,
                                    "%s[%lu] holds what is not a number, %lu bytes in", list->name,
                                    SKELETON_U_(entry), SKELETON_U_(number - at));
    }
    return skeleton_check_fourth_(check, list, at, entry);
}

/* Sets `end` to the place behind the list. */
static inline int skeleton_check_list_(skeleton_check_* check, const skeleton_list_* list,
                                       uint64_t block, uint64_t place, uint64_t limit,
                                       uint64_t* end) {
    const uint32_t constrained_count =
        skeleton_u16_(check, block + offsetof(skeleton_joint_constraints, constrained_count));
    const uint32_t slot_count =
        constrained_count +
        skeleton_u16_(check, block + offsetof(skeleton_joint_constraints, target_count));
    const uint32_t count = skeleton_u16_(check, block + list->count_field);
    if (!skeleton_check_table_(check, block + list->offset_field, place, place,
                               count * list->entry_bytes, limit, list->name))
        return 0;
    for (uint32_t entry = 0; entry < count; ++entry) {
        const uint64_t at = place + entry * list->entry_bytes;
        if (!skeleton_check_flags_(check, list, at, entry, count) ||
            !skeleton_check_entry_(check, list, at, entry, constrained_count, slot_count))
            return 0;
        if (list->entry_bytes == sizeof(skeleton_aim_constraint) &&
            !skeleton_check_world_up_(check, at, entry, slot_count))
            return 0;
    }
    *end = place + count * list->entry_bytes;
    return 1;
}

/* The block fills the bytes from `at` to `limit`. */
static inline int skeleton_check_constraints_(skeleton_check_* check, uint64_t at, uint64_t limit) {
    static const skeleton_list_ kLists[5] = {
        {"orientations", offsetof(skeleton_joint_constraints, orientations),
         offsetof(skeleton_joint_constraints, orientation_count), sizeof(skeleton_constraint), 0},
        {"translations", offsetof(skeleton_joint_constraints, translations),
         offsetof(skeleton_joint_constraints, translation_count),
         sizeof(skeleton_offset_constraint), 4},
        {"scales", offsetof(skeleton_joint_constraints, scales),
         offsetof(skeleton_joint_constraints, scale_count), sizeof(skeleton_offset_constraint), 4},
        {"aims", offsetof(skeleton_joint_constraints, aims),
         offsetof(skeleton_joint_constraints, aim_count), sizeof(skeleton_aim_constraint), 12},
        {"parents", offsetof(skeleton_joint_constraints, parents),
         offsetof(skeleton_joint_constraints, parent_count), sizeof(skeleton_parent_constraint), 8},
    };
    const uint64_t joints = at + sizeof(skeleton_joint_constraints);
    uint64_t joints_end, place;
    uint32_t constrained_count, target_count;
    if (limit - at < sizeof(skeleton_joint_constraints))
        return skeleton_refuse_(check, at, "ends within the header of its constraints");
    if (!skeleton_check_magic_(check, at, "JC01")) return 0;
    constrained_count =
        skeleton_u16_(check, at + offsetof(skeleton_joint_constraints, constrained_count));
    target_count = skeleton_u16_(check, at + offsetof(skeleton_joint_constraints, target_count));
    joints_end = joints + 2 * (SKELETON_CAST(uint64_t, constrained_count) + target_count);
    place = skeleton_align_(joints_end);
    if (skeleton_u16_(check, at + offsetof(skeleton_joint_constraints, reserved)) != 0)
        return skeleton_refuse_(check, at + offsetof(skeleton_joint_constraints, reserved),
                                "reserved is not 0");
    if (!skeleton_check_table_(check, at + offsetof(skeleton_joint_constraints, joints), joints,
                               joints, joints_end - joints, limit, "joints") ||
        !skeleton_check_slots_(check, joints, 0, constrained_count) ||
        !skeleton_check_slots_(check, joints, constrained_count, target_count))
        return 0;
    if (place > limit)
        return skeleton_refuse_(check, joints_end, "the joints go on beyond the end at 0x%04lX",
                                SKELETON_U_(limit));
    if (!skeleton_check_padding_(check, joints_end, place, "orientations")) return 0;
    for (int i = 0; i < 5; ++i)
        if (!skeleton_check_list_(check, kLists + i, at, place, limit, &place)) return 0;
    if (place == skeleton_align_(joints_end))
        return skeleton_refuse_(check, at, "holds no constraints");
    return skeleton_check_table_(check, at + offsetof(skeleton_joint_constraints, end), place,
                                 place, limit - place, limit, "end") &&
           (place == limit ||
            skeleton_refuse_(check, place, "goes on to 0x%04lX behind its last list",
                             SKELETON_U_(limit)));
}

#endif
