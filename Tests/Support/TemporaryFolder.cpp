#include "Support/TemporaryFolder.h"

#include <Platform/Folders.h>
#include <Platform/Paths.h>

#include "Support/ThisSystem.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    fs::path fresh;
    // Only who makes the folder has it to himself.
    do {
        fresh = fs::temp_directory_path() / ("rigbake test " + std::to_string(random()));
    } while (!fs::create_directory(fresh));
    folder = Platform::FromPath(fs::canonical(fresh));
    if (kIsWindows) std::replace(folder.begin(), folder.end(), '\\', '/');
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(Platform::ToPath(folder), ignored);
}

std::string TemporaryFolder::Path(std::string_view name) const {
    if (name.empty()) return folder;
    const bool isFull = name.front() == '/' || (kIsWindows && name.substr(1, 1) == ":");
    return isFull ? std::string(name) : folder + "/" + std::string(name);
}

std::string TemporaryFolder::WriteFile(std::string_view name, std::string_view bytes) const {
    std::string file = Path(name);
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) throw std::runtime_error("cannot write " + file);
    return file;
}

std::string TemporaryFolder::ReadFile(std::string_view name) const {
    std::ifstream in(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

bool TemporaryFolder::Has(std::string_view name) const {
    return Platform::Exists(Path(name));
}
