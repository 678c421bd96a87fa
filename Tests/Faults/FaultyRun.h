#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// What goes wrong in a run: allocations or calls of the system, counted from 1.
struct Fault {
    enum class Kind { Allocation, Call };

    Kind kind = Kind::Allocation;
    long number = 0;         ///< the one that fails; 0: none
    bool isLasting = false;  ///< all behind it fail as well
    int error = 0;           ///< of a call
    int signal = 0;          ///< in place of an error, sent to the process in front of the call
    bool isEarly = false;    ///< what comes before the main function counts as well
    std::size_t memory = 0;  ///< the bytes that the process may take, all it maps counted; 0: any
};

struct FaultyResult {
    int status = -1;     ///< the exit status; below 0 when a signal ended the process
    int signal = 0;      ///< that signal
    std::string output;  ///< standard output
    std::string errors;  ///< standard error
    long count = 0;      ///< the allocations or calls of a run that came to its end
};

/// Whether an ordinary user may run the programs: the built ones, or where their folder is closed
/// to him, copies among the temporary files, which RunWithFault takes then.
bool OrdinaryUserMayRun();

/// Runs a built program in a folder with a library ahead of its own that makes the fault. While an
/// OrdinaryUser lives, it is that user's.
FaultyResult RunWithFault(const std::string& folder, const std::string& program,
                          const std::vector<std::string>& arguments, const Fault& fault);
