/* What skeleton_verify and skeleton_swap share: numbers of a file in either byte order, and the
 * report of a fault. Positions are bytes from the file's start. Names that end in an underscore are
 * the header's own. */
#ifndef SKELETON_CHECK_H
#define SKELETON_CHECK_H

#include "skeleton_format.h"

#include <stdarg.h>
#include <stdio.h>
#include <string.h>

/* What is wrong, and where. */
typedef struct skeleton_fault {
    size_t offset;  /* of the field, in bytes from the file's start */
    char text[152]; /* "joints[7].parent is 9, not below 7" */
} skeleton_fault;

/* A file under test. Each table is left at its first fault. */
typedef struct skeleton_check_ {
    const unsigned char* bytes;
    uint64_t size;
    int reversed;           /* the file's numbers are in the other byte order */
    int64_t item;           /* the procedural item that is looked at, -1 outside of them */
    skeleton_fault* faults; /* `room` of them */
    size_t room;
    size_t count; /* of faults found, be there room for them or not */
} skeleton_check_;

/* A number for printf, whatever its type. */
#define SKELETON_U_(value) SKELETON_CAST(unsigned long, value)

#ifdef __cplusplus
#define SKELETON_ADDRESS_(pointer) reinterpret_cast<uintptr_t>(pointer)
#else
#define SKELETON_ADDRESS_(pointer) ((uintptr_t)(pointer))
#endif

static inline uint32_t skeleton_reverse32_(uint32_t value) {
    return value >> 24 | (value >> 8 & 0xFF00u) | (value << 8 & 0xFF0000u) | value << 24;
}

static inline uint16_t skeleton_u16_(const skeleton_check_* check, uint64_t at) {
    uint16_t value;
    memcpy(&value, check->bytes + at, sizeof value);
    return check->reversed ? SKELETON_CAST(uint16_t, value >> 8 | value << 8) : value;
}

static inline uint32_t skeleton_u32_(const skeleton_check_* check, uint64_t at) {
    uint32_t value;
    memcpy(&value, check->bytes + at, sizeof value);
    return check->reversed ? skeleton_reverse32_(value) : value;
}

/* Where the offset at `at` leads to; below 0 when it leads out at the front. */
static inline int64_t skeleton_target_(const skeleton_check_* check, uint64_t at) {
    const uint32_t value = skeleton_u32_(check, at);
    const int64_t distance = value < 0x80000000u ? SKELETON_CAST(int64_t, value)
                                                 : SKELETON_CAST(int64_t, value) - 0x100000000;
    return SKELETON_CAST(int64_t, at) + distance;
}

static inline uint64_t skeleton_align_(uint64_t at) {
    return (at + 15) & ~SKELETON_CAST(uint64_t, 15);
}

/* True for a file whose first offset shows that its numbers are in the other byte order:
 * skeleton_swap turns it. */
static inline int skeleton_is_reversed(const void* bytes, size_t size) {
    skeleton_check_ check = {SKELETON_CAST(const unsigned char*, bytes), size, 1, -1, NULL, 0, 0};
    return size >= sizeof(skeleton_header) &&
           skeleton_u32_(&check, offsetof(skeleton_header, joints)) == 36;
}

#if defined(__GNUC__)
__attribute__((format(printf, 3, 4)))
#endif
/* Notes a fault and gives 0, so that a check can end with it. */
static inline int
skeleton_refuse_(skeleton_check_* check, uint64_t at, const char* format, ...) {
    if (check->count < check->room) {
        skeleton_fault* const fault = check->faults + check->count;
        const size_t room = sizeof fault->text;
        va_list values;
        int used = 0;
        fault->offset = SKELETON_CAST(size_t, at);
        if (check->item >= 0)
            used = snprintf(fault->text, room, "items[%lu].", SKELETON_U_(check->item));
        va_start(values, format);
        vsnprintf(fault->text + used, room - SKELETON_CAST(size_t, used), format, values);
        va_end(values);
    }
    ++check->count;
    return 0;
}

/* Bytes between two tables are zeros. */
static inline int skeleton_check_padding_(skeleton_check_* check, uint64_t from, uint64_t to,
                                          const char* table) {
    for (uint64_t at = from; at < to; ++at)
        if (check->bytes[at] != 0)
            return skeleton_refuse_(check, at, "padding in front of %s is 0x%02lX, not 0", table,
                                    SKELETON_U_(check->bytes[at]));
    return 1;
}

/* The offset at `field` leads to `place`, where the table stands, and `bytes` from there end within
 * `limit`; the gap from `before` to it is padding. */
static inline int skeleton_check_table_(skeleton_check_* check, uint64_t field, uint64_t before,
                                        uint64_t place, uint64_t bytes, uint64_t limit,
                                        const char* table) {
    const int64_t target = skeleton_target_(check, field);
    if (skeleton_u32_(check, field) == 0)
        return skeleton_refuse_(check, field, "%s is 0: there is no table", table);
    if (target != SKELETON_CAST(int64_t, place))
        return skeleton_refuse_(check, field, "%s leads to %s0x%04lX, not to 0x%04lX", table,
                                target < 0 ? "-" : "", SKELETON_U_(target < 0 ? -target : target),
                                SKELETON_U_(place));
    if (place > limit || bytes > limit - place)
        return skeleton_refuse_(check, field, "%s goes on to 0x%04lX, beyond the end at 0x%04lX",
                                table, SKELETON_U_(place + bytes), SKELETON_U_(limit));
    return skeleton_check_padding_(check, before, place, table);
}

/* A magic stands at `at`. */
static inline int skeleton_check_magic_(skeleton_check_* check, uint64_t at, const char* magic) {
    if (memcmp(check->bytes + at, magic, 4) != 0)
        return skeleton_refuse_(check, at, "magic is 0x%02lX%02lX%02lX%02lX, not \"%s\"",
                                SKELETON_U_(check->bytes[at]), SKELETON_U_(check->bytes[at + 1]),
                                SKELETON_U_(check->bytes[at + 2]),
                                SKELETON_U_(check->bytes[at + 3]), magic);
    return 1;
}

static inline int skeleton_is_nan_(const skeleton_check_* check, uint64_t at) {
    return (skeleton_u32_(check, at) & 0x7FFFFFFFu) > 0x7F800000u;
}

#endif
