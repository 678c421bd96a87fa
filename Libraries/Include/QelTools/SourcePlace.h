#pragma once

#include <string>

namespace QelTools::Common {

/// Where in the sources a failure was raised: the file's path from the repository's root, with
/// forward slashes, so that a report reads the same on every machine. Made by the default argument
/// of a throwing helper.
struct SourcePlace {
    const char* file = "";
    int line = 0;

    static constexpr SourcePlace Current(const char* file = __builtin_FILE(),
                                         int line = __builtin_LINE()) {
        return {file, line};
    }
};

/// The file of `place` from the repository's root on, whatever folder the compiler was started in.
std::string RepositoryPath(const SourcePlace& place);

}  // namespace QelTools::Common
