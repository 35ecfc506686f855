// How material conversion scales: the cost per layer at 1, 10 and 100 layers, and a hostile
// record whose long name reaches the URL of every layer, which the document budget refuses.
#include <benchmark/benchmark.h>

#include <string>

#include "archive/limits.h"
#include "archive/quick_archive.h"
#include "bench_util.h"
#include "convert/conversions.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "textures/texture.h"

using namespace CorvaneCore;
using quillon_bench::recordOf;

namespace {

// A layered material of `layers` diffuse layers, each with a bitmap texture or none.
std::string layeredRecord(int layers, const std::u16string& name, bool textured) {
    MaterialLayeredBRDF material;
    material.name = name;
    for (int i = 0; i < layers; ++i) {
        auto diffuse = std::make_shared<Diffuse_BRDF>();
        if (textured) diffuse->color_tex = makeBitmapTexture(u"C:\\maps\\wood.jpg");
        material.brdfs.push_back(diffuse);
    }
    return recordOf(material);
}

void convertBenchmark(benchmark::State& state, const std::string& record, bool refused) {
    size_t xmlBytes = 0;
    bool gotDocument = false;
    for (auto _ : state) {
        QuickArchive archive(1);
        archive.writeBytes(record.data(), record.size());
        const auto xml = convertMaterial(archive, 1);
        gotDocument = xml.has_value();
        xmlBytes = xml ? xml->size() : 0;
        benchmark::DoNotOptimize(xmlBytes);
    }
    if (gotDocument == refused) state.SkipWithError("unexpected result");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * xmlBytes));
    state.counters["xml_bytes"] = static_cast<double>(xmlBytes);
    state.counters["record_bytes"] = static_cast<double>(record.size());
}

void BM_ConvertMaterialLayers(benchmark::State& state) {
    const int layers = static_cast<int>(state.range(0));
    convertBenchmark(state, layeredRecord(layers, u"Layers", true), false);
    state.counters["per_layer"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * layers,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// 1024 layers under a 128 KiB name: about 270 MB of XML unbounded, refused at the budget.
void BM_ConvertAmplifyingRecordRefused(benchmark::State& state) {
    const std::string record = layeredRecord(1024, std::u16string(128 * 1024, u'n'), false);
    convertBenchmark(state, record, true);
    // What is written before the refusal: the budget and the one line that passes it.
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kMaxDocumentBytes));
}

}  // namespace

BENCHMARK(BM_ConvertMaterialLayers)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(BM_ConvertAmplifyingRecordRefused)->Unit(benchmark::kMillisecond);
