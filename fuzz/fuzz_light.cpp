// Fuzz target: a light record of any type id. The first byte picks the id (0 to 8, 8 having
// no class), the rest is the record.
#include <cstddef>
#include <cstdint>

#include "convert/conversions.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    CorvaneCore::QuickArchive archive(1);
    archive.writeBytes(data + 1, size - 1);
    CorvaneCore::convertLight(archive, data[0] % 9);
    return 0;
}
