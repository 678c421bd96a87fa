/* The skeleton file as C structures, for programs that load it in place. docs/skeleton-file.md explains them. */
#ifndef SKELETON_FILE_H
#define SKELETON_FILE_H

#include <stddef.h>
#include <stdint.h>

/* Bytes from this field's own first byte to its target; 0 when there is no target. */
typedef int32_t skeleton_offset;

#define SKELETON_NO_JOINT 0xFFFFu

typedef struct skeleton_header {
    char magic[4];                  /* 0x00 "SK08" in both byte orders */
    uint32_t signature;             /* 0x04 equal for skeletons of the same names and shape */
    uint16_t reserved0;             /* 0x08 */
    uint16_t joint_count;           /* 0x0A */
    skeleton_offset joints;         /* 0x0C skeleton_joint[joint_count] */
    skeleton_offset transforms;     /* 0x10 skeleton_transform[joint_count] */
    skeleton_offset hashes;         /* 0x14 skeleton_hash[joint_count] */
    skeleton_offset lods;           /* 0x18 skeleton_lods, may be absent */
    skeleton_offset procedural;     /* 0x1C procedural data, may be absent */
    skeleton_offset procedural_end; /* 0x20 the first byte behind it */
    uint32_t reserved1[3];          /* 0x24 */
} skeleton_header;

#define SKELETON_JOINT_SCALE_COMPENSATE 1u

typedef struct skeleton_joint {
    uint16_t flags;        /* 0x0 SKELETON_JOINT_SCALE_COMPENSATE or 0 */
    uint16_t parent;       /* 0x2 always below the joint's own index */
    uint16_t next_sibling; /* 0x4 the next joint with the same parent */
    uint16_t first_child;  /* 0x6 */
} skeleton_joint;

typedef struct skeleton_transform {
    float rotation[4];    /* 0x00 quaternion x, y, z, w */
    float translation[4]; /* 0x10 x, y, z, 0 */
    float scale[4];       /* 0x20 x, y, z, 0 */
} skeleton_transform;

typedef struct skeleton_hash {
    uint32_t name_hash; /* 0x0 */
    int32_t joint;      /* 0x4 -1 in a filler record */
} skeleton_hash;

typedef struct skeleton_lods {
    uint32_t count; /* 0x0 */
    /* uint16_t member_counts[count] follow, then count tables of uint16_t remap[joint_count] */
} skeleton_lods;

/* The target of an offset, or a null pointer. */
static inline const void* skeleton_follow(const skeleton_offset* offset) {
    return *offset == 0 ? NULL : (const char*)offset + *offset;
}

/* The joint with this name hash, or -1. */
static inline int32_t skeleton_find_joint(const skeleton_header* skeleton, uint32_t name_hash) {
    const skeleton_hash* table = (const skeleton_hash*)skeleton_follow(&skeleton->hashes);
    uint32_t low = 0;
    uint32_t high = skeleton->joint_count;
    while (low < high) {
        const uint32_t middle = low + (high - low) / 2;
        if (table[middle].name_hash < name_hash)
            low = middle + 1;
        else
            high = middle;
    }
    return low < skeleton->joint_count && table[low].name_hash == name_hash ? table[low].joint : -1;
}

/* For each joint the one that stands in for it when the levels of detail from `row` on are dropped. */
static inline const uint16_t* skeleton_lod_remap(const skeleton_header* skeleton, uint32_t row) {
    const skeleton_lods* lods = (const skeleton_lods*)skeleton_follow(&skeleton->lods);
    const uint16_t* counts = (const uint16_t*)(lods + 1);
    return counts + lods->count + (size_t)row * skeleton->joint_count;
}

#endif
