/* The procedural data: part of skeleton_verify. */
#ifndef SKELETON_VERIFY_PROCEDURAL_H
#define SKELETON_VERIFY_PROCEDURAL_H

#include "skeleton_check_tables.h"
#include "skeleton_verify_constraints.h"
#include "skeleton_verify_driven.h"

/* The list of items, as far as it can be found. */
typedef struct skeleton_items_ {
    uint64_t at;     /* of the block that it belongs to */
    uint64_t kinds;  /* 0 if they are not where they should be: an item's magic tells its kind */
    uint64_t places; /* of the table of offsets */
    uint64_t first;  /* where the first item begins */
    uint64_t end;    /* no item goes on behind this */
    uint32_t count;
    int is_end_known;    /* the items do end there */
    int are_kinds_sound; /* those looked at up to now */
    int are_places_sound;
} skeleton_items_;

/* What an item is can be told by its magic and by its kind. True if it can be walked: where both
 * say the same, or where it is surely in its place; then the magic counts, if it is one. */
static inline int skeleton_check_kind_(skeleton_check_* check, skeleton_items_* items,
                                       uint32_t item, int is_in_place, skeleton_block_* block) {
    const uint64_t field = items->kinds + 4 * SKELETON_CAST(uint64_t, item);
    const int is_keys = memcmp(check->bytes + block->at, "DK04", 4) == 0;
    const int is_known = is_keys || memcmp(check->bytes + block->at, "JC01", 4) == 0;
    const uint32_t kind = items->kinds == 0 ? 2 : skeleton_u32_(check, field);
    const int is_kind_known = kind <= SKELETON_ITEM_JOINT_CONSTRAINTS;
    const int wants_keys = is_kind_known ? kind == SKELETON_ITEM_DRIVEN_KEYS : is_keys;
    if (items->kinds != 0 && !is_kind_known && items->are_kinds_sound)
        items->are_kinds_sound =
            skeleton_refuse_(check, field, "item_kinds[%llu] is %llu, not 0 or 1",
                             SKELETON_U_(item), SKELETON_U_(kind));
    skeleton_enter_(check, "items", item);
    block->is_header_sound = skeleton_check_magic_(check, block->at, wants_keys ? "DK04" : "JC01");
    skeleton_leave_(check);
    block->has_keys = is_known ? is_keys : wants_keys;
    return block->is_header_sound || (is_in_place && (is_known || is_kind_known));
}

/* Where the offset of an item leads when it does not lead to one. */
static inline void skeleton_refuse_item_(skeleton_check_* check, skeleton_items_* items,
                                         uint32_t item, uint64_t at) {
    const uint64_t field = items->places + 4 * SKELETON_CAST(uint64_t, item);
    if (!items->are_places_sound) return;
    items->are_places_sound = 0;
    if (at >= items->end && at % 16 == 0)
        skeleton_refuse_(check, field,
                         "items[%llu] leads to 0x%04llX, behind the items' end at 0x%04llX",
                         SKELETON_U_(item), SKELETON_U_(at), SKELETON_U_(items->end));
    else
        skeleton_refuse_(check, field, "items[%llu] leads to 0x%04llX, where no item begins",
                         SKELETON_U_(item), SKELETON_U_(at));
}

/* The first item behind the one at `previous` that stands where its offset leads, on a 16-byte
 * boundary; at first `item` and `previous` are 0. */
static inline uint32_t skeleton_find_item_(skeleton_check_* check, skeleton_items_* items,
                                           uint32_t item, uint64_t previous,
                                           skeleton_block_* block) {
    /* Where the item behind the previous one must be. */
    const int64_t place =
        item == 0 ? SKELETON_CAST(int64_t, items->first) : skeleton_target_(check, previous + 4);
    const uint32_t next = item;
    for (; item < items->count; ++item) {
        const int64_t target =
            skeleton_target_(check, items->places + 4 * SKELETON_CAST(uint64_t, item));
        block->at = SKELETON_CAST(uint64_t, target < 0 ? 0 : target);
        if ((item == 0 ? target != place : block->at <= previous || block->at < items->first) ||
            block->at % 16 != 0 || block->at >= items->end)
            skeleton_refuse_item_(check, items, item, block->at);
        else if (skeleton_check_kind_(check, items, item, item == next && target == place, block))
            return item;
    }
    return item;
}

/* Every item fills the bytes up to the next one. */
static inline void skeleton_check_items_(skeleton_check_* check, skeleton_items_* items) {
    const uint64_t places_end = items->places + 4 * SKELETON_CAST(uint64_t, items->count);
    skeleton_block_ block, behind;
    uint32_t item;
    memset(&block, 0, sizeof block);
    memset(&behind, 0, sizeof behind);
    item = skeleton_find_item_(check, items, 0, 0, &block);
    while (item < items->count) {
        const uint32_t next = skeleton_find_item_(check, items, item + 1, block.at, &behind);
        block.limit = next < items->count ? behind.at : items->end;
        block.is_limit_end = next == item + 1 && (next < items->count || items->is_end_known);
        if (!block.is_limit_end &&
            skeleton_can_lead_(check, block.at + 4, 0, block.at + 16, block.limit))
            block.limit = SKELETON_CAST(uint64_t, skeleton_target_(check, block.at + 4));
        skeleton_enter_(check, "items", item);
        if (block.has_keys)
            skeleton_check_driven_keys_(check, items->at, &block);
        else
            skeleton_check_constraints_(check, &block);
        skeleton_leave_(check);
        item = next;
        block = behind;
    }
    if (items->are_places_sound) skeleton_check_padding_(check, places_end, items->first, "items");
}

/* The kinds and the offsets stand behind the block's header, on no boundary. */
static inline void skeleton_check_item_tables_(skeleton_check_* check, skeleton_items_* items) {
    const uint64_t at = items->at;
    const uint64_t kinds = at + sizeof(skeleton_procedural);
    const uint64_t bytes = 4 * SKELETON_CAST(uint64_t, items->count);
    if (skeleton_check_place_(check, at + offsetof(skeleton_procedural, item_kinds), kinds, bytes,
                              check->size, "item_kinds"))
        items->kinds = kinds;
    if (!skeleton_check_place_(check, at + offsetof(skeleton_procedural, items), kinds + bytes,
                               bytes, check->size, "items"))
        return;
    items->places = kinds + bytes;
    items->first = skeleton_align_(items->places + bytes);
    if (items->first <= items->end)
        skeleton_check_items_(check, items);
    else if (items->is_end_known)
        skeleton_refuse_(check, at + offsetof(skeleton_procedural, items_end),
                         "items_end leads to 0x%04llX, where no items can end",
                         SKELETON_U_(items->end));
}

/* A table of external channels, if it has entries. */
static inline int skeleton_check_channels_(skeleton_check_* check, skeleton_row_* tables,
                                           uint64_t count_field, uint32_t most_kind,
                                           const char* table) {
    const uint32_t count = skeleton_u32_(check, count_field);
    uint64_t place;
    if (count == 0) {
        if (skeleton_u32_(check, count_field + 4) == 0) return 1;
        return skeleton_refuse_(check, count_field + 4, "%s has an offset, but no entries", table);
    }
    place = skeleton_next_table_(check, tables, count_field + 4, 8 * SKELETON_CAST(uint64_t, count),
                                 table);
    if (place == 0) return 0;
    for (uint32_t i = 0; i < count; ++i) {
        const uint64_t at = place + 8 * SKELETON_CAST(uint64_t, i);
        const uint32_t hash = skeleton_u32_(check, at);
        const uint32_t kind = skeleton_u32_(check, at + 4);
        if (i > 0 && hash <= skeleton_u32_(check, at - 8))
            return skeleton_refuse_(
                check, at, "%s[%llu].channel_hash is 0x%08llX, not above 0x%08llX", table,
                SKELETON_U_(i), SKELETON_U_(hash), SKELETON_U_(skeleton_u32_(check, at - 8)));
        if (kind > most_kind)
            return skeleton_refuse_(check, at + 4, "%s[%llu].kind is %llu, above %llu", table,
                                    SKELETON_U_(i), SKELETON_U_(kind), SKELETON_U_(most_kind));
    }
    return 1;
}

/* The file ends where its tables do, if that is known. */
static inline int skeleton_check_end_(skeleton_check_* check, const skeleton_row_* tables) {
    if (tables->ends[0] == 0 || check->size == tables->ends[0] || check->size == tables->ends[1])
        return 1;
    return skeleton_refuse_(check, tables->ends[0],
                            "the file goes on to 0x%04llX, though everything in it ends here",
                            SKELETON_U_(check->size));
}

/* The block at `at`, to the file's end. Its header may have a fault already. */
static inline void skeleton_check_block_(skeleton_check_* check, uint64_t at, int is_header_sound) {
    const uint64_t end_field = at + offsetof(skeleton_procedural, items_end);
    const int64_t target = skeleton_target_(check, end_field);
    const uint64_t end = SKELETON_CAST(uint64_t, target < 0 ? 0 : target);
    skeleton_items_ items;
    skeleton_row_ tables;
    memset(&items, 0, sizeof items);
    items.at = at;
    items.count = skeleton_u32_(check, at + offsetof(skeleton_procedural, item_count));
    items.are_kinds_sound = items.are_places_sound = 1;
    items.is_end_known =
        end > at + sizeof(skeleton_procedural) && end <= check->size && end % 16 == 0;
    items.end = items.is_end_known ? end : check->size & ~SKELETON_CAST(uint64_t, 15);
    if (items.count == 0 && is_header_sound)
        skeleton_refuse_(check, at + offsetof(skeleton_procedural, item_count), "item_count is 0");
    else if (!items.is_end_known && is_header_sound)
        skeleton_refuse_(check, end_field, "items_end leads to 0x%04llX, where no items can end",
                         SKELETON_U_(end));
    tables = skeleton_begin_row_(at, items.is_end_known ? end : 0, check->size);
    skeleton_check_channels_(check, &tables,
                             at + offsetof(skeleton_procedural, external_input_count),
                             SKELETON_EXTERNAL_OTHER, "external_inputs");
    skeleton_check_channels_(check, &tables,
                             at + offsetof(skeleton_procedural, external_output_count),
                             SKELETON_EXTERNAL_MATERIAL, "external_outputs");
    skeleton_next_table_(check, &tables, offsetof(skeleton_header, procedural_end), 0,
                         "procedural_end");
    skeleton_check_end_(check, &tables);
    if (items.count != 0) skeleton_check_item_tables_(check, &items);
}

/* Everything behind the tables of joints. */
static inline void skeleton_check_procedural_(skeleton_check_* check, skeleton_row_* tables) {
    const uint64_t field = offsetof(skeleton_header, procedural);
    uint64_t at;
    if (skeleton_u32_(check, field) == 0) {
        if (skeleton_u32_(check, offsetof(skeleton_header, procedural_end)) != 0)
            skeleton_refuse_(check, offsetof(skeleton_header, procedural_end),
                             "procedural_end is set, though there is no procedural data");
        skeleton_check_end_(check, tables);
        return;
    }
    at = skeleton_next_table_(check, tables, field, sizeof(skeleton_procedural), "procedural");
    if (at == 0) {
        /* Misplaced, but to be known by its magic. */
        if (!skeleton_can_lead_(check, field, sizeof(skeleton_procedural), tables->low,
                                check->size))
            return;
        at = SKELETON_CAST(uint64_t, skeleton_target_(check, field));
        if (memcmp(check->bytes + at, "PJ01", 4) != 0) return;
    }
    skeleton_check_block_(check, at, skeleton_check_magic_(check, at, "PJ01"));
}

#endif
