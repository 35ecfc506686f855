// Fuzz target: a whole .cormat material file, header and payload, as the tool's cormat
// command reads it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "convert/conversions.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CorvaneCore::convertCorMat(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
