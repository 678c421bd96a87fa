#include "Files.h"

#include "DependencyFile.h"
#include "FailureText.h"
#include "FileNames.h"
#include "Growth.h"
#include "LoadDocument.h"
#include "OutputFile.h"

#include <Platform/FileIdentity.h>
#include <VokLib/Tree/VokWorld.h>

#include <iostream>
#include <vector>

namespace {

std::vector<std::string> FilesOf(const std::string& path) {
    VokWorld world;
    const std::size_t documentBytes = LoadDocument(world, path).bytes;
    return DependedFiles(world, path, MostWritten(documentBytes));
}

}  // namespace

void PrintFiles(const std::string& path) {
    const std::vector<std::string> files = FilesOf(path);
    for (const std::string& file : files) {
        const std::size_t lineEnd = file.find_first_of("\r\n");
        if (lineEnd != std::string::npos)
            throw DocumentFailure({path}, "A list of lines cannot hold the line break behind '" +
                                              file.substr(0, lineEnd) + "' in a file name");
    }
    for (const std::string& file : files) std::cout << file << '\n';
}

void WriteDependencyFile(const std::string& path, const std::string& out,
                         const std::string& target) {
    const std::vector<std::string> files = FilesOf(path);
    const std::string text = DependencyFileText(target, path, files);
    if (Platform::LeadToOneFile(path, out))
        throw DocumentFailure({out}, "The dependency file would replace the document");
    if (Platform::LeadToOneFile(target, out))
        throw DocumentFailure({out}, "The dependency file would replace the target");
    for (const std::string& file : files)
        if (Platform::LeadToOneFile(file, out))
            throw DocumentFailure({out}, "The dependency file would replace a file that it lists");
    OutputFile file(out);
    file.GetStream() << text;
    file.Finish();
    file.Publish();
}
