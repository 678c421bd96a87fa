#include "EndAtOnce.h"
#include "EndingEvents_win32.h"
#include "FinalOutput_win32.h"
#include "HandleIo_win32.h"

#include <cstdlib>
#include <cstring>

namespace Platform {

void EndAtOnce(StandardStream stream, const char* words) {
    RemoveUnfinishedFiles();
    const bool isOutput = stream == StandardStream::kOutput;
    WriteAll(isOutput ? FinalOutput() : GetStdHandle(STD_ERROR_HANDLE), words, std::strlen(words));
    std::_Exit(1);
}

}  // namespace Platform
