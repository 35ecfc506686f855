#include "util/debug_print.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

void debugPrint(const char* format, ...) {
    static const bool enabled = std::getenv("QUILLONBIN2XML_DEBUG") != nullptr;
    if (!enabled) return;
    char line[512];
    va_list args;
    va_start(args, format);
    std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    std::fputs(line, stderr);
}
