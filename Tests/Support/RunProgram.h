#pragma once

#include <map>
#include <string>
#include <vector>

/// What one run of a program left behind.
struct ProgramResult {
    int status = -1;
    std::string output;  ///< standard output, with line feeds alone as line ends
    std::string errors;  ///< standard error, likewise
};

/// A program to run, with nothing to read from standard input.
struct ProgramCall {
    std::string program;  ///< the name of a built program, or the path of any
    std::vector<std::string> arguments;
    std::string folder;                              ///< the one in which it runs
    std::map<std::string, std::string> environment;  ///< beside this process's own
    /// Where standard output goes instead of into the result: ">FILE", ">&-" to be closed, and
    /// ">&- 2>&-" for both streams.
    std::string redirections;
};

/// Runs a program to its end. No registry is set but by the call.
ProgramResult RunProgram(const ProgramCall& call);

/// The path of a built program.
std::string BuiltProgram(const std::string& name);
