#include "Support/BakeInput.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr unsigned kMark = 0x80;

/// What the latest keys of all channels of a turned animation may come to: under the sanitizers a
/// minute takes two seconds and a thousand seconds take thirty, which is right and no finding.
constexpr double kLongestTurned = 120;
/// Of keys beyond this so many samples would come that they are refused before one is taken.
constexpr double kSoonRefused = 100000;

/// The latest of a text's numbers that is not refused; what is no number is passed over.
double FindLatestKey(const std::string& text) {
    double latest = 0;
    const char* at = text.c_str();
    while (*at != '\0') {
        char* end = nullptr;
        const double time = std::strtod(at, &end);
        if (time <= kSoonRefused) latest = std::max(latest, time);
        at = end == at ? at + 1 : end;
    }
    return latest;
}

bool IsTurnedSoon(std::string_view document) {
    static constexpr std::string_view kKeys = "keyTimes";
    double sum = 0;
    for (std::size_t at = document.find(kKeys); at != std::string_view::npos;
         at = document.find(kKeys, at + kKeys.size())) {
        const std::size_t end = document.find('>', at);
        if (end == std::string_view::npos) break;
        const std::string_view text = document.substr(end + 1);
        sum += FindLatestKey(std::string(text.substr(0, text.find('<'))));
    }
    return sum <= kLongestTurned;
}

void AddFlags(BakeInput& input, unsigned first, unsigned second) {
    const auto add = [&input](std::initializer_list<const char*> words) {
        input.flags.insert(input.flags.end(), words.begin(), words.end());
    };
    if ((first & 1) != 0) add({"-multiRoot"});
    if ((first & 2) != 0) add({"-outputDrivenKeys", "false"});
    if ((first & 4) != 0) add({"-ojc", "true"});
    static constexpr std::array<const char*, 4> kAxes = {"", "keep", "y", "z"};
    if (const unsigned axis = (first >> 3) & 3; axis != 0) add({"-changeUpAxis", kAxes[axis]});
    const bool asksForTurn = (first & 0x20) != 0 && (second & 1) == 0;
    const bool turns = asksForTurn && IsTurnedSoon(input.document);
    if ((first & 0x20) != 0) add({"-changeUpAxisAnimation", turns ? "true" : "false"});
    input.turnsAnimation = turns && (first & 0x10) != 0;
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
    input.document = bytes.substr(flagBytes);
    if (flagBytes == 0)
        AddFlags(input, 4, 0);  // joint constraints, both byte orders
    else
        AddFlags(input, static_cast<unsigned char>(bytes[0]), static_cast<unsigned char>(bytes[1]));
    return input;
}
