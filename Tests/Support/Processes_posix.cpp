#include "Support/Processes.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

/// What a process that is ending shows may fail to be read: it shows nothing then.
std::string Content(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

}  // namespace

std::vector<int> RunningProxies(const std::string& folder) {
    std::vector<int> found;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator("/proc", ignored)) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        if (Content(entry.path() / "comm") == "QelHashProxy.ex\n" &&
            Content(entry.path() / "environ").find("=" + folder + '\0') != std::string::npos)
            found.push_back(std::stoi(name));
    }
    return found;
}

// The process that holds the pipe writes itself into the file by which it holds it.
int ServingProxy(const std::string& folder) {
    int process = 0;
    std::ifstream(folder + "/QelHashProxy_pipe.lock") >> process;
    return process;
}

// The system would take 0 for everybody.
void KillProcess(int process) {
    if (process > 0) kill(process, SIGKILL);
}
