#include "Support/RunProgram.h"

#include <cstdlib>
#include <stdexcept>

#include "Support/TemporaryFolder.h"

namespace {

std::string Quote(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

}  // namespace

ProgramResult RunProgram(const ProgramCall& call) {
    const TemporaryFolder work;
    const std::string& name = call.program;
    std::string command = "cd " + Quote(call.folder) + " && { env -u QEL_HASH_SERVER_NAME";
    for (const auto& [variable, value] : call.environment)
        command += " " + Quote(variable + "=" + value);
    command += " " + Quote(name.find('/') == std::string::npos ? BuiltProgram(name) : name);
    for (const std::string& argument : call.arguments) command += " " + Quote(argument);
    command += " </dev/null >" + Quote(work.Path("out")) + " 2>" + Quote(work.Path("err")) + " " +
               call.redirections + "; echo $? >" + Quote(work.Path("status")) + "; }";
    if (std::system(command.c_str()) == -1) throw std::runtime_error("no shell");
    return {std::stoi(work.ReadFile("status")), work.ReadFile("out"), work.ReadFile("err")};
}

std::string BuiltProgram(const std::string& name) {
    return RIGBAKE_PROGRAMS "/" + name;
}
