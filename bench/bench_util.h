// Helpers shared by the benchmarks: sample records and a plain-copy baseline.
#pragma once

#include <benchmark/benchmark.h>

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "archive/quick_archive.h"
#include "archive/serializable.h"

namespace quillon_bench {

// The bytes of a bundled sample (a JSON array of integers).
inline std::string sampleBytes(const std::string& name) {
    std::ifstream in(std::string(QUILLON_SAMPLES_DIR) + "/" + name);
    std::stringstream text;
    text << in.rdbuf();
    std::string bytes;
    long value = 0;
    bool inNumber = false;
    for (char c : text.str()) {
        if (c >= '0' && c <= '9') {
            value = value * 10 + (c - '0');
            inNumber = true;
        } else if (inNumber) {
            bytes.push_back(static_cast<char>(value & 0xFF));
            value = 0;
            inNumber = false;
        }
    }
    return bytes;
}

// The stored record `object` writes of itself.
inline std::string recordOf(CorvaneCore::CorvaneSerializable& object) {
    CorvaneCore::QuickArchive archive;
    object.serialize(archive);
    std::string bytes(static_cast<size_t>(archive.writePos()), '\0');
    archive.readBytes(&bytes[0], bytes.size());
    return bytes;
}

// Copies `bytes` bytes as plainly as possible: the memory-speed baseline beside XML output.
inline void plainCopy(benchmark::State& state, size_t bytes) {
    std::vector<char> from(bytes, 'x'), to(bytes);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}

}  // namespace quillon_bench
