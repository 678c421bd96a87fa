#pragma once

#include "Runtime/SkeletonSample.h"

#include <limits>

inline constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();

/// A sound file that is free to be damaged: pointers into it may be written through.
class DamagedSkeleton : public testing::Test {
  protected:
    template <class T>
    static T& Free(const T& part) {
        return const_cast<T&>(part);
    }
    template <class T>
    static T* Table(const skeleton_offset& offset) {
        return const_cast<T*>(static_cast<const T*>(skeleton_follow(&offset)));
    }

    skeleton_header& Header() { return Free(*sample.Header()); }
    skeleton_joint* Joints() { return Table<skeleton_joint>(Header().joints); }
    skeleton_transform* Transforms() { return Table<skeleton_transform>(Header().transforms); }
    skeleton_hash* Hashes() { return Table<skeleton_hash>(Header().hashes); }
    std::uint16_t* Remap(std::uint32_t row) {
        return const_cast<std::uint16_t*>(skeleton_lod_remap(sample.Header(), row));
    }
    skeleton_procedural& Procedural() { return Free(*sample.Procedural()); }
    skeleton_driven_keys& Keys() { return Free(sample.Keys(1)); }
    skeleton_driven_output* Outputs() { return Table<skeleton_driven_output>(Keys().outputs); }
    skeleton_driven_target& Target(int output) {
        return *Table<skeleton_driven_target>(Outputs()[output].targets);
    }
    skeleton_driven_curve* Curves(int output) {
        return Table<skeleton_driven_curve>(Outputs()[output].curves);
    }
    skeleton_joint_constraints& Constraints() { return Free(sample.Constraints(2)); }

    /// One number of the file is set to `value`: the first fault names its place and tells `text`.
    // Not inlined: GCC 12 takes the tables behind a structure for writes past its end.
    template <class T, class V>
    [[gnu::noinline]] void ExpectFault(T& field, V value, const std::string& text) {
        const T sound = field;
        field = static_cast<T>(value);
        ExpectFaultAt(reinterpret_cast<const char*>(&field), text);
        field = sound;
    }
    void ExpectFaultAt(const void* place, const std::string& text) {
        skeleton_fault fault;
        ASSERT_FALSE(skeleton_verify(sample.Data(), sample.Size(), &fault)) << text;
        EXPECT_EQ(fault.text, text);
        EXPECT_EQ(fault.offset, PlaceOf(place)) << text;
    }
    std::size_t PlaceOf(const void* part) {
        return static_cast<std::size_t>(static_cast<const char*>(part) -
                                        static_cast<const char*>(sample.Data()));
    }

    SkeletonSample sample = SkeletonSample::Load("parts-little");
};
