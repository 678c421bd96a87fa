#pragma once

#include <atomic>
#include <string>
#include <string_view>

namespace Platform {

/// A text file to which several processes add; each addition stands in it whole.
class SharedLogFile {
  public:
    /// Nothing is opened yet. On Windows the processes take turns by the mutex `lockName`;
    /// elsewhere the file itself is what they lock.
    SharedLogFile(std::string path, const std::string& lockName);
    SharedLogFile(const SharedLogFile&) = delete;
    SharedLogFile& operator=(const SharedLogFile&) = delete;

    /// Adds `text` at the end, as soon as it is this process's turn. Elsewhere than on Windows
    /// whoever may read the file may keep its lock: this object waits for half a second of all its
    /// life, and then adds without a turn. A file that cannot be opened is passed over without a
    /// word.
    void Append(std::string_view text) const;

  private:
    void WaitForTurn(int descriptor) const;

    std::string path;
    [[maybe_unused]] mutable std::atomic<int> triesLeft = 500;  // a millisecond apart
    [[maybe_unused]] void* lock = nullptr;  // of the system, where it is a mutex
};

/// Hands `text` to the system's debugger, where the system has such a thing.
void SendToDebugger(const std::string& text);

}  // namespace Platform
