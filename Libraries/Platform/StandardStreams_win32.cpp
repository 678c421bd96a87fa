#include <Platform/StandardStreams.h>

#include "NullDevice_win32.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <initializer_list>

namespace Platform {

void PrepareStandardStreams() {
    // From 0 upwards, for the system hands out the lowest free descriptor.
    for (const int descriptor : {0, 1, 2})
        if (_get_osfhandle(descriptor) == -1) _open(kNullDevice, _O_RDWR);
    // This system's library takes buffering by lines for buffering by blocks.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
}

}  // namespace Platform
