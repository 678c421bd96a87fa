#pragma once

#include <VokLib/Tree/VokObj.h>

#include <string>
#include <utility>
#include <vector>

class VokScene;

/// The fixed base of every document namespace and every address of the format update.
inline constexpr const char* QelNamespaceRoot = "http://qel.example/ns";
/// The default namespace of a current document.
inline constexpr const char* QelCurrentNamespace = "http://qel.example/ns/qeli/1_28_1/qeli";
inline constexpr const char* XmlSchemaInstanceNamespace =
    "http://www.w3.org/2001/XMLSchema-instance";

/// The root of a document. It owns a nameless scene, the hierarchy, from the start; nameless scenes
/// of a document are merged into it.
class VokWorld : public VokObj {
  public:
    static constexpr std::string_view kElementName = "QEL";
    static constexpr VokTypeId TypeId() { return MakeTypeId(kElementName); }

    VokWorld();

    /// The document's absolute file name; empty when it came from memory.
    const std::string& GetFilename() const { return filename; }
    void SetFilename(std::string path) { filename = std::move(path); }
    /// The form in which the document states file names; empty when it does not tell.
    const std::string& GetFilenameForm() const { return filenameForm; }
    /// 0: Y is up, 1: Z is up.
    int GetUpAxis() const { return upAxis; }
    void SetUpAxis(int axis) { upAxis = axis; }
    /// The first nameless child that is exactly a scene; throws "No hierarchy present." without
    /// one.
    VokScene* GetHierarchy() const;
    /// The xmlns declarations of the root as (prefix, URI), in document order.
    const std::vector<std::pair<std::string, std::string>>& GetNamespaces() const {
        return namespaces;
    }
    const std::vector<std::string>& GetSchemaLocations() const { return schemaLocations; }

    void ParseAttributes(VokParse& parse) override;
    void ParseStartTag(VokParse& parse) override;
    void ParseData(VokParse& parse) override;
    void ParseEndTag(VokParse& parse) override;
    void Write(VokFile& file) const override;
    std::string_view GetElementName() const override { return kElementName; }
    bool IsA(VokTypeId type) const override;

  private:
    void ReadSchemaLocations(const VokAttributes& attributes);

    std::string filename;
    std::vector<std::pair<std::string, std::string>> namespaces;
    std::vector<std::string> schemaLocations;
    std::string filenameForm;
    int upAxis = 0;
    int parseDepth = 0;
};
