/* Loads skeleton files in place, in C11 or C++. Nothing here allocates, keeps state or needs more
 * than the C library. With the whole file in memory that starts on a 16-byte boundary:
 *
 *     skeleton_fault fault;
 *     if (skeleton_is_reversed(bytes, size) && !skeleton_swap(bytes, size, &fault))
 *         return fail(fault.text);
 *     if (!skeleton_verify(bytes, size, &fault)) return fail(fault.text);
 *     const skeleton_header* skeleton = (const skeleton_header*)bytes;
 *
 * From there on every function of skeleton_read.h may be called, and every offset followed, without
 * a further look: a verified file leads nowhere outside itself. Functions take any index; one out
 * of range gives null, -1, SKELETON_NO_JOINT or 0, as each one says.
 *
 *     skeleton_format.h   the structures
 *     skeleton_read.h     joints by name, levels of detail, procedural items, curves
 *     skeleton_verify.h   is this a skeleton file, whole and sound
 *     skeleton_swap.h     into the other byte order, in place
 */
#ifndef SKELETON_H
#define SKELETON_H

#include "skeleton_format.h"
#include "skeleton_read.h"
#include "skeleton_swap.h"
#include "skeleton_verify.h"

#endif
