#include "CompanionMain.h"

#include <Platform/ErrorText.h>
#include <Platform/StandardStreams.h>
#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Library/VokLib.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <iostream>

namespace {

constexpr int kFailed = 1;
constexpr int kQuiet = 0;

/// A reader that has seen enough and closes its pipe is no failure to speak of.
int EndStandardOutput(int status) {
    errno = 0;
    if (std::cout.flush()) return status;
    if (errno == 0) {
        // It failed on the way and has kept no reason; what it holds back fails alike.
        std::cout.clear();
        std::cout.flush();
    }
    if (errno != EPIPE)
        std::cerr << "standard output: error: The file cannot be written"
                  << (errno != 0 ? ": " + Platform::ErrorText(errno) : std::string()) << std::endl;
    return status != 0 ? status : kFailed;
}

}  // namespace

int CompanionMain(const char* name, int argc, const char* const* argv,
                  int (*run)(int argc, const char* const* argv)) {
    Platform::PrepareStandardStreams();
    try {
        std::ios::sync_with_stdio(false);
        const VokLib library(true, true, true, true, true);
        // Standard output belongs to the command's answer.
        VokUpdate::Get().SetVerbosity(kQuiet);
        return EndStandardOutput(run(argc, argv));
    } catch (const std::exception& failure) {
        std::cout.flush();
        // The streams may not have come up.
        std::fprintf(stderr, "%s\n", failure.what());
    } catch (...) {
        std::fprintf(stderr, "%s: error: An unknown failure\n", name);
    }
    return kFailed;
}
