// The idle thread count: the renderer's worker count, read once at load from the environment
// value OMBRA_NUM_THREADS. Nothing in the conversions uses it; it is kept so the value is read
// exactly as the renderer's runtime reads it.
//
// The text is taken as a plain decimal count of threads:
// - missing, empty, not made only of the digits 0-9 (a sign, a space or a letter included),
//   or 0: the machine's hardware thread count (at least 1);
// - 1 to kMaxThreadCount: that count;
// - larger, however many digits: kMaxThreadCount.
// So a negative value such as "-4" falls back to the hardware count, as any text with a sign.
#pragma once

namespace OmbraUtils {

constexpr int kMaxThreadCount = 1024;

// The machine's thread count as the standard library reports it, at least 1 and at most
// kMaxThreadCount.
int hardwareThreadCount();

// The thread count that `text` asks for; nullptr stands for a missing value.
int threadCountFrom(const char* text);

// The count read from OMBRA_NUM_THREADS when the library was loaded.
int idleThreadCount();

}  // namespace OmbraUtils
