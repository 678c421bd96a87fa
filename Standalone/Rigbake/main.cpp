#include "VoktRigbakeTool.h"

#include <Platform/StandardStreams.h>
#include <VokLib/Library/VokLib.h>

#include <cstdio>
#include <exception>

namespace {

void Run(int argc, const char* const* argv) {
    const VokLib library(true, true, true, true, true);
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
