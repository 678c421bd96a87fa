#include <Platform/OpenForShowing.h>
#include <Platform/Process.h>

namespace Platform {

void OpenForShowing(const std::string& path) {
    StartDetached({"xdg-open", path});
}

}  // namespace Platform
