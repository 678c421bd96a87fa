#include "CommandLine.h"
#include "CompanionMain.h"

#include <Platform/LackOfMemory.h>

namespace {

/// Other sources take memory before the main function.
[[gnu::init_priority(101)]] const Platform::EndWhereMemoryDoes endWhereMemoryDoes(
    Platform::StandardStream::kErrors, "qeli: error: Cannot allocate memory\n");

}  // namespace

int main(int argc, char** argv) {
    return CompanionMain("qeli", argc, argv, RunCommandLine);
}
