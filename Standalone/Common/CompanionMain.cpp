#include "CompanionMain.h"

#include "FailureText.h"
#include "LeavesWorlds.h"

#include <Platform/ErrorText.h>
#include <Platform/StandardStreams.h>
#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Library/VokLib.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <new>

namespace {

constexpr int kFailed = 1;
constexpr int kQuiet = 0;

const char* program = "";

struct LeaveLibrary {
    void operator()(VokLib* library) const {
        if (!kLeavesWorlds) delete library;
    }
};

/// A reader that has seen enough and closes its pipe is no failure to speak of.
int EndStandardOutput(int status) {
    errno = 0;
    if (std::cout.flush()) {
        errno = Platform::LateErrorOfStandardOutput();
        if (errno == 0) return status;
    } else if (errno == 0) {
        // It failed on the way and has kept no reason. What it holds back fails alike; where that
        // is nothing, a further byte does.
        std::cout.clear();
        if (std::cout.flush()) std::cout.put('\n').flush();
    }
    if (!Platform::IsReaderGone(errno))
        std::cerr << "standard output: error: The file cannot be written"
                  << (errno != 0 ? ": " + Platform::ErrorText(errno) : std::string()) << std::endl;
    return status != 0 ? status : kFailed;
}

void ReportLackOfMemory() {
    // The streams may not have come up, and they would take memory.
    std::fprintf(stderr, "%s: error: %s\n", program, kOutOfMemory);
}

}  // namespace

int CompanionMain(const char* name, int argc, const char* const* argv,
                  int (*run)(int argc, const char* const* argv)) {
    Platform::PrepareStandardStreams();
    program = name;
    try {
        std::ios::sync_with_stdio(false);
        const std::unique_ptr<VokLib, LeaveLibrary> library(
            new VokLib(true, true, true, true, true));
        // Standard output belongs to the command's answer.
        VokUpdate::Get().SetVerbosity(kQuiet);
        return EndStandardOutput(run(argc, argv));
    } catch (const std::bad_alloc&) {
        std::cout.flush();
        ReportLackOfMemory();
    } catch (const std::exception& failure) {
        std::cout.flush();
        // The streams may not have come up.
        std::fprintf(stderr, "%s\n", failure.what());
    } catch (...) {
        std::fprintf(stderr, "%s: error: An unknown failure\n", name);
    }
    return kFailed;
}
