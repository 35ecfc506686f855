// Marks the one function the extension exports. The build hides every other symbol: GNU and
// Apple linkers by visibility and an export list, Windows linkers by what is declared exported.
#pragma once

#if defined(_WIN32)
#define QUILLON_EXPORT __declspec(dllexport)
#else
#define QUILLON_EXPORT __attribute__((visibility("default")))
#endif
