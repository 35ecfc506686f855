// Exit codes of every command; a run over several inputs ends with the worst one.
#pragma once

namespace quillon_cli {

constexpr int kExitConverted = 0;
constexpr int kExitRefused = 1;  // a record was refused, or `check` found something
constexpr int kExitUsage = 2;    // bad usage, unreadable input, or output that cannot be written
constexpr int kExitInternal = 3;

inline int worseExit(int a, int b) { return a > b ? a : b; }

}  // namespace quillon_cli
