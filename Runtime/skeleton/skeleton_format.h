/* The skeleton file as C structures, to be used in place; docs/skeleton-file.md explains them. */
#ifndef SKELETON_FORMAT_H
#define SKELETON_FORMAT_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define SKELETON_CAST(type, value) static_cast<type>(value)
#define SKELETON_ASSERT(condition) static_assert(condition, #condition)
#else
#define SKELETON_CAST(type, value) ((type)(value))
#define SKELETON_ASSERT(condition) _Static_assert(condition, #condition)
#endif

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

#define SKELETON_ITEM_DRIVEN_KEYS 0u
#define SKELETON_ITEM_JOINT_CONSTRAINTS 1u

typedef struct skeleton_procedural {
    char magic[4];                    /* 0x00 "PJ01" */
    skeleton_offset items_end;        /* 0x04 the first byte behind the items */
    uint32_t item_count;              /* 0x08 */
    skeleton_offset item_kinds;       /* 0x0C uint32_t[item_count] */
    skeleton_offset items;            /* 0x10 skeleton_offset[item_count] */
    uint32_t external_input_count;    /* 0x14 */
    skeleton_offset external_inputs;  /* 0x18 skeleton_external_channel[], may be absent */
    uint32_t external_output_count;   /* 0x1C */
    skeleton_offset external_outputs; /* 0x20 skeleton_external_channel[], may be absent */
} skeleton_procedural;

#define SKELETON_EXTERNAL_OTHER 0u
#define SKELETON_EXTERNAL_BLENDSHAPE_CONTROLLER 1u
#define SKELETON_EXTERNAL_MATERIAL 2u

typedef struct skeleton_external_channel {
    uint32_t channel_hash; /* 0x0 */
    uint32_t kind;         /* 0x4 SKELETON_EXTERNAL_...; an input's is always other */
} skeleton_external_channel;

typedef struct skeleton_driven_keys {
    char magic[4];                 /* 0x00 "DK04" */
    skeleton_offset end;           /* 0x04 the first byte behind the block, a multiple of 16 */
    uint32_t object_count;         /* 0x08 joints whose rotation is written or read */
    uint32_t driven_object_count;  /* 0x0C how many of them are written; they come first */
    skeleton_offset objects;       /* 0x10 skeleton_driven_object[] */
    skeleton_offset rotation_axes; /* 0x14 float[][4], a quaternion for each object */
    skeleton_offset joint_orients; /* 0x18 float[][4], a quaternion for each object */
    uint32_t output_count;         /* 0x1C */
    skeleton_offset outputs;       /* 0x20 skeleton_driven_output[output_count] */
} skeleton_driven_keys;

typedef struct skeleton_driven_object {
    uint16_t rotation_order; /* 0x0 0 xyz, 1 yzx, 2 zxy, 3 xzy, 4 yxz, 5 zyx */
    uint16_t joint;          /* 0x2 */
} skeleton_driven_object;

#define SKELETON_CHANNEL_ROTATION 0u
#define SKELETON_CHANNEL_TRANSLATION 1u
#define SKELETON_CHANNEL_SCALE 2u
#define SKELETON_CHANNEL_EXTERNAL 3u

typedef struct skeleton_driven_output {
    uint32_t curve_count;    /* 0x0 */
    skeleton_offset curves;  /* 0x4 skeleton_driven_curve[curve_count] */
    uint32_t target_count;   /* 0x8 always 1 */
    skeleton_offset targets; /* 0xC skeleton_driven_target[target_count] */
} skeleton_driven_output;

typedef struct skeleton_driven_target {
    uint32_t index;     /* 0x0 */
    uint16_t type;      /* 0x4 SKELETON_CHANNEL_... */
    uint16_t component; /* 0x6 0 x, 1 y, 2 z; up to 3 for a material */
} skeleton_driven_target;

typedef struct skeleton_driven_curve {
    uint32_t input_index;         /* 0x00 */
    uint16_t input_type;          /* 0x04 SKELETON_CHANNEL_... */
    uint16_t input_component;     /* 0x06 */
    float first_time;             /* 0x08 the value of the input at the first key */
    float last_time;              /* 0x0C and at the last one */
    uint32_t key_count;           /* 0x10 two at least */
    skeleton_offset coefficients; /* 0x14 float[key_count - 1][4] */
    skeleton_offset times;        /* 0x18 float[key_count] */
} skeleton_driven_curve;

typedef struct skeleton_joint_constraints {
    char magic[4];                /* 0x00 "JC01" */
    skeleton_offset end;          /* 0x04 the first byte behind the block, a multiple of 16 */
    skeleton_offset joints;       /* 0x08 uint16_t[constrained_count + target_count] */
    uint16_t constrained_count;   /* 0x0C */
    uint16_t target_count;        /* 0x0E */
    skeleton_offset orientations; /* 0x10 skeleton_constraint[orientation_count] */
    skeleton_offset translations; /* 0x14 skeleton_offset_constraint[translation_count] */
    skeleton_offset scales;       /* 0x18 skeleton_offset_constraint[scale_count] */
    skeleton_offset aims;         /* 0x1C skeleton_aim_constraint[aim_count] */
    skeleton_offset parents;      /* 0x20 skeleton_parent_constraint[parent_count] */
    uint16_t orientation_count;   /* 0x24 */
    uint16_t translation_count;   /* 0x26 */
    uint16_t scale_count;         /* 0x28 */
    uint16_t aim_count;           /* 0x2A */
    uint16_t parent_count;        /* 0x2C */
    uint16_t reserved;            /* 0x2E */
} skeleton_joint_constraints;

#define SKELETON_CONSTRAINT_FIRST_TARGET 1u
#define SKELETON_CONSTRAINT_LAST_TARGET 2u

typedef struct skeleton_constraint {
    uint32_t flags;       /* 0x0 SKELETON_CONSTRAINT_..._TARGET */
    uint32_t constrained; /* 0x4 slot */
    uint32_t target;      /* 0x8 slot */
    float weight;         /* 0xC */
} skeleton_constraint;

typedef struct skeleton_offset_constraint {
    skeleton_constraint common; /* 0x00 */
    float offset[4];            /* 0x10 x, y, z; the fourth means nothing */
} skeleton_offset_constraint;

#define SKELETON_WORLD_UP_VECTOR 0u
#define SKELETON_WORLD_UP_OBJECT_TRANSLATION 1u
#define SKELETON_WORLD_UP_OBJECT_ROTATION 2u

typedef struct skeleton_aim_constraint {
    skeleton_constraint common; /* 0x00 */
    float aim[4];               /* 0x10 the joint's axis that points at the target */
    float up[4];                /* 0x20 the joint's axis that points up */
    float global_up[4];         /* 0x30 the direction up, or the up object's axis */
    uint16_t world_up;          /* 0x40 SKELETON_WORLD_UP_... */
    uint16_t up_object;         /* 0x42 slot, 0xFFFF for SKELETON_WORLD_UP_VECTOR */
    uint8_t reserved[12];       /* 0x44 */
} skeleton_aim_constraint;

typedef struct skeleton_parent_constraint {
    skeleton_constraint common; /* 0x00 */
    float translation[4];       /* 0x10 x, y, z, 1: the joint's place in the target's space */
    float rotation[4];          /* 0x20 quaternion, the joint's rotation axis included */
} skeleton_parent_constraint;

/* A compiler that lays them out otherwise stops here. */
SKELETON_ASSERT(offsetof(skeleton_header, signature) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_header, reserved0) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_header, joint_count) == 0x0A);
SKELETON_ASSERT(offsetof(skeleton_header, joints) == 0x0C);
SKELETON_ASSERT(offsetof(skeleton_header, transforms) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_header, hashes) == 0x14);
SKELETON_ASSERT(offsetof(skeleton_header, lods) == 0x18);
SKELETON_ASSERT(offsetof(skeleton_header, procedural) == 0x1C);
SKELETON_ASSERT(offsetof(skeleton_header, procedural_end) == 0x20);
SKELETON_ASSERT(offsetof(skeleton_header, reserved1) == 0x24);
SKELETON_ASSERT(sizeof(skeleton_header) == 0x30);
SKELETON_ASSERT(offsetof(skeleton_joint, parent) == 0x02);
SKELETON_ASSERT(offsetof(skeleton_joint, next_sibling) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_joint, first_child) == 0x06);
SKELETON_ASSERT(sizeof(skeleton_joint) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_transform, translation) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_transform, scale) == 0x20);
SKELETON_ASSERT(sizeof(skeleton_transform) == 0x30);
SKELETON_ASSERT(offsetof(skeleton_hash, joint) == 0x04);
SKELETON_ASSERT(sizeof(skeleton_hash) == 0x08);
SKELETON_ASSERT(sizeof(skeleton_lods) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_procedural, items_end) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_procedural, item_count) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_procedural, item_kinds) == 0x0C);
SKELETON_ASSERT(offsetof(skeleton_procedural, items) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_procedural, external_input_count) == 0x14);
SKELETON_ASSERT(offsetof(skeleton_procedural, external_inputs) == 0x18);
SKELETON_ASSERT(offsetof(skeleton_procedural, external_output_count) == 0x1C);
SKELETON_ASSERT(offsetof(skeleton_procedural, external_outputs) == 0x20);
SKELETON_ASSERT(sizeof(skeleton_procedural) == 0x24);
SKELETON_ASSERT(offsetof(skeleton_external_channel, kind) == 0x04);
SKELETON_ASSERT(sizeof(skeleton_external_channel) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, end) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, object_count) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, driven_object_count) == 0x0C);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, objects) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, rotation_axes) == 0x14);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, joint_orients) == 0x18);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, output_count) == 0x1C);
SKELETON_ASSERT(offsetof(skeleton_driven_keys, outputs) == 0x20);
SKELETON_ASSERT(sizeof(skeleton_driven_keys) == 0x24);
SKELETON_ASSERT(offsetof(skeleton_driven_object, joint) == 0x02);
SKELETON_ASSERT(sizeof(skeleton_driven_object) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_driven_output, curves) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_driven_output, target_count) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_driven_output, targets) == 0x0C);
SKELETON_ASSERT(sizeof(skeleton_driven_output) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_driven_target, type) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_driven_target, component) == 0x06);
SKELETON_ASSERT(sizeof(skeleton_driven_target) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_driven_curve, input_type) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_driven_curve, input_component) == 0x06);
SKELETON_ASSERT(offsetof(skeleton_driven_curve, first_time) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_driven_curve, last_time) == 0x0C);
SKELETON_ASSERT(offsetof(skeleton_driven_curve, key_count) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_driven_curve, coefficients) == 0x14);
SKELETON_ASSERT(offsetof(skeleton_driven_curve, times) == 0x18);
SKELETON_ASSERT(sizeof(skeleton_driven_curve) == 0x1C);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, end) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, joints) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, constrained_count) == 0x0C);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, target_count) == 0x0E);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, orientations) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, translations) == 0x14);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, scales) == 0x18);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, aims) == 0x1C);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, parents) == 0x20);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, orientation_count) == 0x24);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, translation_count) == 0x26);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, scale_count) == 0x28);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, aim_count) == 0x2A);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, parent_count) == 0x2C);
SKELETON_ASSERT(offsetof(skeleton_joint_constraints, reserved) == 0x2E);
SKELETON_ASSERT(sizeof(skeleton_joint_constraints) == 0x30);
SKELETON_ASSERT(offsetof(skeleton_constraint, constrained) == 0x04);
SKELETON_ASSERT(offsetof(skeleton_constraint, target) == 0x08);
SKELETON_ASSERT(offsetof(skeleton_constraint, weight) == 0x0C);
SKELETON_ASSERT(sizeof(skeleton_constraint) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_offset_constraint, offset) == 0x10);
SKELETON_ASSERT(sizeof(skeleton_offset_constraint) == 0x20);
SKELETON_ASSERT(offsetof(skeleton_aim_constraint, aim) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_aim_constraint, up) == 0x20);
SKELETON_ASSERT(offsetof(skeleton_aim_constraint, global_up) == 0x30);
SKELETON_ASSERT(offsetof(skeleton_aim_constraint, world_up) == 0x40);
SKELETON_ASSERT(offsetof(skeleton_aim_constraint, up_object) == 0x42);
SKELETON_ASSERT(offsetof(skeleton_aim_constraint, reserved) == 0x44);
SKELETON_ASSERT(sizeof(skeleton_aim_constraint) == 0x50);
SKELETON_ASSERT(offsetof(skeleton_parent_constraint, translation) == 0x10);
SKELETON_ASSERT(offsetof(skeleton_parent_constraint, rotation) == 0x20);
SKELETON_ASSERT(sizeof(skeleton_parent_constraint) == 0x30);

#endif
