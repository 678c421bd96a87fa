#include "VoktRigbakeTool.h"

#include <Platform/LackOfMemory.h>
#include <Platform/StandardStreams.h>
#include <VokLib/Library/VokLib.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>

#include <cstdio>
#include <exception>
#include <memory>

namespace {

/// Other sources take memory before the main function.
[[gnu::init_priority(101)]] const Platform::EndWhereMemoryDoes endWhereMemoryDoes(
    Platform::StandardStream::kOutput, "Error: std::bad_alloc\n");

/// A world of a million objects takes as long to take apart as to bake, and the end of the process
/// gives its memory back at once. Builds that look for leaks take everything apart.
constexpr bool kLeavesWorlds = RIGBAKE_LEAVES_WORLDS != 0;

struct LeaveLibrary {
    void operator()(VokLib* library) const {
        // The links of a world that is left stand in the library.
        if (!kLeavesWorlds) delete library;
    }
};

void Run(int argc, const char* const* argv) {
    VoktAtomVokWorld::LeaveWorlds(kLeavesWorlds);
    const std::unique_ptr<VokLib, LeaveLibrary> library(new VokLib(true, true, true, true, true));
    VoktRigbakeTool tool;
    tool.Run(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    Platform::PrepareStandardStreams();
    try {
        Run(argc, argv);
    } catch (const std::exception& failure) {
        std::printf("Error: %s\n", failure.what());
        return 1;
    } catch (...) {
        return 1;
    }
    return 0;
}
