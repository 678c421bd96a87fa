#pragma once

#include "Support/BakeInput.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A folder of its own for the files of a run, inside the folder for temporary files; on a memory
/// file system a run costs no disk. Gone with the object.
class ToolFolder {
  public:
    ToolFolder();
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;
    ~ToolFolder();

    std::string PathOf(const std::string& name) const { return folder + '/' + name; }
    void Write(const std::string& name, std::string_view bytes) const;
    /// Nothing for a file that is not there.
    std::optional<std::string> Read(const std::string& name) const;
    void Clear() const;

  private:
    std::string folder;
};

/// What the baker left: nothing but `succeeded` false, or its one or two files, little-endian
/// first.
struct BakeResult {
    bool succeeded = false;
    std::vector<std::string> files;
};

/// Runs the baker over the document `name` of the folder. The library is up.
BakeResult Bake(const ToolFolder& folder, const std::string& name, const BakeInput& input);

struct ConvertResult {
    std::optional<std::string> document;
    std::string failure;
};

/// Runs the conversion of the document tool.
ConvertResult ConvertDocument(const ToolFolder& folder, const std::string& name);

/// Whether the document can be loaded at all.
bool CanBeLoaded(const ToolFolder& folder, const std::string& name);
