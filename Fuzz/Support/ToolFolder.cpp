#include "Support/ToolFolder.h"

#include "Convert.h"
#include "FailureText.h"
#include "LoadDocument.h"
#include "VoktRigbakeTool.h"

#include <Platform/TemporaryFile.h>
#include <VokLib/Tree/VokWorld.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

constexpr const char* kOutput = "out.skel";
constexpr const char* kConverted = "converted.qeli";

std::vector<std::string> OutputNames(const BakeInput& input) {
    if (!input.makesTwo) return {kOutput};
    std::string little = "LE";
    std::string big = "BE";
    for (std::size_t i = 0; i + 1 < input.flags.size(); ++i) {
        if (input.flags[i] == "-ls") little = input.flags[i + 1];
        if (input.flags[i] == "-bs") big = input.flags[i + 1];
    }
    return {kOutput + little, kOutput + big};
}

bool RunBaker(const std::vector<std::string>& words) {
    std::vector<const char*> arguments;
    for (const std::string& word : words) arguments.push_back(word.c_str());
    try {
        VoktRigbakeTool tool;
        tool.Run(static_cast<int>(arguments.size()), arguments.data());
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

ToolFolder::ToolFolder() {
    // The name of a fresh file is nobody else's, so that of a folder beside it is not, either.
    const std::optional<std::string> file = Platform::CreateTemporaryFile("rigbake-fuzz");
    if (!file || !fs::create_directory(*file + ".folder")) {
        std::cerr << "No folder can be made in " << Platform::TemporaryFolder() << '\n';
        std::exit(1);
    }
    folder = *file + ".folder";
    fs::remove(*file);
}

ToolFolder::~ToolFolder() {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

void ToolFolder::Write(const std::string& name, std::string_view bytes) const {
    std::ofstream(PathOf(name), std::ios::binary) << bytes;
}

std::optional<std::string> ToolFolder::Read(const std::string& name) const {
    std::ifstream file(PathOf(name), std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void ToolFolder::Clear() const {
    for (const auto& entry : fs::directory_iterator(folder)) fs::remove(entry.path());
}

BakeResult Bake(const ToolFolder& folder, const std::string& name, const BakeInput& input) {
    std::vector<std::string> words = {"rigbake", "-in", folder.PathOf(name), "-out",
                                      folder.PathOf(kOutput)};
    words.insert(words.end(), input.flags.begin(), input.flags.end());
    if (input.writesLog) words.insert(words.end(), {"-log", folder.PathOf("log.txt")});
    const std::vector<std::string> outputs = OutputNames(input);
    for (const std::string& output : outputs) fs::remove(folder.PathOf(output));

    BakeResult result;
    result.succeeded = RunBaker(words);
    for (const std::string& output : outputs)
        if (std::optional<std::string> bytes = folder.Read(output))
            result.files.push_back(std::move(*bytes));
    return result;
}

ConvertResult ConvertDocument(const ToolFolder& folder, const std::string& name) {
    fs::remove(folder.PathOf(kConverted));
    ConvertResult result;
    try {
        Convert(folder.PathOf(name), folder.PathOf(kConverted));
        result.document = folder.Read(kConverted);
    } catch (const std::exception& failure) {
        result.failure = failure.what();
    }
    return result;
}

bool CanBeLoaded(const ToolFolder& folder, const std::string& name) {
    try {
        VokWorld world;
        LoadDocument(world, folder.PathOf(name));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}
