// Fuzz target: the whole-archive stream form, then a read of every primitive from the result.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "archive/quick_archive.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    CorvaneCore::QuickArchive archive;
    if (!archive.loadFromStream(in)) return 0;
    std::u16string wide;
    std::string narrow;
    CorvaneCore::Transform transform;
    char buffer[64];
    while (archive.remaining() > 0) {
        archive.read(wide);
        archive.read(narrow);
        archive.read(transform);
        archive.readBuffer(buffer, sizeof buffer, false);
    }
    return 0;
}
