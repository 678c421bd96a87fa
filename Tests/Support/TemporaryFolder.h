#pragma once

#include <string>
#include <string_view>

/// A new, empty folder among the system's temporary files; it goes with the object, with all that
/// is in it. Its name holds a blank, for names of users' folders do. Links are followed in its
/// path.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The path of `name` in the folder; of the folder itself without a name. A full path stays.
    std::string Path(std::string_view name = "") const;

    /// Writes a file of the folder and gives its path; throws where that fails.
    std::string WriteFile(std::string_view name, std::string_view bytes) const;
    /// The bytes of a file of the folder; empty for none.
    std::string ReadFile(std::string_view name) const;
    bool Has(std::string_view name) const;

  private:
    std::string folder;
};
