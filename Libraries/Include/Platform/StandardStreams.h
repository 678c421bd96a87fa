#pragma once

namespace Platform {

/// Makes the standard streams safe to use, as the first thing in a program: writing into a broken
/// pipe, or beyond the size that files may have, becomes an ordinary write error instead of the
/// process's end; the ends of children can be waited for, whatever was handed down; descriptors 0
/// to 2 that are closed are opened on the null device so that no file of the program takes their
/// place (a closed standard output still refuses what is written, where the system tells it);
/// standard output goes out line by line; a console on Windows takes what is written for the
/// letters that names are given in, until the process ends; and nothing that fails there is shown
/// in a window of the system's, which would wait for a user.
void PrepareStandardStreams();

/// Whether `error`, the errno of a write that has just failed, says that nobody reads any more.
bool IsReaderGone(int error);

/// What the system tells of standard output only where a file is closed, as those on a network do:
/// its error number, or 0, which it is also where nothing went there. Behind the last flush.
int LateErrorOfStandardOutput();

}  // namespace Platform
