#include "EndAtOnce.h"
#include "EndingEvents_win32.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>

namespace Platform {

void EndAtOnce(StandardStream stream, const char* words) {
    RemoveUnfinishedFiles();
    const bool isOutput = stream == StandardStream::kOutput;
    DWORD written = 0;
    WriteFile(GetStdHandle(isOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE), words,
              static_cast<DWORD>(std::strlen(words)), &written, nullptr);
    std::_Exit(1);
}

}  // namespace Platform
