#pragma once

#include <string>

/// What the environment wants of the proxy. The tools start it without arguments.
struct Settings {
    std::string databaseFile;  ///< a full path; its folder exists
    int idleMilliseconds = 0;
};

/// Reads QEL_HASH_DATABASE and QEL_HASH_IDLE_SECONDS. Throws a QelTools::Common::Exception when a
/// value makes no sense or the folder cannot be made.
Settings ReadSettings();
