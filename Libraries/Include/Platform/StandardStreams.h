#pragma once

namespace Platform {

/// Makes the standard streams safe to use, as the first thing in a program: writing into a broken
/// pipe, or beyond the size that files may have, becomes an ordinary write error instead of the
/// process's end; descriptors 0 to 2 that are closed are opened on the null device so that no file
/// of the program takes their place (a closed standard output still refuses what is written, where
/// the system tells it); standard output goes out line by line; and a console on Windows takes what
/// is written for the letters that names are given in, until the process ends.
void PrepareStandardStreams();

/// Whether `error`, the errno of a write that has just failed, says that nobody reads any more.
bool IsReaderGone(int error);

}  // namespace Platform
