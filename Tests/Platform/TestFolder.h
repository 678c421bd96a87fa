#pragma once

#include <Platform/OwnProgram.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

/// A fresh folder for one test, gone with the object.
class TestFolder {
  public:
    TestFolder() : folder(FreshName()) { std::filesystem::create_directories(folder); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    std::string Path(const std::string& name = "") const {
        return name.empty() ? folder.string() : folder.string() + "/" + name;
    }

    /// Writes a file and gives its path.
    std::string Write(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
        return Path(name);
    }

    std::string Read(const std::string& name) const {
        std::ostringstream content;
        content << std::ifstream(Path(name), std::ios::binary).rdbuf();
        return content.str();
    }

  private:
    static std::filesystem::path FreshName() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        return std::filesystem::path(testing::TempDir()) /
               (std::string(test->test_suite_name()) + "." + test->name() + "." +
                std::to_string(Platform::OwnProcessId()));
    }

    std::filesystem::path folder;
};
