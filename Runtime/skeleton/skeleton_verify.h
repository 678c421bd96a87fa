/* Is this a skeleton file, whole and sound? Written for bytes that come from anywhere: nothing
 * outside of them is read, and the work grows with their number alone. */
#ifndef SKELETON_VERIFY_H
#define SKELETON_VERIFY_H

#include "skeleton_check.h"
#include "skeleton_verify_joints.h"
#include "skeleton_verify_procedural.h"

/* Looks at a file in either byte order, wherever it lies in memory, and notes the first fault of
 * each table, those within the procedural items included, at most `room` of them; `faults` may be
 * null when that is 0. A table whose place or count is wrong is not looked into; those beside it
 * are, so far as they can be found. The number of faults, 0 for a sound file. */
static inline size_t skeleton_find_faults(const void* bytes, size_t size, skeleton_fault* faults,
                                          size_t room) {
    skeleton_check_ check = skeleton_begin_check_(bytes, size, faults, room);
    skeleton_row_ tables =
        skeleton_begin_row_(sizeof(skeleton_header), sizeof(skeleton_header), size);
    check.reversed = skeleton_is_reversed(bytes, size);
    if (!skeleton_check_header_(&check)) return check.count;
    skeleton_check_joint_tables_(&check, &tables);
    skeleton_check_procedural_(&check, &tables);
    return check.count;
}

/* True for a sound file in this machine's byte order that can be used in place, where it lies. Else
 * `fault`, which may be null, tells the first reason. */
static inline int skeleton_verify(const void* bytes, size_t size, skeleton_fault* fault) {
    skeleton_check_ check = skeleton_begin_check_(bytes, size, fault, fault == NULL ? 0u : 1u);
    if (skeleton_find_faults(bytes, size, fault, check.room) != 0) return 0;
    if (skeleton_is_reversed(bytes, size))
        return skeleton_refuse_(&check, offsetof(skeleton_header, joints),
                                "joints shows the other byte order");
    if (SKELETON_ADDRESS_(bytes) % 4 != 0)
        return skeleton_refuse_(&check, 0, "the file lies in memory off a 4-byte boundary");
    return 1;
}

#endif
