#include "Runtime/DamagedSkeleton.h"

#include <memory>

namespace {

using SkeletonVerify = DamagedSkeleton;

std::uint32_t Rotate(std::uint32_t value, unsigned bits) {
    return value << bits | value >> (32 - bits);
}

std::uint32_t Widened(std::uint16_t link) {
    return static_cast<std::uint32_t>(std::int32_t{static_cast<std::int16_t>(link)});
}

/// The signature behind one more joint.
std::uint32_t Mix(std::uint32_t signature, std::uint32_t hash, const skeleton_joint& joint) {
    const std::uint32_t x = signature ^ hash;
    const std::uint32_t a = Rotate(((Widened(joint.parent) + 923) * (x >> 2)) ^ x, 12);
    const std::uint32_t b = Rotate(((Widened(joint.next_sibling) + 121) * (a >> 3)) ^ a, 7);
    return Rotate(((Widened(joint.first_child) + 357) * (b >> 1)) ^ b, 21);
}

template <class Entry>
skeleton_offset Append(std::string& bytes, std::size_t field, const std::vector<Entry>& table) {
    bytes.resize((bytes.size() + 15) / 16 * 16);
    const auto offset = static_cast<skeleton_offset>(bytes.size() - field);
    bytes.append(reinterpret_cast<const char*>(table.data()), table.size() * sizeof(Entry));
    return offset;
}

/// A file of joints each of which is the only child of the one in front of it, and whose hashes are
/// in the opposite order.
std::string ChainOfJoints(std::uint16_t count) {
    std::vector<skeleton_joint> joints;
    std::vector<skeleton_hash> hashes;
    skeleton_header header = {{'S', 'K', '0', '8'}, 0, 0, count, 0, 0, 0, 0, 0, 0, {0, 0, 0}};
    for (std::uint16_t i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        joints.push_back({0, static_cast<std::uint16_t>(i - 1), 0xFFFF,
                          static_cast<std::uint16_t>(isLast ? 0xFFFF : i + 1)});
        hashes.push_back({i + 1u, count - 1 - i});
        header.signature = Mix(header.signature, static_cast<std::uint32_t>(count - i), joints[i]);
    }
    std::string bytes(sizeof header, '\0');
    header.joints = Append(bytes, offsetof(skeleton_header, joints), joints);
    header.transforms = Append(bytes, offsetof(skeleton_header, transforms),
                               std::vector<skeleton_transform>(count));
    header.hashes = Append(bytes, offsetof(skeleton_header, hashes), hashes);
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes;
}

}  // namespace

TEST_F(SkeletonVerify, SoundFilesOfEitherByteOrderHaveNoFaults) {
    for (const char* name : {"parts-little", "parts-big", "roots", "biped"}) {
        const std::string bytes = SkeletonSample::Read(name);
        EXPECT_EQ(skeleton_find_faults(bytes.data(), bytes.size(), nullptr, 0), 0u) << name;
        const SkeletonSample native = SkeletonSample::Load(name);
        EXPECT_TRUE(skeleton_verify(native.Header(), native.Size(), nullptr)) << name;
    }
}

TEST_F(SkeletonVerify, EveryShorterFileIsRefused) {
    const std::string bytes = sample.Bytes();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const std::unique_ptr<char[]> exact(new char[size]);
        std::copy_n(bytes.data(), size, exact.get());
        EXPECT_NE(skeleton_find_faults(exact.get(), size, nullptr, 0), 0u) << size;
    }
    const SkeletonSample roots = SkeletonSample::Load("roots");
    for (std::size_t size = 0; size < roots.Size(); ++size)
        EXPECT_NE(skeleton_find_faults(roots.Header(), size, nullptr, 0), 0u) << size;
}

TEST_F(SkeletonVerify, TooShortForItsPartsIsToldAtTheEnd) {
    skeleton_fault fault;
    EXPECT_FALSE(skeleton_verify(sample.Data(), 3, &fault));
    EXPECT_STREQ(fault.text, "the file ends within its magic");
    EXPECT_EQ(fault.offset, 3u);
    EXPECT_FALSE(skeleton_verify(sample.Data(), 47, &fault));
    EXPECT_STREQ(fault.text, "the file ends within its header");
    EXPECT_EQ(fault.offset, 47u);
    EXPECT_FALSE(skeleton_verify(sample.Data(), 48, &fault));
    EXPECT_STREQ(fault.text, "joints goes on to 0x0088, beyond the end at 0x0030");
    EXPECT_EQ(fault.offset, 0x0Cu);
}

TEST_F(SkeletonVerify, BytesBehindTheEndAreAFault) {
    for (const char* name : {"parts-little", "roots"}) {
        const std::string bytes = SkeletonSample::Read(name);
        const SkeletonSample longer(bytes + '\0');
        skeleton_fault fault;
        ASSERT_EQ(skeleton_find_faults(longer.Header(), longer.Size(), &fault, 1), 1u);
        EXPECT_EQ(fault.offset, bytes.size());
        char text[100];
        snprintf(text, sizeof text, "the file goes on to 0x%04X, though everything in it ends here",
                 static_cast<unsigned>(bytes.size() + 1));
        EXPECT_EQ(fault.text, std::string(text));
    }
}

TEST_F(SkeletonVerify, AFileOffItsBoundaryInMemoryIsRefused) {
    const std::string bytes = sample.Bytes();
    SkeletonSample shifted('\0' + bytes);
    skeleton_fault fault;
    EXPECT_FALSE(skeleton_verify(static_cast<char*>(shifted.Data()) + 1, bytes.size(), &fault));
    EXPECT_STREQ(fault.text, "the file lies in memory off a 4-byte boundary");
}

TEST_F(SkeletonVerify, FaultsOfTheHeaderAreNamed) {
    ExpectFault(Header().magic[0], 'Z', "magic is 0x5A4B3038, not \"SK08\"");
    ExpectFault(Header().joints, 37, "joints is 0x00000025, 36 in no byte order");
    ExpectFault(Header().reserved0, 2, "reserved0 is 2, not 0");
    ExpectFault(Header().joint_count, 0, "joint_count is 0");
    for (const std::uint32_t value : {0x01u, 0x0100u, 0x01000000u})
        ExpectFault(Header().reserved1[1], value, "reserved1[1] is not 0");
    ExpectFault(Header().transforms, 0, "transforms is 0: there is no table");
    ExpectFault(Header().transforms, 112, "transforms leads to 0x0080, not to 0x0090");
    ExpectFault(Header().transforms, -32, "transforms leads to -0x0010, not to 0x0090");
    ExpectFault(Header().lods, 0x7FFFFFFF, "lods leads to 0x80000017, not to 0x0300");
    ExpectFault(Header().procedural_end, 0, "procedural_end is 0: there is no table");
    ExpectFault(Header().signature, 1, [this] {
        char text[100];
        snprintf(text, sizeof text, "signature is 0x00000001, the joints make 0x%08lX",
                 static_cast<unsigned long>(Header().signature));
        return std::string(text);
    }());
}

TEST_F(SkeletonVerify, FaultsOfJointsAreNamed) {
    ExpectFault(Joints()[7].flags, 2, "joints[7].flags is 0x0002, not 0 or 1");
    ExpectFault(Joints()[7].parent, 9, "joints[7].parent is 9, not below 7");
    ExpectFault(Joints()[7].parent, 7, "joints[7].parent is 7, not below 7");
    ExpectFault(Joints()[0].next_sibling, 1,
                "joints[0].next_sibling is 1, though roots are not chained");
    ExpectFault(Joints()[1].first_child, 200, "joints[1].first_child is 200, not below 11");
    ExpectFault(Joints()[1].first_child, 1, "joints[1].first_child is 1, not above 1");
    ExpectFault(Joints()[3].next_sibling, 9,
                "joints[3].next_sibling is 9, whose parent is another one");
    Joints()[1].first_child = 3;
    ExpectFaultAt(&Joints()[2].parent,
                  "joints[2].parent is 1, whose children do not name the joint");
}

TEST_F(SkeletonVerify, FaultsOfTransformsAreNamed) {
    ExpectFault(Transforms()[2].rotation[3], kNotANumber,
                "transforms[2].rotation[3] is not a number");
    ExpectFault(Transforms()[10].scale[0], -kNotANumber, "transforms[10].scale[0] is not a number");
    ExpectFault(Transforms()[1].translation[3], 1, "transforms[1].translation[3] is not 0");
    ExpectFault(Transforms()[1].scale[3], 1, "transforms[1].scale[3] is not 0");
}

TEST_F(SkeletonVerify, InfiniteNumbersAreNumbers) {
    const float infinite = std::numeric_limits<float>::infinity();
    Transforms()[2].translation[0] = infinite;
    Transforms()[3].scale[1] = -infinite;
    EXPECT_TRUE(skeleton_verify(sample.Data(), sample.Size(), nullptr));
}

TEST_F(SkeletonVerify, FaultsOfHashesAreNamed) {
    const auto hash = [](std::uint32_t value) {
        char text[16];
        snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(value));
        return std::string(text);
    };
    const std::uint32_t second = Hashes()[1].name_hash;
    ExpectFault(Hashes()[2].name_hash, second,
                "hashes[2].name_hash is " + hash(second) + ", not above " + hash(second));
    ExpectFault(Hashes()[2].joint, 11, "hashes[2].joint is 0x0000000B, not below 11");
    ExpectFault(Hashes()[2].joint, -1, "hashes[2].joint is 0xFFFFFFFF, not below 11");
    ExpectFault(
        Hashes()[2].joint, Hashes()[1].joint,
        "hashes[2].joint is " + std::to_string(Hashes()[1].joint) + ", which has a record already");
    Hashes()[9] = {0xFFFFFFFFu, -1};
    ExpectFaultAt(
        &Hashes()[10].name_hash,
        "hashes[10].name_hash is " + hash(Hashes()[10].name_hash) + ", not above 0xFFFFFFFE");
    Hashes()[10] = {0xFFFFFFFFu, 5};
    ExpectFaultAt(&Hashes()[10].joint, "hashes[10].joint is 0x00000005, not -1 as in a filler");
    Hashes()[10].joint = -1;
    Header().signature = 7;
    EXPECT_TRUE(skeleton_verify(sample.Data(), sample.Size(), nullptr))
        << "with a filler the signature cannot be made again";
}

TEST(SkeletonSignature, TakesLinksAsSignedNumbersOf16Bits) {
    // There are links to both sides of the 32768th joint.
    SkeletonSample chain(ChainOfJoints(0x8003));
    EXPECT_TRUE(skeleton_verify(chain.Data(), chain.Size(), nullptr));
    const_cast<skeleton_header*>(chain.Header())->signature ^= 1;
    EXPECT_FALSE(skeleton_verify(chain.Data(), chain.Size(), nullptr));
}

TEST_F(SkeletonVerify, FaultsOfLevelsOfDetailAreNamed) {
    ExpectFault(Table<skeleton_lods>(Header().lods)->count, 0, "lods.count is 0");
    ExpectFault(*Table<std::uint32_t>(Header().lods), 1000000,
                "lods.count is 1000000: the rows go on to 0x16E3904, beyond the end at 0x0840");
    ExpectFault(
        *Table<std::uint32_t>(Header().lods), 0xFFFFFFFFu,
        "lods.count is 4294967295: the rows go on to 0x18000002EC, beyond the end at 0x0840");
    ExpectFault(Remap(1)[10], 0, "lods.remap[1][10] is 0, not 8");
    ExpectFault(Remap(0)[2], 1, "lods.remap[0][2] is 1, not 2");
    Remap(0)[0] = 0xFFFF;
    ExpectFaultAt(&Remap(0)[1], "lods.remap[0][1] is 1, not 65535");
}

TEST_F(SkeletonVerify, ASetOfMoreMembersThanItsCountHoldsLeavesNoJoint) {
    for (std::uint32_t joint = 0; joint < Header().joint_count; ++joint) Remap(0)[joint] = 0xFFFF;
    EXPECT_TRUE(skeleton_verify(sample.Data(), sample.Size(), nullptr));
}

TEST_F(SkeletonVerify, FaultsOfTheListOfItemsAreNamed) {
    auto* const kinds = Table<std::uint32_t>(Procedural().item_kinds);
    auto* const items = Table<skeleton_offset>(Procedural().items);
    ExpectFault(Procedural().magic[0], 'Z', "magic is 0x5A4A3031, not \"PJ01\"");
    ExpectFault(Procedural().item_count, 0, "item_count is 0");
    ExpectFault(Procedural().items_end, 8, "items_end leads to 0x034C, where no items can end");
    ExpectFault(Procedural().items_end, Procedural().items_end + 4,
                "items_end leads to 0x0824, where no items can end");
    ExpectFault(kinds[1], 2, "item_kinds[1] is 2, not 0 or 1");
    ExpectFault(items[0], items[0] + 16, "items[0] leads to 0x03A0, where no item begins");
    ExpectFault(items[2], items[2] + 4, "items[2] leads to 0x0624, where no item begins");
    ExpectFault(items[2], 0x7FFFFFF, "items[2] leads to 0x800037B, where no item begins");
    kinds[0] = SKELETON_ITEM_JOINT_CONSTRAINTS;
    ExpectFaultAt(skeleton_item(&Procedural(), 0), "items[0].magic is 0x444B3034, not \"JC01\"");
}

TEST_F(SkeletonVerify, FaultsOfExternalChannelsAreNamed) {
    auto* const inputs = Table<skeleton_external_channel>(Procedural().external_inputs);
    ExpectFault(inputs[0].kind, 1, "external_inputs[0].kind is 1, above 0");
    const std::uint32_t first = inputs[0].channel_hash;
    char text[100];
    snprintf(text, sizeof text, "external_inputs[1].channel_hash is 0x%08lX, not above 0x%08lX",
             static_cast<unsigned long>(first), static_cast<unsigned long>(first));
    ExpectFault(inputs[1].channel_hash, first, text);
    Procedural().external_outputs = 0;
    ExpectFaultAt(&Procedural().external_outputs, "external_outputs is 0: there is no table");
    Procedural().external_output_count = 0;
    Procedural().external_outputs = 4;
    ExpectFaultAt(&Procedural().external_outputs, "external_outputs has an offset, but no entries");
}

TEST_F(SkeletonVerify, FaultsOfDrivenKeysAreNamed) {
    ExpectFault(Keys().magic[0], 'Z', "items[1].magic is 0x5A4B3034, not \"DK04\"");
    ExpectFault(Keys().object_count, 4, "items[1].object_count is 4, not 3");
    ExpectFault(Keys().driven_object_count, 4,
                "items[1].driven_object_count is 4, above the 3 of object_count");
    ExpectFault(Keys().driven_object_count, 2, "items[1].driven_object_count is 2, not 1");
    ExpectFault(Keys().output_count, 0, "items[1].output_count is 0");
    ExpectFault(Keys().joint_orients, 0, "items[1].joint_orients is 0: there is no table");
    auto* const objects = Table<skeleton_driven_object>(Keys().objects);
    ExpectFault(objects[2].rotation_order, 6, "items[1].objects[2].rotation_order is 6, above 5");
    ExpectFault(objects[2].joint, 11, "items[1].objects[2].joint is 11, not below 11");
    ExpectFault(Table<float>(Keys().joint_orients)[5], kNotANumber,
                "items[1].joint_orients[1][1] is not a number");
    ExpectFault(Outputs()[1].curve_count, 0, "items[1].outputs[1].curve_count is 0");
    ExpectFault(Outputs()[1].target_count, 2, "items[1].outputs[1].target_count is 2, not 1");
    ExpectFault(Target(0).type, 4, "items[1].outputs[0].targets[0].type is 4, above 3");
    ExpectFault(Target(0).component, 3, "items[1].outputs[0].targets[0].component is 3, above 2");
    ExpectFault(Target(0).index, 1, "items[1].outputs[0].targets[0].index is 1, not below 1");
    ExpectFault(Target(1).index, 9, "items[1].outputs[1].targets[0].index is 9, not below 2");
}

TEST_F(SkeletonVerify, FaultsOfDrivenCurvesAreNamed) {
    skeleton_driven_curve& curve = Curves(0)[1];
    ExpectFault(curve.input_type, 4, "items[1].outputs[0].curves[1].input_type is 4, above 3");
    ExpectFault(curve.input_index, 3,
                "items[1].outputs[0].curves[1].input_index is 3, not below 3");
    ExpectFault(curve.input_component, 3,
                "items[1].outputs[0].curves[1].input_component is 3, above 2");
    ExpectFault(curve.key_count, 1, "items[1].outputs[0].curves[1].key_count is 1, below 2");
    ExpectFault(curve.first_time, 5,
                "items[1].outputs[0].curves[1].first_time is not its first key's");
    ExpectFault(curve.last_time, 5,
                "items[1].outputs[0].curves[1].last_time is not its last key's");
    ExpectFault(Table<float>(curve.times)[1], kNotANumber,
                "items[1].outputs[0].curves[1].times[1] is not a number");
    ExpectFault(Table<float>(curve.coefficients)[2], kNotANumber,
                "items[1].outputs[0].curves[1].coefficients[0][2] is not a number");
    curve.key_count = 0xFFFFFFFFu;
    skeleton_fault fault;
    EXPECT_FALSE(skeleton_verify(sample.Data(), sample.Size(), &fault));
    EXPECT_EQ(
        std::string(fault.text).find("items[1].outputs[0].curves[1].coefficients goes on to 0x"),
        0u);
}

TEST_F(SkeletonVerify, AnExternalChannelHasComponentsOnlyWhereItIsWritten) {
    const skeleton_driven_output* const outputs = skeleton_driven_output_at(&sample.Keys(0), 0);
    auto& curve = Free(*skeleton_driven_curve_at(outputs, 0));
    auto& target = Free(*skeleton_driven_target_of(outputs + 1));
    ExpectFault(curve.input_component, 1,
                "items[0].outputs[0].curves[0].input_component is 1, above 0");
    ExpectFault(curve.input_index, 2,
                "items[0].outputs[0].curves[0].input_index is 2, not below 2");
    ExpectFault(target.component, 4, "items[0].outputs[1].targets[0].component is 4, above 3");
    target.component = 3;
    EXPECT_TRUE(skeleton_verify(sample.Data(), sample.Size(), nullptr));
}

TEST_F(SkeletonVerify, FaultsOfConstraintsAreNamed) {
    auto* const slots = Table<std::uint16_t>(Constraints().joints);
    auto* const belt = Table<skeleton_constraint>(Constraints().orientations);
    auto& eye = *Table<skeleton_aim_constraint>(Constraints().aims);
    auto* const prop = Table<skeleton_parent_constraint>(Constraints().parents);
    auto& scale = *Table<skeleton_offset_constraint>(Constraints().scales);
    ExpectFault(Constraints().magic[0], 'Z', "items[2].magic is 0x5A433031, not \"JC01\"");
    ExpectFault(Constraints().reserved, 1, "items[2].reserved is not 0");
    ExpectFault(slots[1], 11, "items[2].joints[1] is 11, not below 11");
    ExpectFault(slots[1], slots[0], "items[2].joints[1] is 3, not above 3");
    ExpectFault(slots[6], 0, "items[2].joints[6] is 0, not above 0");
    ExpectFault(belt[0].flags, 4, "items[2].orientations[0].flags is 4, above 3");
    ExpectFault(belt[0].flags, 0, "items[2].orientations[0].flags is 0, no first target");
    ExpectFault(belt[1].flags, 1,
                "items[2].orientations[1].flags is 1, though the constraint in front has no last "
                "target");
    ExpectFault(belt[2].flags, 0, "items[2].orientations[2].flags is 0, no last target");
    ExpectFault(belt[1].constrained, 1,
                "items[2].orientations[1].constrained is 1, another one within one constraint");
    ExpectFault(belt[1].target, 0, "items[2].orientations[1].target is 0, not from 5 to below 9");
    ExpectFault(belt[1].target, 4, "items[2].orientations[1].target is 4, not from 5 to below 9");
    ExpectFault(belt[1].target, 9, "items[2].orientations[1].target is 9, not from 5 to below 9");
    ExpectFault(belt[1].weight, kNotANumber, "items[2].orientations[1].weight is not a number");
    ExpectFault(eye.common.constrained, 5, "items[2].aims[0].constrained is 5, not below 5");
    ExpectFault(eye.global_up[1], kNotANumber, "items[2].aims[0].global_up[1] is not a number");
    ExpectFault(eye.world_up, 3, "items[2].aims[0].world_up is 3, above 2");
    ExpectFault(eye.up_object, 9, "items[2].aims[0].up_object is 9, not below 9");
    ExpectFault(eye.reserved[3], 1, "items[2].aims[0].reserved[3] is not 0");
    ExpectFault(prop[0].translation[3], 2, "items[2].parents[0].translation[3] is not 1");
    ExpectFault(scale.offset[3], 1, "items[2].scales[0].offset[3] is not 0");
    ExpectFault(Constraints().end, 16, "items[2].end leads to 0x0634, not to 0x0790");
    eye.world_up = SKELETON_WORLD_UP_VECTOR;
    ExpectFaultAt(&eye.up_object, "items[2].aims[0].up_object is 6, not 65535");
}

TEST_F(SkeletonVerify, TheFirstFaultOfEachTableIsFound) {
    Joints()[7].parent = 9;
    Joints()[8].parent = 9;
    Transforms()[0].scale[1] = kNotANumber;
    Hashes()[2].joint = 11;
    Target(0).type = 9;
    Constraints().reserved = 1;
    skeleton_fault faults[8];
    ASSERT_EQ(skeleton_find_faults(sample.Data(), sample.Size(), faults, 8), 5u);
    EXPECT_STREQ(faults[0].text, "joints[7].parent is 9, not below 7");
    EXPECT_STREQ(faults[1].text, "transforms[0].scale[1] is not a number");
    EXPECT_STREQ(faults[2].text, "hashes[2].joint is 0x0000000B, not below 11");
    EXPECT_STREQ(faults[3].text, "items[1].outputs[0].targets[0].type is 9, above 3");
    EXPECT_STREQ(faults[4].text, "items[2].reserved is not 0");
    EXPECT_EQ(skeleton_find_faults(sample.Data(), sample.Size(), faults, 2), 5u)
        << "counted, though there is no room";
}
