// Material conversions and the stored scene record, each beside a plain copy of as many bytes
// as it writes.
#include <benchmark/benchmark.h>

#include "bench_util.h"
#include "convert/conversions.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "materials/scene_materials.h"
#include "options/all_options.h"
#include "textures/procedural.h"
#include "textures/texture.h"
#include "textures/uvw.h"
#include "xml/number_format.h"

using namespace CorvaneCore;
using namespace quillon_bench;

namespace {

std::shared_ptr<BaseTexture> noise() {
    auto texture = std::make_shared<NoiseTexture>();
    texture->uvwgen = createUVW(4);
    return texture;
}

// Three layers (diffuse, reflection, refraction), each with a bitmap and a noise texture.
std::string threeLayerRecord() {
    MaterialLayeredBRDF material;
    material.name = u"Three layers";
    auto diffuse = std::make_shared<Diffuse_BRDF>();
    diffuse->color_tex = makeBitmapTexture(u"C:\\maps\\wood.jpg");
    diffuse->transparency_tex = noise();
    auto reflection = std::make_shared<Blinn_BRDF>();
    reflection->color_tex = makeBitmapTexture(u"C:\\maps\\gloss.png");
    reflection->hilightGlossiness_tex = noise();
    auto refraction = std::make_shared<Glass_BRDF>();
    refraction->color_tex = makeBitmapTexture(u"C:\\maps\\glass.png");
    refraction->glossiness_tex = noise();
    material.brdfs = {diffuse, reflection, refraction};
    return recordOf(material);
}

// A stored scene record of the newest layout holding `count` copies of the Brick material.
std::string sceneRecord(int count) {
    const std::string brick = sampleBytes("material_type1_brick.json");
    QuickArchive archive;
    archive.write(uint32_t(0x60000));
    AllOptions options;
    options.serialize(archive);
    SceneMaterials set;
    for (int i = 0; i < count; ++i) {
        QuickArchive one;
        one.writeBytes(brick.data(), brick.size());
        auto material = createMaterial(1);
        material->deserialize(one);
        material->name = u"Brick " + CorvaneCore::numberText(int64_t(i));
        material->uuid = u"uuid-" + CorvaneCore::numberText(int64_t(i));
        set.addMaterial(material);
    }
    set.serialize(archive);
    std::string bytes(static_cast<size_t>(archive.writePos()), '\0');
    archive.readBytes(&bytes[0], bytes.size());
    return bytes;
}

size_t convertOnce(const std::string& record, int type) {
    QuickArchive archive(1);
    archive.writeBytes(record.data(), record.size());
    auto xml = convertMaterial(archive, type);
    return xml ? xml->size() : 0;
}

void materialBenchmark(benchmark::State& state, const std::string& record, int type) {
    size_t xmlBytes = 0;
    for (auto _ : state) {
        xmlBytes = convertOnce(record, type);
        benchmark::DoNotOptimize(xmlBytes);
    }
    if (xmlBytes == 0) state.SkipWithError("the record was refused");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * xmlBytes));
    state.counters["xml_bytes"] = static_cast<double>(xmlBytes);
}

void BM_ConvertMaterialBrick(benchmark::State& s) {
    materialBenchmark(s, sampleBytes("material_type1_brick.json"), 1);
}
void BM_ConvertMaterialThreeLayers(benchmark::State& s) {
    materialBenchmark(s, threeLayerRecord(), 1);
}
void BM_ConvertMaterialTwoSided(benchmark::State& s) {
    materialBenchmark(s, sampleBytes("material_type5_two_sided.json"), 5);
}
void BM_CopyThreeLayersBytes(benchmark::State& s) {
    plainCopy(s, convertOnce(threeLayerRecord(), 1));
}

void BM_ReadSceneRecord(benchmark::State& state) {
    const std::string record = sceneRecord(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QuickArchive archive(1);
        archive.writeBytes(record.data(), record.size());
        if (!readSceneRecord(archive)) state.SkipWithError("the scene record was refused");
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * record.size()));
    state.counters["record_bytes"] = static_cast<double>(record.size());
}

}  // namespace

BENCHMARK(BM_ConvertMaterialBrick);
BENCHMARK(BM_ConvertMaterialThreeLayers);
BENCHMARK(BM_ConvertMaterialTwoSided);
BENCHMARK(BM_CopyThreeLayersBytes);
BENCHMARK(BM_ReadSceneRecord)->Arg(200)->Arg(1000);
