#include "Faults/FaultyRun.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

constexpr const char* kOutput = "standard output";
constexpr const char* kErrors = "standard error";
constexpr const char* kCount = "count";

std::string TakeFile(const std::string& path) {
    std::string content;
    {
        std::ifstream in(path, std::ios::binary);
        content.assign(std::istreambuf_iterator<char>(in), {});
    }
    unlink(path.c_str());
    return content;
}

void Redirect(const char* file, int descriptor) {
    const int opened = open(file, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(opened, descriptor);
    close(opened);
}

void SetNumber(const char* name, long value) {
    if (value != 0) setenv(name, std::to_string(value).c_str(), 1);
}

/// A program that is started by another than its user does not load what is put ahead of it.
void StayUser() {
    const uid_t user = geteuid();
    if (user == getuid()) return;
    if (seteuid(getuid()) != 0 || setresuid(user, user, user) != 0) _exit(98);
}

[[noreturn]] void BecomeProgram(const std::string& folder, const std::string& program,
                                const std::vector<std::string>& arguments, const Fault& fault) {
    StayUser();
    if (chdir(folder.c_str()) != 0) _exit(99);
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    Redirect(kOutput, STDOUT_FILENO);
    Redirect(kErrors, STDERR_FILENO);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) signal(number, SIG_DFL);
    unsetenv("QEL_HASH_SERVER_NAME");
    setenv("LD_PRELOAD", RIGBAKE_PROGRAMS "/FaultShim.so", 1);
    setenv("FAULT_KIND", fault.kind == Fault::Kind::Allocation ? "alloc" : "call", 1);
    setenv("FAULT_COUNT", kCount, 1);
    if (fault.isLasting) setenv("FAULT_LASTING", "1", 1);
    SetNumber("FAULT_AT", fault.number);
    SetNumber("FAULT_ERROR", fault.error);
    SetNumber("FAULT_SIGNAL", fault.signal);
    const std::string file = std::string(RIGBAKE_PROGRAMS) + "/" + program;
    std::vector<char*> argv = {const_cast<char*>(file.c_str())};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    execv(file.c_str(), argv.data());
    _exit(99);
}

}  // namespace

FaultyResult RunWithFault(const std::string& folder, const std::string& program,
                          const std::vector<std::string>& arguments, const Fault& fault) {
    const pid_t child = fork();
    if (child == 0) BecomeProgram(folder, program, arguments, fault);
    int status = 0;
    waitpid(child, &status, 0);
    FaultyResult result;
    if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    result.output = TakeFile(folder + "/" + kOutput);
    result.errors = TakeFile(folder + "/" + kErrors);
    result.count = std::atol(TakeFile(folder + "/" + kCount).c_str());
    return result;
}
