#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string ReadWhole(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// Whatever a run bakes must stand the checks of those who load it.
void ExpectSoundSkeletons(const fs::path& folder) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        const std::string bytes = ReadWhole(entry.path());
        if (!bytes.starts_with("SK08")) continue;
        skeleton_fault fault = {};
        EXPECT_EQ(skeleton_find_faults(bytes.data(), bytes.size(), &fault, 1), 0u)
            << entry.path().filename() << ": " << fault.text;
    }
}

}  // namespace

ProgramResult RunFolder::Run(const std::string& program, const std::vector<std::string>& arguments,
                             const std::map<std::string, std::string>& environment,
                             const std::string& redirections) const {
    ProgramResult result = RunProgram({program, arguments, Path(), environment, redirections});
    if (fs::path(program).stem() == "rigbake" && result.status == 0) ExpectSoundSkeletons(Path());
    return result;
}

std::string OneJointDocument() {
    return Document("<scene><joint name=\"root\"></joint></scene>");
}

std::string MaskPlaces(std::string text) {
    for (const std::string_view start : {" <Libraries/", " <Standalone/"}) {
        for (std::size_t at = text.find(start); at != std::string::npos;
             at = text.find(start, at + 1)) {
            const std::size_t end = text.find('>', at);
            if (end == std::string::npos) break;
            text.replace(at, end - at + 1, " <PLACE>");
        }
    }
    return text;
}

std::string WithoutBanner(const std::string& text) {
    const std::size_t end = text.find('\n');
    return end == std::string::npos ? std::string() : text.substr(end + 1);
}
