// The read trace of BRDF layers and the materials that hold them: every object it shows names
// its version word, also when the read was refused.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "archive/read_helpers.h"
#include "archive/read_trace.h"
#include "material_bytes.h"
#include "materials/material.h"

using namespace CorvaneCore;

namespace {

using Words = std::vector<uint32_t>;
using Shown = std::vector<std::pair<std::string, Words>>;

class BrdfTrace : public material_test::MaterialSetTest {};

uint32_t word(uint32_t major) { return major << 16; }

// Layers of every class, each assembled from its field table: old layouts without a section,
// newest layouts with one, and a diffuse layer with a bitmap texture in its colour slot.
RecordBuilder& glassVersion1(RecordBuilder& r) {
    r.i32(1).version(1).color(1, 1, 1).color(1, 1, 1);
    return r.floats({1.55f, 1.55f, 0.001f, 1, 1}).ints({5, 8, 0, 0});
}
RecordBuilder& diffuseVersion4WithBitmap(RecordBuilder& r) {
    r.i32(2).version(4).color(0.5f, 0.5f, 0.5f).color(0, 0, 0).f32(1).f32(1);
    material_test::bitmapSlot(r, "wood.png").absent();
    return r.brdfSection("Wood").boolean(true);
}
// 1, 2, 3, 4, fresnelIor, 5, 6, fresnelOn, 7, 8.
RecordBuilder& blinnVersion1(RecordBuilder& r) {
    r.i32(4).version(1).color(1, 1, 1).color(1, 1, 1);
    return r.floats({1, 1, 1.6f, 0.01f}).ints({8, 1, 0, 5});
}
RecordBuilder& phongVersion6(RecordBuilder& r) {
    r.i32(8).version(6).color(1, 1, 1).color(1, 1, 1).floats({1, 1, 0.01f}).ints({8, 0, 5});
    r.floats({1, 1, 1, 1}).absent().absent().absent().absent().floats({0, 0});
    return r.brdfSection("Shine");
}
RecordBuilder& mirrorVersion5(RecordBuilder& r) {
    r.i32(16).version(5).color(1, 1, 1).color(1, 1, 1).f32(1).f32(0.01f).i32(1).f32(1);
    return r.absent().absent().brdfSection("Mirror");
}
// 1 to 6, then path-slots 7 and 8.
RecordBuilder& lightVersion2(RecordBuilder& r) {
    r.i32(32).version(2).color(1, 1, 1).color(0, 0, 0).floats({1, 1, 1, 1});
    return r.text("").text("");
}

// A version 2 layered material: the layer list; double_sided, layeredOptionA; the section.
RecordBuilder layeredOfEveryClass() {
    RecordBuilder r;
    r.version(2).u32(6);
    glassVersion1(r);
    diffuseVersion4WithBitmap(r);
    blinnVersion1(r);
    phongVersion6(r);
    mirrorVersion5(r);
    lightVersion2(r);
    r.i32(1).i32(0);
    material_test::section(r, "Every layer");
    return r;
}

// The material and its layers as the trace shows them, each with its words.
Shown materialAndLayers(const ReadTrace& trace) {
    Shown shown;
    for (const ReadTrace::Node& node : trace.nodes()) {
        const bool layerOrMaterial = node.parent <= 0;
        if (layerOrMaterial) shown.emplace_back(node.className, node.versionWords);
    }
    return shown;
}

void expectEveryNodeHasAWord(const ReadTrace& trace) {
    for (const ReadTrace::Node& node : trace.nodes()) {
        EXPECT_FALSE(node.versionWords.empty()) << node.className << " at " << node.begin;
    }
}

TEST_F(BrdfTrace, EveryLayerAndItsTexturesNameTheirWords) {
    QuickArchive archive = layeredOfEveryClass().archive();
    ReadTrace trace;
    archive.setTrace(&trace);
    MaterialLayeredBRDF material;
    ASSERT_TRUE(readTracedObject(archive, material));
    ASSERT_EQ(material.brdfs.size(), 6u);
    EXPECT_EQ(trace.failureText(), "");

    // Each object's own word first, then that of its section, if the version holds one.
    const Shown expected = {
        {"MaterialLayeredBRDF", {word(2), word(2)}},
        {"Glass_BRDF", {word(1)}},
        {"Diffuse_BRDF", {word(4), word(4)}},
        {"Blinn_BRDF", {word(1)}},
        {"Phong_BRDF", {word(6), word(4)}},
        {"Mirror_BRDF", {word(5), word(4)}},
        {"Light_BRDF", {word(2)}},
    };
    EXPECT_EQ(materialAndLayers(trace), expected);
    // The bitmap texture and what it holds sit below the diffuse layer.
    EXPECT_GT(trace.nodes().size(), expected.size());
    expectEveryNodeHasAWord(trace);
}

TEST_F(BrdfTrace, RefusedLayersAndSectionsStillNameTheirWords) {
    // A mirror of version 6 does not exist: the layer is refused at its own word.
    RecordBuilder unknownLayer;
    unknownLayer.version(2).u32(2);
    glassVersion1(unknownLayer).i32(16).version(6);
    QuickArchive archive = unknownLayer.archive();
    ReadTrace trace;
    archive.setTrace(&trace);
    MaterialLayeredBRDF material;
    EXPECT_FALSE(readTracedObject(archive, material));
    const Shown refused = {
        {"MaterialLayeredBRDF", {word(2)}},
        {"Glass_BRDF", {word(1)}},
        {"Mirror_BRDF", {word(6)}},
    };
    EXPECT_EQ(materialAndLayers(trace), refused);
    EXPECT_TRUE(trace.nodes().back().refused);
    expectEveryNodeHasAWord(trace);

    // A light of version 5 whose section word has a minor half: the layer shows both words.
    RecordBuilder badSection;
    badSection.i32(32).version(5).color(1, 1, 1).color(0, 0, 0).floats({1, 1, 1, 1});
    badSection.absent().absent().u32(0x40001).text("Lamp").boolean(true).boolean(false);
    QuickArchive single = RecordBuilder().version(2).ints({0, 0}).append(badSection).archive();
    ReadTrace singleTrace;
    single.setTrace(&singleTrace);
    MaterialSingleBRDF singleMaterial;
    EXPECT_FALSE(readTracedObject(single, singleMaterial));
    const Shown refusedSection = {
        {"MaterialSingleBRDF", {word(2)}},
        {"Light_BRDF", {word(5), 0x40001}},
    };
    EXPECT_EQ(materialAndLayers(singleTrace), refusedSection);
}

}  // namespace
