#include "platform/binary_stdio.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#endif

namespace quillon_platform {

void useBinaryStandardStreams() {
#if defined(_WIN32)
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
#endif
}

}  // namespace quillon_platform
