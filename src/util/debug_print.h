// Debug lines for developers. Silent unless QUILLONBIN2XML_DEBUG is set in the environment,
// then written to standard error. Lines are cut to 511 characters.
#pragma once

#if defined(__GNUC__)
#define QUILLON_PRINTF_FORMAT(a, b) __attribute__((format(printf, a, b)))
#else
#define QUILLON_PRINTF_FORMAT(a, b)
#endif

void debugPrint(const char* format, ...) QUILLON_PRINTF_FORMAT(1, 2);
