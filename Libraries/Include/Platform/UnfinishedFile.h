#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace Platform {

/// A file that nobody sees before it is whole. It has no name where the system can do without one;
/// else a fresh name of its own, which is gone with the object and also when a signal from outside
/// ends the process, except SIGKILL. Operations give 0 when they worked, else the system's error
/// number.
class UnfinishedFile {
  public:
    UnfinishedFile();
    /// Whatever was not published is gone.
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    /// Starts an empty file that Publish can put in place of `path`, which may be a free name or a
    /// link to either. When it is published, it gets the permissions (and, where the user may give
    /// it away, the owner or at least the group) of the file there; one that becomes the user's own
    /// can be read and written by its owner in any case, and loses the bits that run it as another.
    /// Where the group cannot be given, the new one has no more rights than others have.
    /// On Windows permissions that cannot be looked at or given on are refused with EACCES at once.
    /// Where there is no file, it has the permissions of any new file of the user.
    [[nodiscard]] int CreateBeside(const std::string& path);
    /// Starts an empty file for the user alone in the folder for temporary files.
    [[nodiscard]] int CreateTemporary();

    /// By this name this process can open the file while it is unfinished.
    const std::string& GetName() const;

    /// Appends.
    [[nodiscard]] int Write(const char* bytes, std::size_t size);

    /// Puts what was written on the disk and gives it the name of CreateBeside's file in one step:
    /// there is no moment at which that names nothing or something incomplete. A link goes on
    /// leading there. When it fails, the file there stays as it is and this one is gone.
    [[nodiscard]] int Publish();

  private:
    struct File;
    std::unique_ptr<File> file;
};

}  // namespace Platform
