#pragma once

#include <atomic>
#include <cstddef>

/// The memory of libxml2 and libxslt. Where a copy of a name or value fails, the one drops it and
/// goes on with less of the document, and the other ends the process; so every failure is counted,
/// a reserve bridges it, and whoever uses them asks behind each use.
class XmlMemory {
  public:
    /// Makes libxml2 take its memory through functions that count failures. Before its first use.
    static void Install();

    /// The failures of this process so far.
    static std::size_t CountFailures() { return failures.load(std::memory_order_relaxed); }
    static void NoteFailure() { ++failures; }

  private:
    static inline std::atomic<std::size_t> failures = 0;
};

/// Notices failures from its construction on.
class XmlMemoryWatch {
  public:
    /// Throws std::bad_alloc when memory has failed since the last call or the construction.
    void Check() {
        if (HasFailed()) Fail();
    }
    /// True when Check would throw.
    bool HasFailed() const { return seen != XmlMemory::CountFailures(); }

  private:
    [[noreturn]] void Fail();

    std::size_t seen = XmlMemory::CountFailures();
};

/// While it lives, `stop` is called with `user` at each failure, so that a long work ends before
/// the reserve does. One at a time. `stop` takes no memory and lets nothing out.
class XmlMemoryAlarm {
  public:
    using Stop = void (*)(void* user);

    XmlMemoryAlarm(Stop stop, void* user);
    XmlMemoryAlarm(const XmlMemoryAlarm&) = delete;
    XmlMemoryAlarm& operator=(const XmlMemoryAlarm&) = delete;
    ~XmlMemoryAlarm();
};
