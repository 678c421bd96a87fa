#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

std::string Quote(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

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
    const fs::path work = Path(".run");
    fs::create_directory(work);
    std::string command = "cd " + Quote(Path()) + " && { env -u QEL_HASH_SERVER_NAME";
    for (const auto& [name, value] : environment) command += " " + Quote(name + "=" + value);
    command += " " + Quote(std::string(RIGBAKE_PROGRAMS) + "/" + program);
    for (const std::string& argument : arguments) command += " " + Quote(argument);
    command += " </dev/null >.run/out 2>.run/err " + redirections + "; echo $? >.run/status; }";
    if (std::system(command.c_str()) == -1) throw std::runtime_error("no shell");
    ProgramResult result;
    result.output = ReadWhole(work / "out");
    result.errors = ReadWhole(work / "err");
    result.status = std::stoi(ReadWhole(work / "status"));
    fs::remove_all(work);
    if (program == "rigbake" && result.status == 0) ExpectSoundSkeletons(Path());
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
