#pragma once

#include <Platform/UnfinishedFile.h>

#include <memory>
#include <streambuf>

/// Writes a stream's text into an unfinished file, by the one handle that the file has.
class UnfinishedBuffer : public std::streambuf {
  public:
    explicit UnfinishedBuffer(Platform::UnfinishedFile& receiver);

    /// The system's number for the first write that failed; nothing is written behind it.
    int GetError() const { return error; }

  protected:
    int_type overflow(int_type character) override;
    int sync() override;

  private:
    Platform::UnfinishedFile& file;
    std::unique_ptr<char[]> block;
    int error = 0;
};
