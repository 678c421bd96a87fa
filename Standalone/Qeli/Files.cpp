#include "Files.h"

#include "DependencyFile.h"
#include "FailureText.h"
#include "FileNames.h"
#include "LoadDocument.h"
#include "OutputFile.h"

#include <Platform/FileIdentity.h>
#include <VokLib/Tree/VokWorld.h>

#include <iostream>
#include <vector>

namespace {

std::vector<std::string> FilesOf(const std::string& path) {
    VokWorld world;
    LoadDocument(world, path);
    std::vector<std::string> files = DependedFiles(world, path);
    for (const std::string& file : files) {
        const std::size_t lineEnd = file.find_first_of("\r\n");
        if (lineEnd != std::string::npos)
            throw DocumentFailure({path}, "A list of lines cannot hold the line break behind '" +
                                              file.substr(0, lineEnd) + "' in a file name");
    }
    return files;
}

}  // namespace

void PrintFiles(const std::string& path) {
    for (const std::string& file : FilesOf(path)) std::cout << file << '\n';
}

void WriteDependencyFile(const std::string& path, const std::string& out,
                         const std::string& target) {
    std::vector<std::string> files = FilesOf(path);
    if (Platform::LeadToOneFile(path, out))
        throw DocumentFailure({out}, "The dependency file would replace the document");
    for (const std::string& file : files)
        if (Platform::LeadToOneFile(file, out))
            throw DocumentFailure({out}, "The dependency file would replace a file that it lists");
    files.insert(files.begin(), path);
    OutputFile file(out);
    file.GetStream() << DependencyFileText(target, files);
    file.Finish();
    file.Publish();
}
