#include "Check.h"

#include "FailureText.h"
#include "LeavesWorlds.h"
#include "LoadDocument.h"

#include <VokLib/Tree/VokWorld.h>

#include <exception>
#include <iostream>
#include <memory>
#include <new>

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
            auto world = std::make_unique<VokWorld>();
            const VokDocumentVersion version = LoadDocument(*world, path).version;
            // The end of the program takes the last one apart.
            if (kLeavesWorlds && &path == &paths.back()) static_cast<void>(world.release());
            std::cout << path << ": OK, " << Describe(version) << std::endl;
        } catch (const std::bad_alloc&) {
            std::cerr << path << ": error: " << kOutOfMemory << std::endl;
            allFine = false;
        } catch (const std::exception& failure) {
            std::cerr << failure.what() << std::endl;
            allFine = false;
        }
    }
    return allFine;
}
