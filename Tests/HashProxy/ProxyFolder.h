#pragma once

#include "Platform/ScopedEnvironment.h"
#include "Support/Processes.h"
#include "Support/RunProgram.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <list>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

/// A fresh folder for the pipe and the database of a registry of its own. Every proxy that was
/// started with its environment ends with the object.
class ProxyFolder : public TemporaryFolder {
  public:
    ~ProxyFolder() {
        for (std::vector<int> left = Proxies(); !left.empty(); left = Proxies())
            for (const int process : left) Kill(process);
    }
    std::string Database() const { return Path("data/registry.sqlite"); }

    /// The environment in which tools and proxies find this registry.
    std::vector<std::pair<std::string, std::string>> Environment() const {
        return {{"XDG_RUNTIME_DIR", Path()},
                {"QEL_HASH_DATABASE", Database()},
                {"QEL_HASH_IDLE_SECONDS", "20"},
                {"QEL_HASH_SERVER_NAME", "local"},
                {"PATH", RIGBAKE_PROGRAMS + std::string(kBetweenFolders) + std::getenv("PATH")}};
    }

    /// The process that holds the pipe or held it last; 0 before the first.
    int Server() const { return ServingProxy(Path()); }

    /// The processes that run as proxies of this registry.
    std::vector<int> Proxies() const { return RunningProxies(Path()); }

    static void Kill(int process) { KillProcess(process); }

    static std::string Content(const std::filesystem::path& file) {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    }
};

/// The environment of a registry in this process while the object lives.
class ProxyEnvironment {
  public:
    explicit ProxyEnvironment(const ProxyFolder& folder) {
        for (const auto& [name, value] : folder.Environment()) Set(name, value);
    }
    /// A later value goes first, so what was there at first comes back in the end.
    void Set(const std::string& name, const std::string& value) {
        values.emplace_front(name, value);
    }

  private:
    std::list<ScopedEnvironment> values;
};

/// Waits until `condition` holds, at most half a minute. False when it never did.
template <class Condition>
bool Eventually(Condition condition) {
    for (int i = 0; i < 6000; ++i) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}
