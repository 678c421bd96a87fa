#include <Platform/OpenForShowing.h>

#include <windows.h>
// Behind the header on which it stands.
#include <shellapi.h>

namespace Platform {

void OpenForShowing(const std::string& path) {
    ShellExecuteA(nullptr, "open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace Platform
