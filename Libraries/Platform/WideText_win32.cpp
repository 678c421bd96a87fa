#include "WideText_win32.h"

#include <windows.h>

namespace Platform {

std::wstring WideText(const std::string& text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string NarrowText(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

}  // namespace Platform
