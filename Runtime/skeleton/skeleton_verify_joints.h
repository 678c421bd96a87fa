/* The header and the tables of joints: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_JOINTS_H
#define SKELETON_VERIFY_JOINTS_H

#include "skeleton_check_tables.h"

/* Offsets are signed and have four bytes. */
#define SKELETON_LONGEST_FILE_ 0x7FFFFFFFu

static inline uint32_t skeleton_joint_count_(const skeleton_check_* check) {
    return skeleton_u16_(check, offsetof(skeleton_header, joint_count));
}

/* Nothing else in the header depends on these. */
static inline int skeleton_check_reserved_(skeleton_check_* check) {
    const uint32_t reserved0 = skeleton_u16_(check, offsetof(skeleton_header, reserved0));
    if (reserved0 != 0)
        return skeleton_refuse_(check, offsetof(skeleton_header, reserved0),
                                "reserved0 is %llu, not 0", SKELETON_U_(reserved0));
    for (uint64_t i = 0; i < 3; ++i) {
        const uint64_t at = offsetof(skeleton_header, reserved1) + 4 * i;
        if (skeleton_u32_(check, at) != 0)
            return skeleton_refuse_(check, at, "reserved1[%llu] is not 0", SKELETON_U_(i));
    }
    return 1;
}

/* False for what cannot be looked at as a skeleton file. */
static inline int skeleton_check_header_(skeleton_check_* check) {
    const uint64_t size = sizeof(skeleton_header);
    if (check->size < 4)
        return skeleton_refuse_(check, check->size, "the file ends within its magic");
    if (!skeleton_check_magic_(check, 0, "SK08")) return 0;
    if (check->size < size)
        return skeleton_refuse_(check, check->size, "the file ends within its header");
    if (check->size > SKELETON_LONGEST_FILE_)
        return skeleton_refuse_(check, SKELETON_LONGEST_FILE_,
                                "the file is longer than its offsets reach");
    if (skeleton_u32_(check, offsetof(skeleton_header, joints)) != 36)
        return skeleton_refuse_(
            check, offsetof(skeleton_header, joints), "joints is 0x%08llX, 36 in no byte order",
            SKELETON_U_(skeleton_u32_(check, offsetof(skeleton_header, joints))));
    if (skeleton_joint_count_(check) == 0)
        return skeleton_refuse_(check, offsetof(skeleton_header, joint_count), "joint_count is 0");
    skeleton_check_reserved_(check);
    return 1;
}

/* Joints already seen, a bit for each index. */
typedef struct skeleton_seen_ {
    unsigned char bits[0x10000 / 8];
} skeleton_seen_;

/* Marks a joint; false if it was marked before. */
static inline int skeleton_see_(skeleton_seen_* seen, uint32_t joint) {
    const unsigned bit = 1u << (joint & 7u);
    const int is_new = (seen->bits[joint / 8] & bit) == 0;
    seen->bits[joint / 8] = SKELETON_CAST(unsigned char, seen->bits[joint / 8] | bit);
    return is_new;
}

/* The children of `parent` are chained by ascending index; each is marked. */
static inline int skeleton_check_chain_(skeleton_check_* check, uint64_t table, uint32_t parent,
                                        skeleton_seen_* seen) {
    const uint32_t count = skeleton_joint_count_(check);
    uint32_t last = parent; /* the joint whose link is looked at */
    uint64_t at =
        table + 8 * SKELETON_CAST(uint64_t, parent) + offsetof(skeleton_joint, first_child);
    const char* field = "first_child";
    for (;;) {
        const uint32_t child = skeleton_u16_(check, at);
        if (child == SKELETON_NO_JOINT) return 1;
        if (child >= count)
            return skeleton_refuse_(check, at, "joints[%llu].%s is %llu, not below %llu",
                                    SKELETON_U_(last), field, SKELETON_U_(child),
                                    SKELETON_U_(count));
        if (child <= last)
            return skeleton_refuse_(check, at, "joints[%llu].%s is %llu, not above %llu",
                                    SKELETON_U_(last), field, SKELETON_U_(child),
                                    SKELETON_U_(last));
        if (skeleton_u16_(check, table + 8 * SKELETON_CAST(uint64_t, child) +
                                     offsetof(skeleton_joint, parent)) != parent)
            return skeleton_refuse_(check, at,
                                    "joints[%llu].%s is %llu, whose parent is another one",
                                    SKELETON_U_(last), field, SKELETON_U_(child));
        skeleton_see_(seen, child);
        last = child;
        at = table + 8 * SKELETON_CAST(uint64_t, child) + offsetof(skeleton_joint, next_sibling);
        field = "next_sibling";
    }
}

static inline int skeleton_check_joints_(skeleton_check_* check, uint64_t table) {
    const uint32_t count = skeleton_joint_count_(check);
    skeleton_seen_ seen;
    memset(&seen, 0, sizeof seen);
    for (uint32_t joint = 0; joint < count; ++joint) {
        const uint64_t at = table + 8 * SKELETON_CAST(uint64_t, joint);
        const uint32_t flags = skeleton_u16_(check, at);
        const uint32_t parent = skeleton_u16_(check, at + offsetof(skeleton_joint, parent));
        const uint32_t sibling = skeleton_u16_(check, at + offsetof(skeleton_joint, next_sibling));
        if (flags > SKELETON_JOINT_SCALE_COMPENSATE)
            return skeleton_refuse_(check, at, "joints[%llu].flags is 0x%04llX, not 0 or 1",
                                    SKELETON_U_(joint), SKELETON_U_(flags));
        if (parent != SKELETON_NO_JOINT && parent >= joint)
            return skeleton_refuse_(check, at + offsetof(skeleton_joint, parent),
                                    "joints[%llu].parent is %llu, not below %llu",
                                    SKELETON_U_(joint), SKELETON_U_(parent), SKELETON_U_(joint));
        if (parent == SKELETON_NO_JOINT && sibling != SKELETON_NO_JOINT)
            return skeleton_refuse_(
                check, at + offsetof(skeleton_joint, next_sibling),
                "joints[%llu].next_sibling is %llu, though roots are not chained",
                SKELETON_U_(joint), SKELETON_U_(sibling));
    }
    for (uint32_t joint = 0; joint < count; ++joint)
        if (!skeleton_check_chain_(check, table, joint, &seen)) return 0;
    for (uint32_t joint = 0; joint < count; ++joint) {
        const uint64_t at =
            table + 8 * SKELETON_CAST(uint64_t, joint) + offsetof(skeleton_joint, parent);
        const uint32_t parent = skeleton_u16_(check, at);
        if (parent != SKELETON_NO_JOINT && skeleton_see_(&seen, joint))
            return skeleton_refuse_(
                check, at, "joints[%llu].parent is %llu, whose children do not name the joint",
                SKELETON_U_(joint), SKELETON_U_(parent));
    }
    return 1;
}

static inline int skeleton_check_transforms_(skeleton_check_* check, uint64_t table) {
    static const char* const kParts[3] = {"rotation", "translation", "scale"};
    const uint32_t count = skeleton_joint_count_(check);
    for (uint32_t i = 0; i < count * 12; ++i) {
        const uint64_t at = table + 4 * SKELETON_CAST(uint64_t, i);
        const char* const part = kParts[i / 4 % 3];
        if (skeleton_is_nan_(check, at))
            return skeleton_refuse_(check, at, "transforms[%llu].%s[%llu] is not a number",
                                    SKELETON_U_(i / 12), part, SKELETON_U_(i % 4));
        if (i % 4 == 3 && i % 12 != 3 && skeleton_u32_(check, at) != 0)
            return skeleton_refuse_(check, at, "transforms[%llu].%s[3] is not 0",
                                    SKELETON_U_(i / 12), part);
    }
    return 1;
}

/* Sets `is_full` to whether every joint has its record. */
static inline int skeleton_check_hashes_(skeleton_check_* check, uint64_t table, int* is_full) {
    const uint32_t count = skeleton_joint_count_(check);
    uint32_t previous = 0;
    skeleton_seen_ seen;
    memset(&seen, 0, sizeof seen);
    *is_full = 1;
    for (uint32_t i = 0; i < count; ++i) {
        const uint64_t at = table + 8 * SKELETON_CAST(uint64_t, i);
        const uint32_t hash = skeleton_u32_(check, at);
        const uint32_t joint = skeleton_u32_(check, at + offsetof(skeleton_hash, joint));
        if (hash <= previous)
            return skeleton_refuse_(check, at,
                                    "hashes[%llu].name_hash is 0x%08llX, not above 0x%08llX",
                                    SKELETON_U_(i), SKELETON_U_(hash), SKELETON_U_(previous));
        if (hash == 0xFFFFFFFFu) {
            *is_full = 0;
            if (joint != 0xFFFFFFFFu)
                return skeleton_refuse_(check, at + 4,
                                        "hashes[%llu].joint is 0x%08llX, not -1 as in a filler",
                                        SKELETON_U_(i), SKELETON_U_(joint));
            previous = 0xFFFFFFFEu; /* only another filler may follow */
            continue;
        }
        if (joint >= count)
            return skeleton_refuse_(check, at + 4, "hashes[%llu].joint is 0x%08llX, not below %llu",
                                    SKELETON_U_(i), SKELETON_U_(joint), SKELETON_U_(count));
        if (!skeleton_see_(&seen, joint))
            return skeleton_refuse_(check, at + 4,
                                    "hashes[%llu].joint is %llu, which has a record already",
                                    SKELETON_U_(i), SKELETON_U_(joint));
        previous = hash;
    }
    return 1;
}

static inline uint32_t skeleton_rotate_(uint32_t value, unsigned bits) {
    return value << bits | value >> (32 - bits);
}

/* A link as the signature takes it: a signed 16-bit number, widened. */
static inline uint32_t skeleton_widen_(uint32_t link) {
    return link < 0x8000u ? link : link | 0xFFFF0000u;
}

#define SKELETON_BATCH_ 1024u

/* Both tables are sound and every joint has its record. Joints are taken in batches: the table
 * leads from hashes to joints, and there is no memory for its inverse. */
static inline int skeleton_check_signature_(skeleton_check_* check, uint64_t joints,
                                            uint64_t hashes) {
    const uint32_t count = skeleton_joint_count_(check);
    const uint32_t stated = skeleton_u32_(check, offsetof(skeleton_header, signature));
    uint32_t signature = 0;
    uint32_t names[SKELETON_BATCH_] = {0};
    for (uint32_t first = 0; first < count; first += SKELETON_BATCH_) {
        for (uint32_t i = 0; i < count; ++i) {
            const uint64_t at = hashes + 8 * SKELETON_CAST(uint64_t, i);
            const uint32_t place = skeleton_u32_(check, at + 4) - first;
            if (place < SKELETON_BATCH_) names[place] = skeleton_u32_(check, at);
        }
        for (uint32_t i = first; i < count && i < first + SKELETON_BATCH_; ++i) {
            const uint64_t at = joints + 8 * SKELETON_CAST(uint64_t, i);
            const uint32_t parent =
                skeleton_widen_(skeleton_u16_(check, at + offsetof(skeleton_joint, parent)));
            const uint32_t sibling =
                skeleton_widen_(skeleton_u16_(check, at + offsetof(skeleton_joint, next_sibling)));
            const uint32_t child =
                skeleton_widen_(skeleton_u16_(check, at + offsetof(skeleton_joint, first_child)));
            const uint32_t x = signature ^ names[i - first];
            const uint32_t a = skeleton_rotate_(((parent + 923u) * (x >> 2)) ^ x, 12);
            const uint32_t b = skeleton_rotate_(((sibling + 121u) * (a >> 3)) ^ a, 7);
            signature = skeleton_rotate_(((child + 357u) * (b >> 1)) ^ b, 21);
        }
    }
    if (signature == stated) return 1;
    return skeleton_refuse_(check, offsetof(skeleton_header, signature),
                            "signature is 0x%08llX, the joints make 0x%08llX", SKELETON_U_(stated),
                            SKELETON_U_(signature));
}

/* One row: joints below `limit` stay, for each other one the nearest that stays above it in the
 * tree stands in. `joints` is 0 when that table is not where it should be; then, and at a joint
 * whose parent is none, that one cannot be known, but it must be one that stays. */
static inline int skeleton_check_remap_(skeleton_check_* check, uint64_t joints, uint64_t row,
                                        uint32_t number, int64_t limit) {
    const uint32_t count = skeleton_joint_count_(check);
    /* Counts keep their low 16 bits: a set of more members than that empties the row whatever the
     * sum says. */
    if (skeleton_u16_(check, row) == SKELETON_NO_JOINT) limit = 0;
    for (uint32_t joint = 0; joint < count; ++joint) {
        const uint64_t at = row + 2 * SKELETON_CAST(uint64_t, joint);
        const uint32_t stated = skeleton_u16_(check, at);
        uint32_t wanted = SKELETON_NO_JOINT;
        if (joint < limit)
            wanted = joint;
        else {
            const uint64_t link =
                joints + 8 * SKELETON_CAST(uint64_t, joint) + offsetof(skeleton_joint, parent);
            const uint32_t parent = joints == 0 ? joint : skeleton_u16_(check, link);
            if (parent < joint)
                wanted = skeleton_u16_(check, row + 2 * SKELETON_CAST(uint64_t, parent));
            else if (parent != SKELETON_NO_JOINT) {
                if (stated == SKELETON_NO_JOINT || stated < limit) continue;
                return skeleton_refuse_(
                    check, at, "lods.remap[%llu][%llu] is %llu, which does not stay",
                    SKELETON_U_(number), SKELETON_U_(joint), SKELETON_U_(stated));
            }
        }
        if (stated != wanted)
            return skeleton_refuse_(check, at, "lods.remap[%llu][%llu] is %llu, not %llu",
                                    SKELETON_U_(number), SKELETON_U_(joint), SKELETON_U_(stated),
                                    SKELETON_U_(wanted));
    }
    return 1;
}

/* The table lies within the file. */
static inline int skeleton_check_remaps_(skeleton_check_* check, uint64_t joints, uint64_t table) {
    const uint32_t count = skeleton_joint_count_(check);
    const uint32_t rows = skeleton_u32_(check, table);
    const uint64_t members = table + sizeof(skeleton_lods);
    int64_t limit = count;
    for (uint32_t row = 0; row < rows; ++row)
        limit -= skeleton_u16_(check, members + 2 * SKELETON_CAST(uint64_t, row));
    for (uint32_t row = 0; row < rows; ++row) {
        const uint64_t remap =
            members + 2 * SKELETON_CAST(uint64_t, rows) + 2 * SKELETON_CAST(uint64_t, row) * count;
        if (!skeleton_check_remap_(check, joints, remap, row, limit)) return 0;
        limit += skeleton_u16_(check, members + 2 * SKELETON_CAST(uint64_t, row));
    }
    return 1;
}

static inline int skeleton_check_lods_(skeleton_check_* check, skeleton_row_* tables,
                                       uint64_t joints) {
    const uint64_t count = skeleton_joint_count_(check);
    const uint64_t lods = skeleton_next_table_(check, tables, offsetof(skeleton_header, lods),
                                               sizeof(skeleton_lods), "lods");
    uint64_t rows, end;
    skeleton_end_at_(tables, 0);
    if (lods == 0) return 0;
    rows = skeleton_u32_(check, lods);
    end = lods + sizeof(skeleton_lods) + rows * (2 + 2 * count);
    if (rows == 0) return skeleton_refuse_(check, lods, "lods.count is 0");
    if (end > check->size)
        return skeleton_refuse_(
            check, lods,
            "lods.count is %llu: the rows go on to 0x%04llX, beyond the end at 0x%04llX",
            SKELETON_U_(rows), SKELETON_U_(end), SKELETON_U_(check->size));
    skeleton_end_at_(tables, end);
    return skeleton_check_remaps_(check, joints, lods);
}

/* Each table that is in its place is looked into, whatever the others are like. */
static inline void skeleton_check_joint_tables_(skeleton_check_* check, skeleton_row_* tables) {
    const uint64_t count = skeleton_joint_count_(check);
    const uint64_t joints =
        skeleton_next_table_(check, tables, offsetof(skeleton_header, joints), 8 * count, "joints");
    const int are_joints_sound = joints != 0 && skeleton_check_joints_(check, joints);
    const uint64_t transforms = skeleton_next_table_(
        check, tables, offsetof(skeleton_header, transforms), 48 * count, "transforms");
    uint64_t hashes;
    int is_full = 0;
    if (transforms != 0) skeleton_check_transforms_(check, transforms);
    hashes =
        skeleton_next_table_(check, tables, offsetof(skeleton_header, hashes), 8 * count, "hashes");
    if (hashes != 0 && skeleton_check_hashes_(check, hashes, &is_full) && is_full &&
        are_joints_sound)
        skeleton_check_signature_(check, joints, hashes);
    if (skeleton_u32_(check, offsetof(skeleton_header, lods)) != 0)
        skeleton_check_lods_(check, tables, joints);
}

#endif
