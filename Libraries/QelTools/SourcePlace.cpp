#include <QelTools/SourcePlace.h>

#include <algorithm>
#include <string_view>

namespace QelTools::Common {

std::string RepositoryPath(const SourcePlace& place) {
    std::string path = place.file;
    std::replace(path.begin(), path.end(), '\\', '/');
    // Compilers give the path as they were called; the top folders of the sources are where ours
    // begins.
    for (const std::string_view top : {"/Libraries/", "/Standalone/", "/Tests/"}) {
        const std::size_t at = path.rfind(top);
        if (at != std::string::npos) return path.substr(at + 1);
    }
    return path;
}

}  // namespace QelTools::Common
