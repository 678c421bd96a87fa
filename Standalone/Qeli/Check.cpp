#include "Check.h"

#include "LoadDocument.h"

#include <VokLib/Tree/VokWorld.h>

#include <exception>
#include <iostream>

namespace {

std::string Describe(const VokDocumentVersion& version) {
    std::string number = "version " + version.GetNumber();
    switch (version.use) {
        case VokVersionUse::Current:
            return number;
        case VokVersionUse::AsItIs:
            return number + ", read as it stands";
        case VokVersionUse::Updated:
            return number + ", needs the update to " +
                   VokDocumentVersion{QelCurrentNamespace}.GetNumber();
    }
    return number;
}

}  // namespace

bool Check(const std::vector<std::string>& paths) {
    bool allFine = true;
    for (const std::string& path : paths) {
        try {
            VokWorld world;
            const VokDocumentVersion version = LoadDocument(world, path).version;
            std::cout << path << ": OK, " << Describe(version) << std::endl;
        } catch (const std::exception& failure) {
            std::cerr << failure.what() << std::endl;
            allFine = false;
        }
    }
    return allFine;
}
