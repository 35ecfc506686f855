// Worst-case time and heap per conversion call over hostile records: random bytes and mutated
// sample records, up to 1 MiB each. Heap is counted by a replaced global operator new, so the
// figure is the peak of live C++ heap bytes during one call, the archive included.
//
// Usage: resource_figures SAMPLES_DIR [records per kind] [seed]
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <new>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "archive/quick_archive.h"
#include "convert/conversions.h"

namespace {

size_t g_live = 0;
size_t g_peak = 0;

void* counted(size_t size) {
    void* p = std::malloc(size ? size : 1);
    if (!p) throw std::bad_alloc();
    g_live += malloc_usable_size(p);
    g_peak = std::max(g_peak, g_live);
    return p;
}

void uncounted(void* p) {
    if (!p) return;
    g_live -= malloc_usable_size(p);
    std::free(p);
}

}  // namespace

void* operator new(size_t size) { return counted(size); }
void* operator new[](size_t size) { return counted(size); }
void operator delete(void* p) noexcept { uncounted(p); }
void operator delete[](void* p) noexcept { uncounted(p); }
void operator delete(void* p, size_t) noexcept { uncounted(p); }
void operator delete[](void* p, size_t) noexcept { uncounted(p); }

namespace {

using Bytes = std::vector<uint8_t>;
constexpr size_t kMaxRecord = size_t(1) << 20;

Bytes readJsonBytes(const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    Bytes bytes;
    long value = 0;
    bool inNumber = false, negative = false;
    for (char c : text.str()) {
        if (c >= '0' && c <= '9') {
            value = value * 10 + (c - '0');
            inNumber = true;
        } else if (c == '-') {
            negative = true;
        } else {
            if (inNumber) bytes.push_back(static_cast<uint8_t>((negative ? -value : value) & 0xFF));
            value = 0;
            inNumber = negative = false;
        }
    }
    return bytes;
}

// Sizes spread evenly over the orders of magnitude, from 1 byte to 1 MiB.
size_t randomSize(std::mt19937_64& rng) {
    std::uniform_real_distribution<double> exponent(0.0, 20.0);
    return std::min(kMaxRecord, static_cast<size_t>(std::exp2(exponent(rng))) + 1);
}

Bytes randomRecord(std::mt19937_64& rng, size_t size) {
    Bytes bytes(size);
    for (uint8_t& b : bytes) b = static_cast<uint8_t>(rng());
    return bytes;
}

// A sample with some bytes flipped, some 32-bit words set to extreme counts, and a random
// tail (up to 1 MiB in all) or a cut.
Bytes mutatedRecord(std::mt19937_64& rng, const Bytes& sample) {
    Bytes bytes = sample;
    const size_t flips = 1 + rng() % 8;
    for (size_t i = 0; i < flips && !bytes.empty(); ++i) bytes[rng() % bytes.size()] = rng();
    const uint32_t extremes[] = {0xFFFFFFFFu, 0x7FFFFFFFu, 0x10000000u, 0x00010000u, 1000000u};
    const size_t words = rng() % 4;
    for (size_t i = 0; i < words && bytes.size() >= 4; ++i) {
        const uint32_t v = extremes[rng() % 5];
        const size_t at = (rng() % (bytes.size() / 4)) * 4;
        for (int k = 0; k < 4; ++k) bytes[at + k] = static_cast<uint8_t>(v >> (8 * k));
    }
    switch (rng() % 3) {
        case 0:
            bytes.resize(1 + rng() % bytes.size());
            break;
        case 1: {
            const Bytes tail = randomRecord(rng, randomSize(rng));
            bytes.insert(bytes.end(), tail.begin(), tail.end());
            break;
        }
        default:
            break;
    }
    if (bytes.size() > kMaxRecord) bytes.resize(kMaxRecord);
    return bytes;
}

struct Worst {
    double seconds = 0;
    size_t peakBytes = 0;
    size_t outputBytes = 0;
    size_t accepted = 0;
    size_t calls = 0;
};

using Call = std::function<std::optional<std::string>(CorvaneCore::QuickArchive&)>;

void measure(const Bytes& record, const Call& call, Worst& worst) {
    const size_t before = g_live;
    g_peak = g_live;
    const auto start = std::chrono::steady_clock::now();
    std::optional<std::string> out;
    {
        CorvaneCore::QuickArchive archive(1);  // as the Ruby bridge makes it
        archive.writeBytes(record.data(), record.size());
        out = call(archive);
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    worst.seconds = std::max(worst.seconds, seconds);
    worst.peakBytes = std::max(worst.peakBytes, g_peak - before);
    if (out) {
        worst.outputBytes = std::max(worst.outputBytes, out->size());
        ++worst.accepted;
    }
    ++worst.calls;
}

struct Target {
    std::string name;
    Call call;
    std::vector<const Bytes*> samples;  // the samples that are records of this kind
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s SAMPLES_DIR [records] [seed]\n", argv[0]);
        return 2;
    }
    const std::string dir = argv[1];
    const size_t records = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 60;
    std::mt19937_64 rng(argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 20240601);

    // Samples are named <kind>_type<id>_<what>.json.
    std::map<std::string, std::map<int, std::vector<Bytes>>> samples;
    for (const auto& entry : std::filesystem::directory_iterator(dir)) {
        const std::string name = entry.path().filename().string();
        const size_t at = name.find("_type");
        if (entry.path().extension() != ".json" || at == std::string::npos) continue;
        const int id = std::atoi(name.c_str() + at + 5);
        samples[name.substr(0, at)][id].push_back(readJsonBytes(entry.path().string()));
    }
    auto pick = [&](const std::string& kind, int id) {
        std::vector<const Bytes*> chosen;
        for (const auto& [sampleId, list] : samples[kind]) {
            if (sampleId != id && samples[kind].count(id)) continue;
            for (const Bytes& bytes : list) chosen.push_back(&bytes);
        }
        return chosen;
    };

    std::vector<Target> targets;
    for (int32_t type = 0; type <= 14; ++type) {
        targets.push_back(
            {"convert_material type " + std::to_string(type),
             [type](CorvaneCore::QuickArchive& a) { return CorvaneCore::convertMaterial(a, type); },
             pick("material", type)});
    }
    for (int32_t type = 0; type <= 8; ++type) {
        targets.push_back(
            {"convert_light type " + std::to_string(type),
             [type](CorvaneCore::QuickArchive& a) { return CorvaneCore::convertLight(a, type); },
             pick("light", type)});
    }
    targets.push_back({"scene record + options XML",
                       [](CorvaneCore::QuickArchive& a) -> std::optional<std::string> {
                           if (!CorvaneCore::readSceneRecord(a)) return std::nullopt;
                           return CorvaneCore::optionsDocument();
                       },
                       pick("scene", 0)});

    std::printf("| call | records | accepted | largest time | peak heap | largest output |\n");
    std::printf("|---|---:|---:|---:|---:|---:|\n");
    for (const Target& target : targets) {
        Worst worst;
        measure(randomRecord(rng, kMaxRecord), target.call, worst);
        for (size_t i = 0; i < records; ++i) {
            measure(randomRecord(rng, randomSize(rng)), target.call, worst);
            const Bytes& sample = *target.samples[i % target.samples.size()];
            measure(mutatedRecord(rng, sample), target.call, worst);
        }
        std::printf("| %s | %zu | %zu | %.2f ms | %.1f KiB | %.1f KiB |\n", target.name.c_str(),
                    worst.calls, worst.accepted, worst.seconds * 1e3, worst.peakBytes / 1024.0,
                    worst.outputBytes / 1024.0);
    }
    return 0;
}
