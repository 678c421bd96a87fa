#pragma once

#include "UnfinishedBuffer.h"

#include <Platform/UnfinishedFile.h>

#include <ostream>
#include <string>

/// A file that is written under a name of its own and takes the wanted one only when it is whole;
/// until then whatever stood there stays. Each failure is thrown as a DocumentFailure with the
/// system's reason, and nothing unfinished is left behind.
///
/// A regular file keeps its permissions, and a link goes on leading to the file. "-" and the
/// system's own names of it are standard output; it, pipes and devices get the bytes when all of
/// them are there.
class OutputFile {
  public:
    /// Refuses a folder and a file that may not be written.
    explicit OutputFile(std::string typedPath);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    std::ostream& GetStream() { return stream; }
    /// Ends the writing and looks whether all of it succeeded.
    void Finish();
    /// The file that holds what was written, from Finish to Publish.
    const std::string& GetUnfinishedName() const { return unfinished.GetName(); }
    void Publish();

    /// True for a path that keeps what is written: a regular file or a free name.
    static bool IsKept(const std::string& typedPath);

  private:
    static bool IsStandardOutput(const std::string& typedPath);
    void CopyTo(std::ostream& out);
    [[noreturn]] void Fail(int error) const;
    [[noreturn]] void FailUnfinished(int error) const;

    std::string path;
    bool isKept;
    Platform::UnfinishedFile unfinished;
    UnfinishedBuffer buffer{unfinished};
    std::ostream stream{&buffer};
};
