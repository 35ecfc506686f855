// Whole conversions, each beside a plain copy of as many bytes as it writes.
#include <benchmark/benchmark.h>

#include "bench_util.h"
#include "convert/conversions.h"

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

void BM_ConvertLightOmni(benchmark::State& s) { lightBenchmark(s, "light_type2_omni.json", 2); }
void BM_ConvertLightSpot(benchmark::State& s) { lightBenchmark(s, "light_type4_spot.json", 4); }
void BM_CopyLightOmniBytes(benchmark::State& s) {
    plainCopy(s, convertLightOnce(sampleBytes("light_type2_omni.json"), 2));
}

void BM_OptionsDocument(benchmark::State& state) {
    size_t bytes = 0;
    for (auto _ : state) {
        bytes = CorvaneCore::optionsDocument().size();
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.counters["xml_bytes"] = static_cast<double>(bytes);
}
void BM_CopyOptionsDocumentBytes(benchmark::State& s) {
    plainCopy(s, CorvaneCore::optionsDocument().size());
}

}  // namespace

BENCHMARK(BM_ConvertLightOmni);
BENCHMARK(BM_ConvertLightSpot);
BENCHMARK(BM_CopyLightOmniBytes);
BENCHMARK(BM_OptionsDocument);
BENCHMARK(BM_CopyOptionsDocumentBytes);
