#include <Platform/Process.h>

#include "OwnedDescriptor_posix.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace Platform {

namespace {

constexpr const char* kNullDevice = "/dev/null";

/// How one child is started: which descriptors become its standard streams and how it stands to us.
class Launch {
  public:
    Launch() {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
    }
    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;
    ~Launch() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }

    void UseDescriptor(int descriptor, int asStream) {
        posix_spawn_file_actions_adddup2(&actions, descriptor, asStream);
    }

    void UseNullDevice(int asStream) {
        posix_spawn_file_actions_addopen(&actions, asStream, kNullDevice, O_RDWR, 0);
    }

    /// 0 or the system's error number.
    int Start(const Command& command, bool ownSession, pid_t& child) {
        posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
        sigset_t signals;
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        posix_spawnattr_setflags(&attributes,
                                 static_cast<short>(POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK |
                                                    (ownSession ? POSIX_SPAWN_SETSID : 0)));
        std::vector<char*> arguments;
        for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.data()));
        arguments.push_back(nullptr);
        return posix_spawnp(&child, arguments.front(), &actions, &attributes, arguments.data(),
                            environ);
    }

  private:
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

bool EndsWell(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Starts every command with its neighbours' pipes; false when one could not be started, with those
/// before it in `children`.
bool StartPipeline(const std::vector<Command>& commands, std::vector<pid_t>& children) {
    OwnedDescriptor input;
    for (const Command& command : commands) {
        if (command.empty()) return false;
        Launch launch;
        if (input.Get() >= 0)
            launch.UseDescriptor(input.Get(), STDIN_FILENO);
        else
            launch.UseNullDevice(STDIN_FILENO);

        OwnedDescriptor output;
        OwnedDescriptor nextInput;
        if (&command != &commands.back()) {
            int ends[2];
            if (pipe2(ends, O_CLOEXEC) != 0) return false;
            nextInput.Reset(ends[0]);
            output.Reset(ends[1]);
            launch.UseDescriptor(output.Get(), STDOUT_FILENO);
        } else {
            launch.UseNullDevice(STDOUT_FILENO);
        }

        pid_t child = 0;
        if (launch.Start(command, false, child) != 0) return false;
        children.push_back(child);
        input.Reset(nextInput.Release());
    }
    return true;
}

}  // namespace

int StartDetached(const Command& command) {
    if (command.empty()) return ENOENT;
    Launch launch;
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        launch.UseNullDevice(stream);
    pid_t child = 0;
    return launch.Start(command, true, child);
}

// The session of its own has none.
void LeaveStartersConsole() {}

bool RunPipeline(const std::vector<Command>& commands) {
    std::vector<pid_t> children;
    const bool started = StartPipeline(commands, children);
    bool lastEndedWell = false;
    for (const pid_t child : children) lastEndedWell = EndsWell(child);
    return started && lastEndedWell;
}

}  // namespace Platform
