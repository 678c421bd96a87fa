#include "EndToEnd/PictureRun.h"

#include <VokLib/Library/VokLib.h>
#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "Description.h"

namespace {

constexpr std::size_t kUses = 2000;

/// A root "r" with a joint, whose orientation another one follows `kUses` times.
std::string SceneOf(const std::string& joint) {
    std::string targets;
    for (std::size_t i = 0; i < kUses; ++i)
        targets += "<target name=\"||r|" + joint + "\" weight=\"1\"/>";
    return Document("<scene><joint name=\"r\"><joint name=\"" + joint +
                    "\"/><joint name=\"j\"/></joint></scene><orientationConstraint name=\"c\" "
                    "constrain=\"||r|j\">" +
                    targets + "</orientationConstraint>");
}

/// In a file of this machine's own order writes the hash of `name` over that of `old`, which no
/// bake does where the name is too long, and signs the file anew.
void Rename(std::string& bytes, const std::string& old, const std::string& name) {
    const auto get = [&](std::size_t place) {
        std::uint32_t number;
        std::memcpy(&number, &bytes[place], sizeof number);
        return number;
    };
    const auto put = [&](std::size_t place, std::uint32_t number) {
        std::memcpy(&bytes[place], &number, sizeof number);
    };
    const std::size_t table = 0x14 + get(0x14);
    std::vector<std::pair<std::uint32_t, std::uint32_t>> records;
    for (std::size_t i = 0; i < 3; ++i)
        records.emplace_back(get(table + 8 * i), get(table + 8 * i + 4));
    for (auto& record : records)
        if (record.first == skeleton_hash_lower(old.data(), old.size()))
            record.first = skeleton_hash_lower(name.data(), name.size());
    std::sort(records.begin(), records.end());
    for (std::size_t i = 0; i < records.size(); ++i) {
        put(table + 8 * i, records[i].first);
        put(table + 8 * i + 4, records[i].second);
    }
    std::vector<std::uint64_t> aligned(bytes.size() / 8 + 1);
    std::memcpy(aligned.data(), bytes.data(), bytes.size());
    skeleton_fault fault;
    ASSERT_EQ(skeleton_verify(aligned.data(), bytes.size(), &fault), 0);
    unsigned stated, signature;
    ASSERT_EQ(
        std::sscanf(fault.text, "signature is 0x%8X, the joints make 0x%8X", &stated, &signature),
        2)
        << fault.text;
    put(4, signature);
}

class SkelLongNames : public PictureRun {
  protected:
    Names NamesOf(const std::string& body) const {
        const VokLib library{true, true, true, true, true};
        folder.WriteFile("names.qeli", Document(body));
        return Names::Load({folder.Path() + "/names.qeli"});
    }
    std::string Dump(const std::string& file) const {
        const ProgramResult run = folder.Run("skel", {"dump", file, "--names", "names.qeli"});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.errors, "");
        return run.output;
    }
};

std::optional<std::string> JointNamed(const Names& names, const std::string& name) {
    return names.FindJoint(skeleton_hash_lower(name.data(), name.size()));
}

std::optional<std::string> ChannelNamed(const Names& names, const std::string& name,
                                        bool isMaterial) {
    return names.FindChannel(isMaterial ? skeleton_hash_exact(name.data(), name.size())
                                        : skeleton_hash_lower(name.data(), name.size()),
                             isMaterial);
}

}  // namespace

TEST_F(SkelLongNames, AJointsNameIsKnownUpToTheLengthThatABakeTakes) {
    const std::string longest(260, 'x'), tooLong(261, 'y'), namespaced(255, 'z');
    const Names names =
        NamesOf("<scene><joint name=\"" + tooLong + "\"><joint name=\"" + longest +
                "\"/><joint name=\"outer:inner:" + namespaced + "\"/></joint></scene>");
    EXPECT_EQ(JointNamed(names, longest), longest);
    EXPECT_EQ(JointNamed(names, tooLong), std::nullopt);
    EXPECT_EQ(JointNamed(names, namespaced), namespaced);
    const auto bake = [this](const std::string& name) {
        folder.WriteFile("one.qeli", Document("<scene><joint name=\"" + name + "\"/></scene>"));
        return folder.Rigbake({"-in", "one.qeli", "-out", "one"}).status;
    };
    EXPECT_EQ(bake(longest), 0);
    EXPECT_EQ(bake(tooLong), 1);
}

TEST_F(SkelLongNames, AChannelsNameIsKnownUpToTheSameLength) {
    const auto driven = [](const std::string& channel, const std::string& input) {
        return "<anim name=\"k\" target=\"\"><animChannel name=\"k\" channel=\"" + channel +
               "\" inputObject=\"||r\" inputChannel=\"" + input + "\"/></anim>";
    };
    const std::string longest(260, 'x'), tooLong(261, 'y');
    const std::string input(260, 'i'), longInput(261, 'k');
    const std::string blend(260, 'b'), longBlend(261, 'd');
    const Names names =
        NamesOf("<scene><joint name=\"r\"/></scene>" + driven(longest, input) +
                driven(tooLong, longInput) + "<blend name=\"b\" target=\"\" channel=\"" + blend +
                "\"/><blend name=\"d\" target=\"\" channel=\"" + longBlend + "\"/>");
    for (const bool isMaterial : {false, true}) {
        for (const std::string& name : {longest, input, blend})
            EXPECT_EQ(ChannelNamed(names, name, isMaterial), name);
        for (const std::string& name : {tooLong, longInput, longBlend})
            EXPECT_EQ(ChannelNamed(names, name, isMaterial), std::nullopt);
    }
}

TEST_F(SkelLongNames, OneNameThatIsUsedThousandsOfTimesStaysInProportionToTheFile) {
    folder.WriteFile("file.qeli", SceneOf("q"));
    const char* const order = std::endian::native == std::endian::big ? "-be" : "-le";
    ASSERT_EQ(folder.Rigbake({"-in", "file.qeli", "-out", "file", "-ojc", "true", order}).status,
              0);
    for (const std::size_t length : {std::size_t{260}, std::size_t{20000}}) {
        const std::string name(length, 'n');
        std::string bytes = folder.ReadFile("file");
        ASSERT_NO_FATAL_FAILURE(Rename(bytes, "q", name));
        folder.WriteFile("renamed", bytes);
        folder.WriteFile("names.qeli", Document("<scene><joint name=\"r\"><joint name=\"" + name +
                                                "\"/><joint name=\"j\"/></joint></scene>"));
        const std::string dumped = Dump("renamed");
        // A name stands in the dump at each use, or its hash does.
        EXPECT_EQ(Count(dumped, "      " + (length == 260 ? name : "0x")), kUses) << length;
        const std::size_t most = 32 * bytes.size() + 100000;
        EXPECT_LT(dumped.size(), most) << length;
        EXPECT_LT(Draw("renamed", "a.svg", "names.qeli").size(), most) << length;
        EXPECT_LT(Draw("renamed", "a.html", "names.qeli").size(), most) << length;
        const ProgramResult diff =
            folder.Run("skel", {"diff", "file", "renamed", "--names", "names.qeli"});
        EXPECT_EQ(diff.status, 1);
        EXPECT_LT(diff.output.size(), most) << length;
    }
}
