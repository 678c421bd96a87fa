/* Where the tables of a file stand: part of skeleton_verify. */
#ifndef SKELETON_CHECK_TABLES_H
#define SKELETON_CHECK_TABLES_H

#include "skeleton_check.h"

/* Bytes between two tables are zeros. */
static inline int skeleton_check_padding_(skeleton_check_* check, uint64_t from, uint64_t to,
                                          const char* table) {
    for (uint64_t at = from; at < to; ++at)
        if (check->bytes[at] != 0)
            return skeleton_refuse_(check, at, "padding in front of %s is 0x%02llX, not 0", table,
                                    SKELETON_U_(check->bytes[at]));
    return 1;
}

/* The offset at `field` leads to `place`, where the table stands, and `bytes` from there end within
 * `limit`. */
static inline int skeleton_check_place_(skeleton_check_* check, uint64_t field, uint64_t place,
                                        uint64_t bytes, uint64_t limit, const char* table) {
    const int64_t target = skeleton_target_(check, field);
    if (skeleton_u32_(check, field) == 0)
        return skeleton_refuse_(check, field, "%s is 0: there is no table", table);
    if (target != SKELETON_CAST(int64_t, place))
        return skeleton_refuse_(check, field, "%s leads to %s0x%04llX, not to 0x%04llX", table,
                                target < 0 ? "-" : "", SKELETON_U_(target < 0 ? -target : target),
                                SKELETON_U_(place));
    if (place > limit || bytes > limit - place)
        return skeleton_refuse_(check, field, "%s goes on to 0x%04llX, beyond the end at 0x%04llX",
                                table, SKELETON_U_(place + bytes), SKELETON_U_(limit));
    return 1;
}

/* The same without a word. */
static inline int skeleton_is_at_(const skeleton_check_* check, uint64_t field, uint64_t place,
                                  uint64_t bytes, uint64_t limit) {
    return skeleton_u32_(check, field) != 0 &&
           skeleton_target_(check, field) == SKELETON_CAST(int64_t, place) && place <= limit &&
           bytes <= limit - place;
}

/* `bytes` that begin on a 16-byte boundary where the offset at `field` leads could stand from `low`
 * to `limit`. */
static inline int skeleton_can_lead_(const skeleton_check_* check, uint64_t field, uint64_t bytes,
                                     uint64_t low, uint64_t limit) {
    const int64_t target = skeleton_target_(check, field);
    return skeleton_u32_(check, field) != 0 && target >= SKELETON_CAST(int64_t, low) &&
           target % 16 == 0 && target <= SKELETON_CAST(int64_t, limit) &&
           bytes <= limit - SKELETON_CAST(uint64_t, target);
}

/* Tables stand one behind the other, each on the first 16-byte boundary. `ends` is where the last
 * one ended: as the counts say, and, where its offset led elsewhere, as seen from there. 0 is for
 * what a broken count hides: then the next table is where its own offset leads. */
typedef struct skeleton_row_ {
    uint64_t low, limit; /* of all of them */
    uint64_t ends[2];
} skeleton_row_;

static inline skeleton_row_ skeleton_begin_row_(uint64_t low, uint64_t first, uint64_t limit) {
    skeleton_row_ row;
    row.low = low;
    row.limit = limit;
    row.ends[0] = first;
    row.ends[1] = 0;
    return row;
}

static inline void skeleton_end_at_(skeleton_row_* row, uint64_t end) {
    row->ends[0] = end;
    row->ends[1] = 0;
}

/* Why the offset at `field` cannot be right, wherever the table should be. */
static inline uint64_t skeleton_refuse_table_(skeleton_check_* check, const skeleton_row_* row,
                                              uint64_t field, uint64_t bytes, const char* table) {
    const int64_t target = skeleton_target_(check, field);
    if (skeleton_u32_(check, field) == 0)
        skeleton_refuse_(check, field, "%s is 0: there is no table", table);
    else if (target < SKELETON_CAST(int64_t, row->low) || target % 16 != 0)
        skeleton_refuse_(check, field, "%s leads to %s0x%04llX, where it cannot begin", table,
                         target < 0 ? "-" : "", SKELETON_U_(target < 0 ? -target : target));
    else
        skeleton_refuse_(check, field, "%s goes on to 0x%04llX, beyond the end at 0x%04llX", table,
                         SKELETON_U_(SKELETON_CAST(uint64_t, target) + bytes),
                         SKELETON_U_(row->limit));
    return 0;
}

/* The place of the next table, of this many bytes, to which the offset at `field` leads; 0, and a
 * fault, if it cannot be walked. Tables behind it can be found in both cases. */
static inline uint64_t skeleton_next_table_(skeleton_check_* check, skeleton_row_* row,
                                            uint64_t field, uint64_t bytes, const char* table) {
    const int64_t target = skeleton_target_(check, field);
    const int is_other =
        row->ends[0] == 0 ||
        (row->ends[1] != 0 && target == SKELETON_CAST(int64_t, skeleton_align_(row->ends[1])));
    const uint64_t before = row->ends[is_other];
    const uint64_t place = skeleton_align_(before);
    const int is_room = before != 0 && place <= row->limit && bytes <= row->limit - place;
    const int can_lead = skeleton_can_lead_(check, field, bytes, row->low, row->limit);
    row->ends[0] = is_room ? place + bytes : 0;
    row->ends[1] = can_lead ? SKELETON_CAST(uint64_t, target) + bytes : 0;
    if (before == 0) {
        if (!can_lead) return skeleton_refuse_table_(check, row, field, bytes, table);
        return SKELETON_CAST(uint64_t, target);
    }
    if (!skeleton_check_place_(check, field, place, bytes, row->limit, table) ||
        !skeleton_check_padding_(check, before, place, table))
        return 0;
    return place;
}

/* An item. */
typedef struct skeleton_block_ {
    uint64_t at, limit;  /* nothing of it goes on behind the limit */
    int is_limit_end;    /* the next part of the file begins there */
    int has_keys;        /* driven keys, not joint constraints */
    int is_header_sound; /* no fault of it has been noted */
} skeleton_block_;

/* What a block's header leads to behind its last table. */
static inline int skeleton_check_block_end_(skeleton_check_* check, skeleton_row_* tables,
                                            const skeleton_block_* block) {
    const uint64_t end = skeleton_next_table_(check, tables, block->at + 4, 0, "end");
    if (end == 0) return 0;
    if (!block->is_limit_end || end == block->limit) return 1;
    return skeleton_refuse_(check, block->at + 4,
                            "end leads to 0x%04llX, but the item goes on to 0x%04llX",
                            SKELETON_U_(end), SKELETON_U_(block->limit));
}

#endif
