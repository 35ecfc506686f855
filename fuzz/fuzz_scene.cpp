// Fuzz target: a stored scene record, then the options document it leaves behind.
#include <cstddef>
#include <cstdint>

#include "convert/conversions.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CorvaneCore::QuickArchive archive(1);
    archive.writeBytes(data, size);
    CorvaneCore::readSceneRecord(archive);
    CorvaneCore::optionsDocument();
    return 0;
}
