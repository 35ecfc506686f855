// Fuzz target: the bytes of a .coropt render options file, read as CorOptFile reads them, then
// the options document of whatever the read left behind.
#include <cstddef>
#include <cstdint>

#include "archive/quick_archive.h"
#include "convert/conversions.h"
#include "options/all_options.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;  // an empty file is refused before any reading
    CorvaneCore::QuickArchive archive(data, size);
    CorvaneCore::AllOptions options;
    options.deserialize(archive);
    CorvaneCore::optionsDocument(options);
    return 0;
}
