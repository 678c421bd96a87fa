#pragma once

#include <cstddef>
#include <string>

namespace Platform {

/// While it lives, the file of this name is removed when a console event ends the process: Ctrl+C,
/// Ctrl+Break, the closing of the console. (The system tells the end of the session to services
/// alone.) What others made of these events stays as it is.
class RemoveOnEvent {
  public:
    explicit RemoveOnEvent(std::string fileName);
    ~RemoveOnEvent();
    RemoveOnEvent(const RemoveOnEvent&) = delete;
    RemoveOnEvent& operator=(const RemoveOnEvent&) = delete;

    const std::string& GetName() const { return name; }

  private:
    std::string name;
    std::size_t slot;
};

/// Removes the files of all that live; the process is about to end.
void RemoveUnfinishedFiles();

/// Keeps console events waiting while it lives, so that what is begun gets finished.
class DeferEvents {
  public:
    DeferEvents();
    ~DeferEvents();
    DeferEvents(const DeferEvents&) = delete;
    DeferEvents& operator=(const DeferEvents&) = delete;
};

}  // namespace Platform
