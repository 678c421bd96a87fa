#pragma once

#include <set>
#include <string>

/// Descriptors in one way on every system, for tests of what programs inherit and leave open.
/// Bytes go through them as they are. -1 is one that the system did not give.

/// Of an empty file of that name.
int OpenForWriting(const std::string& path);
int OpenForReading(const std::string& path);
void CloseDescriptor(int descriptor);
int Duplicate(int descriptor);
/// `onto` becomes the same as `descriptor`.
void Duplicate(int descriptor, int onto);

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
};
/// What is written into one that nobody reads any more is an error, and no signal.
Pipe OpenPipe();
/// Whether all of it went at once.
bool WriteText(int descriptor, const std::string& text);
/// Until no write end is open.
std::string ReadToEnd(int descriptor);

/// Of this process, the first 256.
std::set<int> OpenDescriptors();
bool IsInherited(int descriptor);
