#include "Diff.h"
#include "Dump.h"
#include "Runtime/WalkSkeleton.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <sstream>

namespace {

std::string ReadSeed(const std::string& name) {
    std::ifstream in(RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/" + name, std::ios::binary);
    EXPECT_TRUE(in) << name;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// Looks at bytes as every command does. True when they are a sound file; then it has been walked
/// whole, and shown whole when that is wanted.
bool Take(const std::string& bytes, bool isShown) {
    // A block of just this size, so that the sanitizer sees the first byte too many.
    const std::unique_ptr<char[]> exact(new char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    if (skeleton_find_faults(exact.get(), bytes.size(), nullptr, 0) != 0) return false;
    const SkeletonFile file("file", std::span(exact.get(), bytes.size()));
    WalkSkeleton(file.Header());
    if (!isShown) return true;
    const Description::Skeleton skeleton = Description::Describe(file, Names());
    std::ostringstream text;
    DumpText(skeleton, text);
    DumpJson(skeleton).dump();
    EXPECT_TRUE(Compare(skeleton, skeleton).IsEmpty());
    return true;
}

/// Half of the changes are of one byte, half of two; values that offsets and counts break at are
/// as frequent as all others.
class Changes {
  public:
    void Apply(std::string& bytes) {
        for (auto count = 1 + random() % 2; count > 0; --count) {
            char& byte = bytes[random() % bytes.size()];
            static constexpr unsigned char kEdges[] = {0, 1, 2, 15, 16, 0x7F, 0x80, 0xFE, 0xFF};
            const auto kind = random() % 3;
            if (kind == 0)
                byte = static_cast<char>(random());
            else if (kind == 1)
                byte = static_cast<char>(kEdges[random() % std::size(kEdges)]);
            else
                byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1u << (random() % 8)));
        }
    }

  private:
    std::mt19937 random{14};
};

}  // namespace

TEST(HostileFile, FiftySevenTruncationsAreRefused) {
    for (const char* name : {"parts-little", "parts-big", "roots", "biped"}) {
        const std::string bytes = ReadSeed(name);
        EXPECT_TRUE(Take(bytes, true)) << name;
        for (std::size_t i = 0; i < 57; ++i)
            EXPECT_FALSE(Take(bytes.substr(0, i * bytes.size() / 57), true)) << name << " " << i;
        EXPECT_FALSE(Take(bytes.substr(0, bytes.size() - 1), true)) << name;
    }
}

TEST(HostileFile, EveryOtherByteOfASoundFileIsSeenByDumpAndDiff) {
    const auto describe = [](const std::string& bytes) {
        return Description::Describe(SkeletonFile("file", bytes), Names());
    };
    for (const char* name : {"parts-little", "parts-big", "roots"}) {
        const std::string bytes = ReadSeed(name);
        const Description::Skeleton whole = describe(bytes);
        const std::string shown = DumpJson(whole).dump();
        std::size_t accepted = 0;
        for (std::size_t at = 0; at < bytes.size(); ++at)
            for (const int bit : {1, 16}) {
                std::string changed = bytes;
                changed[at] = static_cast<char>(changed[at] ^ bit);
                if (skeleton_find_faults(changed.data(), changed.size(), nullptr, 0) != 0) continue;
                ++accepted;
                const Description::Skeleton other = describe(changed);
                EXPECT_FALSE(Compare(whole, other).IsEmpty()) << name << " " << at;
                if (at % 7 == 0) {
                    EXPECT_NE(DumpJson(other).dump(), shown) << name << " " << at;
                }
            }
        EXPECT_GT(accepted, 10u) << name;
    }
}

/// Showing costs a hundred times as much as walking.
constexpr int kShownEvery = 100;

TEST(HostileFile, AHundredThousandChangesAreRefusedOrWalkedWhole) {
    Changes changes;
    std::size_t accepted = 0, refused = 0;
    for (const char* name : {"parts-little", "parts-big", "roots", "biped"}) {
        const std::string bytes = ReadSeed(name);
        for (int i = 0; i < 25000; ++i) {
            std::string changed = bytes;
            changes.Apply(changed);
            (Take(changed, i % kShownEvery == 0) ? accepted : refused) += 1;
        }
    }
    // Changes to the numbers of transforms, curves and weights stand; those to the structure do
    // not.
    EXPECT_GT(accepted, 20000u);
    EXPECT_GT(refused, 20000u);
    EXPECT_EQ(accepted + refused, 100000u);
}
