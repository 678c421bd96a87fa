/* The procedural data: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_PROCEDURAL_H
#define SKELETON_VERIFY_PROCEDURAL_H

#include "skeleton_check.h"
#include "skeleton_verify_constraints.h"
#include "skeleton_verify_driven.h"

/* One item fills the bytes from `at` to `end`. */
static inline void skeleton_check_item_(skeleton_check_* check, uint64_t procedural, uint32_t place,
                                        uint32_t kind, uint64_t at, uint64_t end) {
    check->item = place;
    if (kind == SKELETON_ITEM_DRIVEN_KEYS)
        skeleton_check_driven_keys_(check, procedural, at, end);
    else
        skeleton_check_constraints_(check, at, end);
    check->item = -1;
}

/* Every item starts where the one in front of it ends, on a 16-byte boundary. */
static inline int skeleton_check_item_table_(skeleton_check_* check, uint64_t kinds, uint64_t items,
                                             uint32_t count, uint64_t items_end) {
    const uint64_t first = skeleton_align_(items + 4 * SKELETON_CAST(uint64_t, count));
    uint64_t previous = first;
    for (uint32_t i = 0; i < count; ++i) {
        const uint64_t field = items + 4 * SKELETON_CAST(uint64_t, i);
        const uint32_t kind = skeleton_u32_(check, kinds + 4 * SKELETON_CAST(uint64_t, i));
        const int64_t target = skeleton_target_(check, field);
        const uint64_t at = SKELETON_CAST(uint64_t, target < 0 ? 0 : target);
        if (kind != SKELETON_ITEM_DRIVEN_KEYS && kind != SKELETON_ITEM_JOINT_CONSTRAINTS)
            return skeleton_refuse_(check, kinds + 4 * SKELETON_CAST(uint64_t, i),
                                    "item_kinds[%lu] is %lu, not 0 or 1", SKELETON_U_(i),
                                    SKELETON_U_(kind));
        if (i == 0 ? at != first : at <= previous || at % 16 != 0)
            return skeleton_refuse_(check, field,
                                    "items[%lu] leads to 0x%04lX, where no item begins",
                                    SKELETON_U_(i), SKELETON_U_(at));
        if (at >= items_end)
            return skeleton_refuse_(check, field,
                                    "items[%lu] leads to 0x%04lX, behind the items' end at 0x%04lX",
                                    SKELETON_U_(i), SKELETON_U_(at), SKELETON_U_(items_end));
        previous = at;
    }
    return skeleton_check_padding_(check, items + 4 * SKELETON_CAST(uint64_t, count), first,
                                   "items");
}

/* A table of external channels, at `place` if it has entries; `end` becomes the first byte behind
 * it. */
static inline int skeleton_check_channels_(skeleton_check_* check, uint64_t count_field,
                                           uint64_t before, uint64_t place, uint32_t most_kind,
                                           const char* table, uint64_t* end) {
    const uint32_t count = skeleton_u32_(check, count_field);
    const uint64_t bytes = 8 * SKELETON_CAST(uint64_t, count);
    *end = place;
    if (count == 0) {
        if (skeleton_u32_(check, count_field + 4) == 0) return 1;
        return skeleton_refuse_(check, count_field + 4, "%s has an offset, but no entries", table);
    }
    if (!skeleton_check_table_(check, count_field + 4, before, place, bytes, check->size, table))
        return 0;
    *end = place + bytes;
    for (uint32_t i = 0; i < count; ++i) {
        const uint64_t at = place + 8 * SKELETON_CAST(uint64_t, i);
        const uint32_t hash = skeleton_u32_(check, at);
        const uint32_t kind = skeleton_u32_(check, at + 4);
        if (i > 0 && hash <= skeleton_u32_(check, at - 8))
            return skeleton_refuse_(check, at, "%s[%lu].channel_hash is 0x%08lX, not above 0x%08lX",
                                    table, SKELETON_U_(i), SKELETON_U_(hash),
                                    SKELETON_U_(skeleton_u32_(check, at - 8)));
        if (kind > most_kind)
            return skeleton_refuse_(check, at + 4, "%s[%lu].kind is %lu, above %lu", table,
                                    SKELETON_U_(i), SKELETON_U_(kind), SKELETON_U_(most_kind));
    }
    return 1;
}

/* The file ends at `end`. */
static inline int skeleton_check_end_(skeleton_check_* check, uint64_t end) {
    if (check->size == end) return 1;
    return skeleton_refuse_(check, end,
                            "the file goes on to 0x%04lX, though everything in it ends here",
                            SKELETON_U_(check->size));
}

/* The block's tables, without the items' contents. */
static inline int skeleton_check_block_(skeleton_check_* check, uint64_t block,
                                        uint64_t* items_end) {
    const uint64_t kinds = block + sizeof(skeleton_procedural);
    uint64_t items, inputs_end, outputs_end;
    uint32_t count;
    if (!skeleton_check_magic_(check, block, "PJ01")) return 0;
    count = skeleton_u32_(check, block + offsetof(skeleton_procedural, item_count));
    items = kinds + 4 * SKELETON_CAST(uint64_t, count);
    if (count == 0)
        return skeleton_refuse_(check, block + offsetof(skeleton_procedural, item_count),
                                "item_count is 0");
    if (!skeleton_check_table_(check, block + offsetof(skeleton_procedural, item_kinds), kinds,
                               kinds, items - kinds, check->size, "item_kinds") ||
        !skeleton_check_table_(check, block + offsetof(skeleton_procedural, items), items, items,
                               items - kinds, check->size, "items"))
        return 0;
    {
        const uint64_t field = block + offsetof(skeleton_procedural, items_end);
        const int64_t target = skeleton_target_(check, field);
        *items_end = SKELETON_CAST(uint64_t, target < 0 ? 0 : target);
        if (*items_end <= items || *items_end > check->size || *items_end % 16 != 0)
            return skeleton_refuse_(check, field,
                                    "items_end leads to 0x%04lX, where no items can end",
                                    SKELETON_U_(*items_end));
    }
    if (!skeleton_check_item_table_(check, kinds, items, count, *items_end)) return 0;
    if (!skeleton_check_channels_(
            check, block + offsetof(skeleton_procedural, external_input_count), *items_end,
            *items_end, SKELETON_EXTERNAL_OTHER, "external_inputs", &inputs_end) ||
        !skeleton_check_channels_(check,
                                  block + offsetof(skeleton_procedural, external_output_count),
                                  inputs_end, skeleton_align_(inputs_end),
                                  SKELETON_EXTERNAL_MATERIAL, "external_outputs", &outputs_end))
        return 0;
    if (!skeleton_check_table_(check, offsetof(skeleton_header, procedural_end), outputs_end,
                               skeleton_align_(outputs_end), 0, check->size, "procedural_end"))
        return 0;
    return skeleton_check_end_(check, skeleton_align_(outputs_end));
}

/* Everything behind the tables of joints, which end at `before`. */
static inline int skeleton_check_procedural_(skeleton_check_* check, uint64_t before) {
    const uint64_t block = skeleton_align_(before);
    const uint64_t kinds = block + sizeof(skeleton_procedural);
    uint64_t items, items_end = 0;
    uint32_t count;
    if (skeleton_u32_(check, offsetof(skeleton_header, procedural)) == 0) {
        if (skeleton_u32_(check, offsetof(skeleton_header, procedural_end)) != 0)
            return skeleton_refuse_(check, offsetof(skeleton_header, procedural_end),
                                    "procedural_end is set, though there is no procedural data");
        return skeleton_check_end_(check, before);
    }
    if (!skeleton_check_table_(check, offsetof(skeleton_header, procedural), before, block,
                               sizeof(skeleton_procedural), check->size, "procedural") ||
        !skeleton_check_block_(check, block, &items_end))
        return 0;
    count = skeleton_u32_(check, block + offsetof(skeleton_procedural, item_count));
    items = kinds + 4 * SKELETON_CAST(uint64_t, count);
    for (uint32_t i = 0; i < count; ++i) {
        const uint64_t field = items + 4 * SKELETON_CAST(uint64_t, i);
        const uint64_t end =
            i + 1 < count ? SKELETON_CAST(uint64_t, skeleton_target_(check, field + 4)) : items_end;
        skeleton_check_item_(check, block, i,
                             skeleton_u32_(check, kinds + 4 * SKELETON_CAST(uint64_t, i)),
                             SKELETON_CAST(uint64_t, skeleton_target_(check, field)), end);
    }
    return 1;
}

#endif
