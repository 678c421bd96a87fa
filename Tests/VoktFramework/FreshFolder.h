#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// A new, empty folder of the system's temporary place; it goes with the object, with all that is
/// in it.
class FreshFolder {
  public:
    FreshFolder();
    ~FreshFolder();
    FreshFolder(const FreshFolder&) = delete;
    FreshFolder& operator=(const FreshFolder&) = delete;

    const std::string& GetPath() const { return path; }
    std::string operator/(std::string_view name) const { return path + "/" + std::string(name); }
    /// Writes a file of the folder and returns its path.
    std::string WriteFile(std::string_view name, std::string_view bytes) const;
    std::string ReadFile(std::string_view name) const;
    bool Has(std::string_view name) const { return std::filesystem::exists(*this / name); }

  private:
    std::string path;
};
