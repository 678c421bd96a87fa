/* Loads skeleton files of either byte order as an engine would, and prints what it finds. Build it
 * with cc -std=c11 -I Runtime Examples/runtime/load_skeleton.c -o load_skeleton
 */
#include <skeleton/skeleton.h>

#include <stdlib.h>

/* The whole file, in memory that malloc aligns for anything. The caller frees it. */
static void* read_file(const char* path, size_t* size) {
    FILE* const file = fopen(path, "rb");
    unsigned char* bytes = NULL;
    size_t room = 0;
    *size = 0;
    if (file == NULL) return NULL;
    do {
        unsigned char* const larger = realloc(bytes, room += 65536);
        if (larger == NULL) break;
        bytes = larger;
        *size += fread(bytes + *size, 1, room - *size, file);
    } while (*size == room);
    if (ferror(file) != 0 || *size == room) {
        free(bytes);
        bytes = NULL;
    }
    fclose(file);
    return bytes;
}

/* The one thing to do before anything else: the file's bytes come from outside. */
static const skeleton_header* open_skeleton(const char* path, void* bytes, size_t size) {
    skeleton_fault fault;
    if (skeleton_is_reversed(bytes, size) ? !skeleton_swap(bytes, size, &fault)
                                          : !skeleton_verify(bytes, size, &fault)) {
        fprintf(stderr, "%s: 0x%04lX: %s\n", path, (unsigned long)fault.offset, fault.text);
        return NULL;
    }
    return bytes;
}

/* q * v * q^-1 */
static void rotate(const float q[4], const float v[3], float result[3]) {
    const float t[3] = {2 * (q[1] * v[2] - q[2] * v[1]), 2 * (q[2] * v[0] - q[0] * v[2]),
                        2 * (q[0] * v[1] - q[1] * v[0])};
    result[0] = v[0] + q[3] * t[0] + q[1] * t[2] - q[2] * t[1];
    result[1] = v[1] + q[3] * t[1] + q[2] * t[0] - q[0] * t[2];
    result[2] = v[2] + q[3] * t[2] + q[0] * t[1] - q[1] * t[0];
}

/* Where a joint stands in its roots' space: up along its parents. Scale is left out to stay short.
 */
static void place_of(const skeleton_header* skeleton, uint32_t joint, float place[3]) {
    const skeleton_transform* const transforms = skeleton_transforms(skeleton);
    const skeleton_joint* const joints = skeleton_joints(skeleton);
    memcpy(place, transforms[joint].translation, 3 * sizeof(float));
    while ((joint = joints[joint].parent) != SKELETON_NO_JOINT) {
        const float below[3] = {place[0], place[1], place[2]};
        rotate(transforms[joint].rotation, below, place);
        for (int i = 0; i < 3; ++i) place[i] += transforms[joint].translation[i];
    }
}

static void print_item(const skeleton_procedural* procedural, uint32_t place) {
    const skeleton_driven_keys* const keys = skeleton_item_driven_keys(procedural, place);
    const skeleton_joint_constraints* const constraints =
        skeleton_item_constraints(procedural, place);
    if (keys != NULL) {
        for (uint32_t i = 0; i < keys->output_count; ++i) {
            const skeleton_driven_output* const output = skeleton_driven_output_at(keys, i);
            const skeleton_driven_curve* const curve = skeleton_driven_curve_at(output, 0);
            const skeleton_driven_target* const target = skeleton_driven_target_of(output);
            printf("item %u: channel type %u of %u is %g at %g\n", (unsigned)place,
                   (unsigned)target->type, (unsigned)target->index,
                   (double)skeleton_driven_value(curve, curve->last_time, SKELETON_CLAMP_BOTH),
                   (double)curve->last_time);
        }
    } else {
        for (uint32_t i = 0; i < constraints->aim_count; ++i) {
            const skeleton_aim_constraint* const aim = skeleton_aims(constraints) + i;
            printf("item %u: joint %u aims at joint %u\n", (unsigned)place,
                   (unsigned)skeleton_slot_joint(constraints, aim->common.constrained),
                   (unsigned)skeleton_slot_joint(constraints, aim->common.target));
        }
    }
}

static void print_skeleton(const skeleton_header* skeleton) {
    const skeleton_procedural* const procedural = skeleton_find_procedural(skeleton);
    printf("signature 0x%08lX, %u joints, hips are %ld\n", (unsigned long)skeleton->signature,
           (unsigned)skeleton->joint_count, (long)skeleton_find_joint_named(skeleton, "hips"));
    for (uint32_t joint = 0; joint < skeleton->joint_count; ++joint) {
        float place[3];
        place_of(skeleton, joint, place);
        printf("joint %u at %g %g %g\n", (unsigned)joint, (double)place[0], (double)place[1],
               (double)place[2]);
    }
    for (uint32_t row = 0; row < skeleton_lod_count(skeleton); ++row)
        printf("without level row %u: %u joints\n", (unsigned)row,
               (unsigned)skeleton_lod_limit(skeleton, row));
    for (uint32_t i = 0; i < skeleton_item_count(procedural); ++i) print_item(procedural, i);
}

int main(int argc, char** argv) {
    int status = EXIT_SUCCESS;
    if (argc < 2) {
        fprintf(stderr, "Usage: load_skeleton FILE...\n");
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        size_t size;
        void* const bytes = read_file(argv[i], &size);
        const skeleton_header* const skeleton =
            bytes == NULL ? NULL : open_skeleton(argv[i], bytes, size);
        if (bytes == NULL) fprintf(stderr, "%s: cannot be read\n", argv[i]);
        if (skeleton != NULL)
            print_skeleton(skeleton);
        else
            status = EXIT_FAILURE;
        free(bytes);
    }
    return status;
}
