#include "Support/BakeInput.h"

#include <array>

namespace {

constexpr unsigned kMark = 0x80;

void AddFlags(BakeInput& input, unsigned first, unsigned second) {
    const auto add = [&input](std::initializer_list<const char*> words) {
        input.flags.insert(input.flags.end(), words.begin(), words.end());
    };
    if ((first & 1) != 0) add({"-multiRoot"});
    if ((first & 2) != 0) add({"-outputDrivenKeys", "false"});
    if ((first & 4) != 0) add({"-ojc", "true"});
    static constexpr std::array<const char*, 4> kAxes = {"", "keep", "y", "z"};
    if (const unsigned axis = (first >> 3) & 3; axis != 0) add({"-changeUpAxis", kAxes[axis]});
    if ((first & 0x20) != 0) add({"-changeUpAxisAnimation", (second & 1) != 0 ? "false" : "true"});
    input.turnsAnimation = (first & 0x30) == 0x30 && (second & 1) == 0;
    input.makesTwo = (first & 0x40) == 0;

    if (input.makesTwo)
        add({"-bothendian"});
    else
        add({(second & 2) != 0 ? "-be" : "-le"});
    if (input.makesTwo && (second & 4) != 0) add({"-ls", ".little", "-bs", ".big"});
    if ((second & 8) != 0) add({"-verboseSkeleton"});
    input.updatesOld = (second & 0x30) != 0x30;
    add({"-autoupdate", input.updatesOld ? "true" : "false"});
    if ((second & 0x30) == 0x20) add({"-quietload"});
    if ((second & 0x30) == 0x10) add({"-verboseload"});
    if ((second & 0x40) != 0) add({"-tt", "1"});
    // The copy of the output has a thread of its own, which costs more than a bake.
    input.writesLog = (second & 0x8F) == 0x8F;
}

}  // namespace

std::size_t CountFlagBytes(std::string_view bytes) {
    if (bytes.size() < 2) return 0;
    const bool isMarked = (static_cast<unsigned char>(bytes[0]) & kMark) != 0;
    return isMarked ? 2 : 0;
}

BakeInput ReadBakeInput(std::string_view bytes) {
    BakeInput input;
    const std::size_t flagBytes = CountFlagBytes(bytes);
    if (flagBytes == 0)
        AddFlags(input, 4, 0);  // joint constraints, both byte orders
    else
        AddFlags(input, static_cast<unsigned char>(bytes[0]), static_cast<unsigned char>(bytes[1]));
    input.document = bytes.substr(flagBytes);
    return input;
}
