#include "Faults/FaultyRun.h"

#include "Support/OrdinaryUser.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr const char* kOutput = "standard output";
constexpr const char* kErrors = "standard error";
constexpr const char* kCount = "count";
constexpr const char* kShim = "FaultShim.so";
const std::string kBuilt = RIGBAKE_PROGRAMS;

bool MayRun(const std::string& file) {
    const OrdinaryUser user;
    return faccessat(AT_FDCWD, file.c_str(), X_OK, AT_EACCESS) == 0;
}

/// Copies of the programs in a folder of their own, whose name has no blank: the loader takes one
/// for the end of a library's name.
class Copies {
  public:
    Copies() : folder(std::filesystem::temp_directory_path() / "rigbake-programs-XXXXXX") {
        if (mkdtemp(folder.data()) == nullptr || chmod(folder.c_str(), 0755) != 0)
            throw std::runtime_error("no folder for the programs");
        for (const char* const name : {"rigbake", "qeli", kShim})
            std::filesystem::copy_file(kBuilt + "/" + name, folder + "/" + name);
    }
    Copies(const Copies&) = delete;
    Copies& operator=(const Copies&) = delete;
    ~Copies() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    const std::string& Folder() const { return folder; }

  private:
    std::string folder;
};

const std::string& OrdinaryUsersPrograms() {
    if (MayRun(kBuilt + "/rigbake")) return kBuilt;
    static const Copies copies;
    return copies.Folder();
}

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

[[noreturn]] void BecomeProgram(const std::string& folder, const std::string& programs,
                                const std::string& program,
                                const std::vector<std::string>& arguments, const Fault& fault) {
    StayUser();
    if (chdir(folder.c_str()) != 0) _exit(99);
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    Redirect(kOutput, STDOUT_FILENO);
    Redirect(kErrors, STDERR_FILENO);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) signal(number, SIG_DFL);
    unsetenv("QEL_HASH_SERVER_NAME");
    setenv("LD_PRELOAD", (programs + "/" + kShim).c_str(), 1);
    setenv("FAULT_KIND", fault.kind == Fault::Kind::Allocation ? "alloc" : "call", 1);
    setenv("FAULT_COUNT", kCount, 1);
    if (fault.isLasting) setenv("FAULT_LASTING", "1", 1);
    if (fault.isEarly) setenv("FAULT_EARLY", "1", 1);
    SetNumber("FAULT_AT", fault.number);
    SetNumber("FAULT_ERROR", fault.error);
    SetNumber("FAULT_SIGNAL", fault.signal);
    const std::string file = programs + "/" + program;
    std::vector<char*> argv = {const_cast<char*>(file.c_str())};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const rlimit limit{fault.memory, fault.memory};
    if (fault.memory != 0) setrlimit(RLIMIT_AS, &limit);
    execv(file.c_str(), argv.data());
    _exit(99);
}

}  // namespace

bool OrdinaryUserMayRun() {
    return MayRun(OrdinaryUsersPrograms() + "/rigbake");
}

FaultyResult RunWithFault(const std::string& folder, const std::string& program,
                          const std::vector<std::string>& arguments, const Fault& fault) {
    const std::string& programs = geteuid() == 0 ? kBuilt : OrdinaryUsersPrograms();
    const pid_t child = fork();
    if (child == 0) BecomeProgram(folder, programs, program, arguments, fault);
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
