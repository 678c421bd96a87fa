#include <Platform/OpenForShowing.h>
#include <Platform/Process.h>

namespace Platform {

void OpenForShowing(const std::string& path) {
    // A machine without a desktop has nothing to show files with, and nobody waits for it.
    static_cast<void>(StartDetached({"xdg-open", path}));
}

}  // namespace Platform
