#include "Runtime/DamagedSkeleton.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

/// A fault as people read it.
std::string Line(const skeleton_fault& fault) {
    char place[32];
    snprintf(place, sizeof place, "0x%04lX: ", static_cast<unsigned long>(fault.offset));
    return place + std::string(fault.text);
}

/// Where tables and items end, and what lies between them.
class SkeletonVerifyPlaces : public DamagedSkeleton {
  protected:
    static std::vector<std::string> Faults(const void* data, std::size_t size) {
        std::vector<skeleton_fault> faults(16);
        faults.resize(std::min(faults.size(),
                               skeleton_find_faults(data, size, faults.data(), faults.size())));
        std::vector<std::string> lines(faults.size());
        std::transform(faults.begin(), faults.end(), lines.begin(), Line);
        return lines;
    }
    std::vector<std::string> Faults() { return Faults(sample.Data(), sample.Size()); }

    /// The bytes from `from` to `to` are padding, where every byte but 0 is a fault; the bytes
    /// beside them are not.
    void ExpectPadding(std::size_t from, std::size_t to, const std::string& part,
                       const std::string& table) {
        auto* const bytes = static_cast<unsigned char*>(sample.Data());
        const std::string text = part + "padding in front of " + table + " is 0xA5, not 0";
        for (std::size_t at = from; at < to; ++at) {
            ASSERT_EQ(bytes[at], 0) << at;
            ExpectFault(bytes[at], 0xA5, text);
        }
        for (const std::size_t beside : {from - 1, to}) {
            const unsigned char sound = bytes[beside];
            bytes[beside] = 0xA5;
            for (const std::string& line : Faults())
                EXPECT_EQ(line.find("padding"), std::string::npos) << line;
            bytes[beside] = sound;
        }
    }
    /// The file ends `left` bytes behind where its last item, at 0x790, begins, and so does the
    /// memory that holds it.
    std::vector<std::string> FaultsOfCutFile(std::size_t left) {
        const std::size_t size = 0x790 + left;
        const auto distance = [&](const skeleton_offset& field) {
            return static_cast<skeleton_offset>(size - PlaceOf(&field));
        };
        Procedural().items_end = distance(Procedural().items_end);
        Procedural().external_input_count = Procedural().external_output_count = 0;
        Procedural().external_inputs = Procedural().external_outputs = 0;
        Header().procedural_end = distance(Header().procedural_end);
        const std::unique_ptr<char[]> exact(new char[size]);
        std::copy_n(static_cast<const char*>(sample.Data()), size, exact.get());
        return Faults(exact.get(), size);
    }
};

}  // namespace

TEST_F(SkeletonVerifyPlaces, PaddingIsZeros) {
    ExpectPadding(0x088, 0x090, "", "transforms");
    ExpectPadding(0x2F8, 0x300, "", "lods");
    ExpectPadding(0x334, 0x340, "", "procedural");
    ExpectPadding(0x384, 0x390, "", "items");
    ExpectPadding(0x4B4, 0x4C0, "items[1].", "objects");
    ExpectPadding(0x4CC, 0x4D0, "items[1].", "rotation_axes");
    ExpectPadding(0x5A4, 0x5B0, "items[1].", "targets");
    ExpectPadding(0x61C, 0x620, "items[1].", "end");
    ExpectPadding(0x662, 0x670, "items[2].", "orientations");
    sample = SkeletonSample::Load("biped");
    ExpectPadding(0x1398, 0x13A0, "items[1].", "coefficients");
}

TEST_F(SkeletonVerifyPlaces, AnItemThatEndsWithinItsHeaderIsNotLookedInto) {
    for (const std::size_t left : {16u, 32u}) {
        const std::string end = left == 16 ? "0x07A0" : "0x07B0";
        sample = SkeletonSample::Load("parts-little");
        EXPECT_EQ(FaultsOfCutFile(left),
                  (std::vector<std::string>{
                      // What the cut took beside the item.
                      "0x03E0: items[0].outputs[0].curves[0].input_index is 1, not below 0",
                      "0x0428: items[0].outputs[1].targets[0].index is 0, not below 0",
                      "0x05B8: items[1].outputs[1].targets[0].index is 1, not below 0",
                      "0x0794: items[3].end is at " + end +
                          " at most, within the header of its constraints"}));
        Table<std::uint32_t>(Procedural().item_kinds)[3] = SKELETON_ITEM_DRIVEN_KEYS;
        std::memcpy(static_cast<char*>(sample.Data()) + 0x790, "DK04", 4);
        const std::vector<std::string> faults = FaultsOfCutFile(left);
        ASSERT_EQ(faults.size(), 4u);
        EXPECT_EQ(faults[3], "0x0794: items[3].end is at " + end +
                                 " at most, within the header of its driven keys");
    }
}

TEST_F(SkeletonVerifyPlaces, AnItemThatGoesOnBehindItsLastTableIsAFaultOfItsEnd) {
    Procedural().items_end += 16;
    EXPECT_EQ(Faults(),
              (std::vector<std::string>{
                  "0x0358: external_inputs leads to 0x0820, not to 0x0830",
                  "0x0794: items[3].end leads to 0x0820, but the item goes on to 0x0830"}));
}

TEST_F(SkeletonVerifyPlaces, AnItemWithoutConstraintsIsAFault) {
    skeleton_joint_constraints& item = Constraints();
    item.orientation_count = item.translation_count = item.scale_count = item.aim_count =
        item.parent_count = 0;
    for (skeleton_offset* const list :
         {&item.orientations, &item.translations, &item.scales, &item.aims, &item.parents})
        *list = static_cast<skeleton_offset>(0x670 - PlaceOf(list));
    ExpectFaultAt(&item.orientation_count,
                  "items[2].orientation_count is 0, as are the counts of the other lists");
}

TEST_F(SkeletonVerifyPlaces, AnEndOfProceduralDataThatIsNotThereIsAFault) {
    sample = SkeletonSample::Load("roots");
    ExpectFault(Header().procedural_end, sample.Size() - 0x20,
                "procedural_end is set, though there is no procedural data");
}
