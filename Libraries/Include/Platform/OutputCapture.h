#pragma once

#include <chrono>
#include <memory>
#include <string>

namespace Platform {

/// Sends a copy of everything that the process writes to standard output, by whatever route, to a
/// log file: while the capture runs, descriptor 1 is a pipe, and a thread copies what comes through
/// it to the old standard output and to the file. An old standard output that is broken or full
/// does not end the copy to the file. One capture at a time. Child processes inherit nothing of it
/// but their standard output.
class OutputCapture {
  public:
    enum class StartResult { kStarted, kLogNotOpened, kThreadNotStarted };

    /// How long Stop waits for the thread.
    static constexpr std::chrono::milliseconds kStopWait{5000};

    OutputCapture();
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;
    /// Stops a capture that still runs.
    ~OutputCapture();

    /// Opens the log file, emptying it, and starts the copy. Text that standard output holds back
    /// is written out first and stays out of the log. After a failure, also one that is thrown for
    /// lack of memory, standard output is as it was.
    StartResult Start(const std::string& logFile);

    /// Why the thread of the last Start could not be set up, in the system's words.
    const std::string& GetStartFault() const { return startFault; }

    /// Puts standard output back and waits until the thread has copied all that is left. False when
    /// that took longer than `wait`: the thread is then abandoned and copies nothing further. True
    /// when no capture runs.
    bool Stop(std::chrono::milliseconds wait = kStopWait);

    /// Why the log of a capture that was stopped does not hold everything under its name, and
    /// nothing else, for people; empty when it does.
    const std::string& GetLogFault() const { return logFault; }

  private:
    struct Copy;

    /// kThreadNotStarted, with the words of an error number.
    StartResult NotStarted(int error);

    std::shared_ptr<Copy>
        copy;  ///< shared with the thread, which may outlive this object when abandoned
    std::string startFault;
    std::string logFault;
};

}  // namespace Platform
