// Whole conversions, each beside a plain copy of as many bytes as it writes.
#include <benchmark/benchmark.h>

#include "bench_util.h"
#include "convert/conversions.h"
#include "lights/base_light.h"

using namespace quillon_bench;

namespace {

size_t convertLightOnce(const std::string& record, int type) {
    CorvaneCore::QuickArchive archive(1);
    archive.writeBytes(record.data(), record.size());
    auto xml = CorvaneCore::convertLight(archive, type);
    return xml ? xml->size() : 0;
}

void lightBenchmark(benchmark::State& state, const char* sample, int type) {
    const std::string record = sampleBytes(sample);
    size_t xmlBytes = 0;
    for (auto _ : state) {
        xmlBytes = convertLightOnce(record, type);
        benchmark::DoNotOptimize(xmlBytes);
    }
    if (xmlBytes == 0) state.SkipWithError("the sample was refused");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * xmlBytes));
    state.counters["xml_bytes"] = static_cast<double>(xmlBytes);
}

// The newest record of a light class at its defaults, as the class itself writes it.
std::string defaultLightRecord(int type) {
    auto light = CorvaneCore::createLight(type);
    CorvaneCore::QuickArchive archive;
    light->serialize(archive);
    std::string bytes(static_cast<size_t>(archive.writePos()), '\0');
    archive.readBytes(&bytes[0], bytes.size());
    return bytes;
}

void lightClassBenchmark(benchmark::State& state) {
    const int type = static_cast<int>(state.range(0));
    const std::string record = defaultLightRecord(type);
    size_t xmlBytes = 0;
    for (auto _ : state) {
        xmlBytes = convertLightOnce(record, type);
        benchmark::DoNotOptimize(xmlBytes);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * xmlBytes));
    state.counters["xml_bytes"] = static_cast<double>(xmlBytes);
}

void BM_ConvertLightOmni(benchmark::State& s) { lightBenchmark(s, "light_type2_omni.json", 2); }
void BM_ConvertLightSpot(benchmark::State& s) { lightBenchmark(s, "light_type4_spot.json", 4); }
void BM_CopyLightOmniBytes(benchmark::State& s) {
    plainCopy(s, convertLightOnce(sampleBytes("light_type2_omni.json"), 2));
}

void BM_OptionsDocument(benchmark::State& state) {
    size_t bytes = 0;
    for (auto _ : state) {
        bytes = CorvaneCore::optionsDocument()->size();
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.counters["xml_bytes"] = static_cast<double>(bytes);
}
void BM_CopyOptionsDocumentBytes(benchmark::State& s) {
    plainCopy(s, CorvaneCore::optionsDocument()->size());
}

}  // namespace

// Types 0 and 2 to 7: every light class the factory makes (7 writes no XML).
BENCHMARK(lightClassBenchmark)->Name("BM_ConvertLightClass")->Arg(0)->DenseRange(2, 7);
BENCHMARK(BM_ConvertLightOmni);
BENCHMARK(BM_ConvertLightSpot);
BENCHMARK(BM_CopyLightOmniBytes);
BENCHMARK(BM_OptionsDocument);
BENCHMARK(BM_CopyOptionsDocumentBytes);
