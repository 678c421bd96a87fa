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

/* A step on the way to a field: "items[2].". */
typedef struct skeleton_step_ {
    const char* name;
    uint64_t index;
} skeleton_step_;

/* A file under test. Each table is left at its first fault. */
typedef struct skeleton_check_ {
    const unsigned char* bytes;
    uint64_t size;
    int reversed;           /* the file's numbers are in the other byte order */
    skeleton_fault* faults; /* `room` of them */
    size_t room;
    size_t count; /* of faults found, be there room for them or not */
    size_t depth; /* of the way to what is looked at */
    skeleton_step_ path[3];
} skeleton_check_;

/* A number for printf, whatever its type. */
#define SKELETON_U_(value) SKELETON_CAST(unsigned long long, value)

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

static inline skeleton_check_ skeleton_begin_check_(const void* bytes, size_t size,
                                                    skeleton_fault* faults, size_t room) {
    skeleton_check_ check;
    memset(&check, 0, sizeof check);
    check.bytes = SKELETON_CAST(const unsigned char*, bytes);
    check.size = size;
    check.faults = faults;
    check.room = room;
    return check;
}

/* True for a file whose first offset shows that its numbers are in the other byte order:
 * skeleton_swap turns it. */
static inline int skeleton_is_reversed(const void* bytes, size_t size) {
    skeleton_check_ check = skeleton_begin_check_(bytes, size, NULL, 0);
    check.reversed = 1;
    return size >= sizeof(skeleton_header) &&
           skeleton_u32_(&check, offsetof(skeleton_header, joints)) == 36;
}

/* Faults found from here on are those of an entry of this table. */
static inline void skeleton_enter_(skeleton_check_* check, const char* table, uint64_t entry) {
    check->path[check->depth].name = table;
    check->path[check->depth].index = entry;
    ++check->depth;
}

static inline void skeleton_leave_(skeleton_check_* check) {
    --check->depth;
}

#if defined(__clang__)
__attribute__((format(printf, 3, 4)))
#elif defined(__GNUC__)
__attribute__((format(gnu_printf, 3, 4)))
#endif
/* Notes a fault and gives 0, so that a check can end with it. */
static inline int
skeleton_refuse_(skeleton_check_* check, uint64_t at, const char* format, ...) {
    if (check->count < check->room) {
        skeleton_fault* const fault = check->faults + check->count;
        const size_t room = sizeof fault->text;
        size_t used = 0;
        va_list values;
        /* A cast would be idle where the two types are one. */
        fault->offset = at & SIZE_MAX;
        for (size_t i = 0; i < check->depth; ++i)
            used += SKELETON_CAST(
                size_t, snprintf(fault->text + used, room - used, "%s[%llu].", check->path[i].name,
                                 SKELETON_U_(check->path[i].index)));
        va_start(values, format);
        vsnprintf(fault->text + used, room - used, format, values);
        va_end(values);
    }
    ++check->count;
    return 0;
}

/* A magic stands at `at`. */
static inline int skeleton_check_magic_(skeleton_check_* check, uint64_t at, const char* magic) {
    if (memcmp(check->bytes + at, magic, 4) != 0)
        return skeleton_refuse_(check, at, "magic is 0x%02llX%02llX%02llX%02llX, not \"%s\"",
                                SKELETON_U_(check->bytes[at]), SKELETON_U_(check->bytes[at + 1]),
                                SKELETON_U_(check->bytes[at + 2]),
                                SKELETON_U_(check->bytes[at + 3]), magic);
    return 1;
}

static inline int skeleton_is_nan_(const skeleton_check_* check, uint64_t at) {
    return (skeleton_u32_(check, at) & 0x7FFFFFFFu) > 0x7F800000u;
}

/* Floats in rows of `width`, all of them numbers. */
static inline int skeleton_check_floats_(skeleton_check_* check, uint64_t at, uint64_t count,
                                         uint64_t width, const char* table) {
    for (uint64_t i = 0; i < count; ++i) {
        if (!skeleton_is_nan_(check, at + 4 * i)) continue;
        if (width == 1)
            return skeleton_refuse_(check, at + 4 * i, "%s[%llu] is not a number", table,
                                    SKELETON_U_(i));
        return skeleton_refuse_(check, at + 4 * i, "%s[%llu][%llu] is not a number", table,
                                SKELETON_U_(i / width), SKELETON_U_(i % width));
    }
    return 1;
}

#endif
