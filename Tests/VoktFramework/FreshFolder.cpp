#include "VoktFramework/FreshFolder.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>

FreshFolder::FreshFolder() {
    static std::atomic<int> count{0};
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    const auto folder =
        std::filesystem::canonical(std::filesystem::temp_directory_path()) /
        ("framework-test-" + std::to_string(stamp) + "-" + std::to_string(count.fetch_add(1)));
    std::filesystem::create_directories(folder);
    path = folder.generic_string();
}

FreshFolder::~FreshFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string FreshFolder::WriteFile(std::string_view name, std::string_view bytes) const {
    const std::string file = *this / name;
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
}

std::string FreshFolder::ReadFile(std::string_view name) const {
    std::ifstream file(*this / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
