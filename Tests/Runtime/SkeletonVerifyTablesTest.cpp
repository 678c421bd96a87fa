#include "Runtime/DamagedSkeleton.h"

#include <algorithm>
#include <bit>
#include <set>
#include <string>
#include <vector>

namespace {

/// This machine's order of bytes, in which the damage is done.
constexpr bool kIsLittle = std::endian::native == std::endian::little;

using Texts = std::vector<std::string>;

/// The first fault of each table is told, whatever the tables beside it are like.
class SkeletonVerifyTables : public DamagedSkeleton {
  protected:
    Texts Faults() {
        std::vector<skeleton_fault> faults(64);
        const std::size_t count =
            skeleton_find_faults(sample.Data(), sample.Size(), faults.data(), faults.size());
        EXPECT_LE(count, faults.size());
        Texts texts;
        for (std::size_t i = 0; i < std::min(count, faults.size()); ++i)
            texts.emplace_back(faults[i].text);
        return texts;
    }

    /// Two faults in what each table holds; the offsets and counts between them stay right.
    Texts DamageContents() {
        for (int i = 0; i < 2; ++i) {
            Header().reserved1[i] = 1;
            Joints()[7 + i].flags = 2;
            Transforms()[4 + i].rotation[0] = kNotANumber;
            Hashes()[2 + i].joint = 11;
            Remap(0)[9 + i] = 0;
            Table<skeleton_external_channel>(Procedural().external_inputs)[i].kind = 7;
            Table<skeleton_external_channel>(Procedural().external_outputs)[i].kind = 7;
            Table<skeleton_driven_object>(Keys().objects)[1 + i].joint = 11;
            Table<float>(Keys().rotation_axes)[1 + i] = kNotANumber;
            Table<float>(Keys().joint_orients)[2 + i] = kNotANumber;
            Target(i).component = 9;
            Curves(0)[i].input_component = 9;
            Table<float>(Curves(0)[0].coefficients)[i] = kNotANumber;
            Table<float>(Curves(0)[1].times)[i] = kNotANumber;
            Table<std::uint16_t>(Constraints().joints)[1 + i] = 11;
            Table<skeleton_constraint>(Constraints().orientations)[1 + i].weight = kNotANumber;
            Table<skeleton_parent_constraint>(Constraints().parents)[i].translation[1] =
                kNotANumber;
        }
        Constraints().reserved = 1;
        Table<skeleton_offset_constraint>(Constraints().translations)->offset[2] = kNotANumber;
        Table<skeleton_offset_constraint>(Constraints().scales)->offset[3] = 1;
        Table<skeleton_aim_constraint>(Constraints().aims)->up[0] = kNotANumber;
        return Faults();
    }
    /// One number of a file whose tables all have a fault is set to `value`: that is told as `text`
    /// and covers the faults that begin with one of `lost`, no others.
    template <class T, class V>
    [[gnu::noinline]] void ExpectOthersAreTold(T& field, V value, const std::string& text,
                                               const Texts& lost) {
        const T sound = field;
        const Texts before = Faults();
        field = static_cast<T>(value);
        const Texts after = Faults();
        field = sound;
        EXPECT_EQ(std::count(after.begin(), after.end(), text), 1) << text << " is not among\n"
                                                                   << testing::PrintToString(after);
        for (const std::string& fault : before) {
            const bool isLost = std::any_of(lost.begin(), lost.end(), [&](const std::string& part) {
                return fault.starts_with(part);
            });
            EXPECT_EQ(std::count(after.begin(), after.end(), fault), isLost ? 0 : 1)
                << text << ": " << fault;
        }
    }
};

}  // namespace

TEST_F(SkeletonVerifyTables, OneFaultOfEachIsTold) {
    EXPECT_EQ(DamageContents(),
              (Texts{"reserved1[0] is not 0",
                     "joints[7].flags is 0x0002, not 0 or 1",
                     "transforms[4].rotation[0] is not a number",
                     "hashes[2].joint is 0x0000000B, not below 11",
                     "lods.remap[0][9] is 0, not 2",
                     "external_inputs[0].kind is 7, above 0",
                     "external_outputs[0].kind is 7, above 2",
                     "items[1].objects[1].joint is 11, not below 11",
                     "items[1].rotation_axes[0][1] is not a number",
                     "items[1].joint_orients[0][2] is not a number",
                     "items[1].outputs[0].curves[0].input_component is 9, above 2",
                     "items[1].outputs[0].targets[0].component is 9, above 2",
                     "items[1].outputs[0].curves[0].coefficients[0][0] is not a number",
                     "items[1].outputs[0].curves[1].times[0] is not a number",
                     "items[2].reserved is not 0",
                     "items[2].joints[1] is 11, not below 11",
                     "items[2].orientations[1].weight is not a number",
                     "items[2].translations[0].offset[2] is not a number",
                     "items[2].scales[0].offset[3] is not 0",
                     "items[2].aims[0].up[0] is not a number",
                     "items[2].parents[0].translation[1] is not a number"}));
}

TEST_F(SkeletonVerifyTables, TheOtherByteOrderHasTheSameFaults) {
    const Texts faults = DamageContents();
    std::string turned = SkeletonSample::Read(kIsLittle ? "parts-big" : "parts-little");
    const std::string sound = SkeletonSample::Read(kIsLittle ? "parts-little" : "parts-big");
    const std::string damaged = sample.Bytes();
    std::set<std::size_t> halves;  // all other damaged numbers have four bytes
    const auto addHalf = [&](const std::uint16_t& number) {
        halves.insert(static_cast<std::size_t>(reinterpret_cast<const char*>(&number) -
                                               static_cast<const char*>(sample.Data())));
    };
    for (int i = 0; i < 2; ++i) {
        addHalf(Joints()[7 + i].flags);
        addHalf(Remap(0)[9 + i]);
        addHalf(Table<skeleton_driven_object>(Keys().objects)[1 + i].joint);
        addHalf(Target(i).component);
        addHalf(Curves(0)[i].input_component);
        addHalf(Table<std::uint16_t>(Constraints().joints)[1 + i]);
    }
    addHalf(Constraints().reserved);
    for (std::size_t at = 0, width = 2; at < sound.size(); at += width) {
        width = at % 4 == 0 && !halves.contains(at) && !halves.contains(at + 2) ? 4 : 2;
        if (sound.compare(at, width, damaged, at, width) == 0) continue;
        std::reverse_copy(damaged.begin() + static_cast<std::ptrdiff_t>(at),
                          damaged.begin() + static_cast<std::ptrdiff_t>(at + width),
                          turned.begin() + static_cast<std::ptrdiff_t>(at));
    }
    sample = SkeletonSample(turned);
    EXPECT_EQ(Faults(), faults);
}

TEST_F(SkeletonVerifyTables, AWrongOffsetInTheHeaderHidesNoOtherTable) {
    DamageContents();
    ExpectOthersAreTold(Header().transforms, Header().transforms + 16,
                        "transforms leads to 0x00A0, not to 0x0090", {"transforms["});
    ExpectOthersAreTold(Header().hashes, 16, "hashes leads to 0x0024, not to 0x02A0", {"hashes["});
    ExpectOthersAreTold(Header().lods, 0x7000, "lods leads to 0x7018, not to 0x0300", {"lods."});
    ExpectOthersAreTold(Header().procedural, 0x7000, "procedural leads to 0x701C, not to 0x0340",
                        {"items", "external"});
    ExpectOthersAreTold(*Table<std::uint32_t>(Header().lods), 1000000,
                        "lods.count is 1000000: the rows go on to 0x16E3904, beyond the end at "
                        "0x0840",
                        {"lods."});
    ExpectOthersAreTold(*Table<std::uint32_t>(Header().lods), 3,
                        "procedural leads to 0x0340, not to 0x0350", {"lods."});
}

TEST_F(SkeletonVerifyTables, AStandInThatDoesNotStayIsToldWhateverTheJointsAreLike) {
    const std::string parent = "joints[9].parent is 9, not below 9";
    Joints()[9].parent = 9;
    EXPECT_EQ(Faults(), Texts{parent});
    Remap(0)[9] = 8;
    EXPECT_EQ(Faults(), (Texts{parent, "lods.remap[0][9] is 8, which does not stay"}));
    Remap(0)[9] = 0xFFFE;
    EXPECT_EQ(Faults(), (Texts{parent, "lods.remap[0][9] is 65534, which does not stay"}));
}

TEST_F(SkeletonVerifyTables, AWrongListOfItemsHidesWhatItAloneLeadsTo) {
    DamageContents();
    auto* const items = Table<skeleton_offset>(Procedural().items);
    ExpectOthersAreTold(Procedural().items_end, 8,
                        "items_end leads to 0x034C, where no items can end", {});
    ExpectOthersAreTold(Procedural().items_end, Procedural().items_end - 16,
                        "external_inputs leads to 0x0820, not to 0x0810", {"external_inputs["});
    ExpectOthersAreTold(Procedural().item_count, 5000000,
                        "item_kinds goes on to 0x1313064, beyond the end at 0x0840", {"items"});
    ExpectOthersAreTold(Procedural().item_kinds, 5, "item_kinds leads to 0x0351, not to 0x0364",
                        {});
    ExpectOthersAreTold(*Table<std::uint32_t>(Procedural().item_kinds), 2,
                        "item_kinds[0] is 2, not 0 or 1", {});
    ExpectOthersAreTold(Procedural().items, 5, "items leads to 0x0355, not to 0x0374", {"items"});
    ExpectOthersAreTold(items[1], items[1] + 16,
                        std::string("items[1].magic is ") +
                            (kIsLittle ? "0x20000000" : "0x00000020") + ", not \"DK04\"",
                        {"items[1]."});
    ExpectOthersAreTold(items[1], items[1] + 8, "items[1] leads to 0x0498, where no item begins",
                        {"items[1]."});
    ExpectOthersAreTold(items[2], 0x70000, "items[2] leads to 0x7037C, where no item begins",
                        {"items[2]."});
    ExpectOthersAreTold(Procedural().external_input_count, 300,
                        "external_inputs goes on to 0x1180, beyond the end at 0x0840",
                        {"external_inputs["});
}

TEST_F(SkeletonVerifyTables, AWrongMagicHidesTheHeaderBehindItAlone) {
    DamageContents();
    auto* const kinds = Table<std::uint32_t>(Procedural().item_kinds);
    ExpectOthersAreTold(Procedural().magic[0], 'Z', "magic is 0x5A4A3031, not \"PJ01\"", {});
    ExpectOthersAreTold(Keys().magic[3], 'Z', "items[1].magic is 0x444B305A, not \"DK04\"", {});
    ExpectOthersAreTold(Constraints().magic[1], 'Z', "items[2].magic is 0x4A5A3031, not \"JC01\"",
                        {"items[2].reserved"});
    ExpectOthersAreTold(kinds[1], SKELETON_ITEM_JOINT_CONSTRAINTS,
                        "items[1].magic is 0x444B3034, not \"JC01\"", {});
    ExpectOthersAreTold(kinds[2], SKELETON_ITEM_DRIVEN_KEYS,
                        "items[2].magic is 0x4A433031, not \"DK04\"", {"items[2].reserved"});
}

TEST_F(SkeletonVerifyTables, AWrongTableOfDrivenKeysHidesNoOther) {
    DamageContents();
    ExpectOthersAreTold(Keys().object_count, 2,
                        "items[1].object_count is 2, but there are rows for 3", {});
    ExpectOthersAreTold(Keys().objects, 0, "items[1].objects is 0: there is no table",
                        {"items[1].objects["});
    ExpectOthersAreTold(Keys().rotation_axes, 16,
                        "items[1].rotation_axes leads to 0x04B4, not to 0x04D0",
                        {"items[1].rotation_axes["});
    ExpectOthersAreTold(Keys().joint_orients, 16,
                        "items[1].joint_orients leads to 0x04B8, not to 0x0500",
                        {"items[1].joint_orients["});
    ExpectOthersAreTold(Keys().outputs, 16, "items[1].outputs leads to 0x04C0, not to 0x0530",
                        {"items[1].outputs["});
    ExpectOthersAreTold(Outputs()[0].targets, 16,
                        "items[1].outputs[0].targets leads to 0x054C, not to 0x05B0", {});
    ExpectOthersAreTold(Outputs()[1].target_count, 2,
                        "items[1].outputs[1].target_count is 2, not 1", {});
    ExpectOthersAreTold(Curves(0)[1].times, 0x7000, "items[1].times[3] is not a number",
                        {"items[1].outputs[0].curves[0].coef", "items[1].outputs[0].curves[1]"});
}

TEST_F(SkeletonVerifyTables, CurvesThatNoOutputTellsApartAreNamedByTheirPlaceAmongAll) {
    DamageContents();
    const Texts lost = {"items[1].outputs[0].curves["};
    ExpectOthersAreTold(Outputs()[0].curve_count, 1,
                        "items[1].outputs[1].curves leads to 0x0588, not to 0x056C", lost);
    ExpectOthersAreTold(Outputs()[1].curve_count, 2,
                        "items[1].outputs[0].targets leads to 0x05B0, not to 0x05C0", lost);
    ExpectOthersAreTold(Outputs()[1].curve_count, 0, "items[1].outputs[1].curve_count is 0", lost);
    for (const char* text : {"items[1].curves[0].input_component is 9, above 2",
                             "items[1].curves[0].coefficients[0][0] is not a number",
                             "items[1].curves[1].times[0] is not a number"})
        ExpectOthersAreTold(Outputs()[1].curve_count, 0, text, lost);
}

TEST_F(SkeletonVerifyTables, AWrongListOfConstraintsHidesNoOther) {
    DamageContents();
    const std::string item = "items[2].";
    ExpectOthersAreTold(Constraints().joints, 16, item + "joints leads to 0x0638, not to 0x0650",
                        {item + "joints["});
    ExpectOthersAreTold(Constraints().translations, 4,
                        item + "translations leads to 0x0638, not to 0x06A0",
                        {item + "translations["});
    ExpectOthersAreTold(Constraints().translation_count, 4,
                        item + "scales leads to 0x06C0, not to 0x0720", {item + "scales["});
    ExpectOthersAreTold(Constraints().scale_count, 60000,
                        item + "scales goes on to 0x1D52C0, beyond the end at 0x0790",
                        {item + "scales["});
    ExpectOthersAreTold(Constraints().parent_count, 4,
                        item + "parents goes on to 0x07F0, beyond the end at 0x0790",
                        {item + "parents["});
    ExpectOthersAreTold(Constraints().target_count, 40000,
                        item + "joints goes on to 0x13EDA, beyond the end at 0x0790",
                        {item + "joints["});
}
