#include "util/thread_count.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace OmbraUtils {

namespace {

// Digits only, read without the locale and saturating at kMaxThreadCount, so that no length
// of text can overflow. Gives 0 for text that is not a plain decimal number.
int parsePlainCount(const char* text) {
    int count = 0;
    for (const char* c = text; *c != '\0'; ++c) {
        if (*c < '0' || *c > '9') return 0;
        count = std::min(count * 10 + (*c - '0'), kMaxThreadCount + 1);
    }
    return std::min(count, kMaxThreadCount);
}

// Read by a static initialiser, so the environment is looked at once, when the library loads.
const int gIdleThreadCount = threadCountFrom(std::getenv("OMBRA_NUM_THREADS"));

}  // namespace

int hardwareThreadCount() {
    const unsigned reported = std::thread::hardware_concurrency();
    return static_cast<int>(std::clamp(reported, 1u, static_cast<unsigned>(kMaxThreadCount)));
}

int threadCountFrom(const char* text) {
    const int asked = text ? parsePlainCount(text) : 0;
    return asked > 0 ? asked : hardwareThreadCount();
}

int idleThreadCount() { return gIdleThreadCount; }

}  // namespace OmbraUtils
