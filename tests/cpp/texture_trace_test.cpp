// A traced read of every texture class: each object the trace shows carries its version word,
// whether the read succeeded or was refused.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "archive/read_helpers.h"
#include "archive/read_trace.h"
#include "lights/sun_light.h"
#include "texture_bytes.h"
#include "textures/base_texture.h"
#include "textures/sky.h"

using namespace CorvaneCore;
using texture_test::Bytes;

namespace {

// Children as their parents store them: the type id, then the child's newest record.
Bytes objectUvw() {
    Bytes b;
    b.i32(1).version(1).identityTransform().defaultComponents();
    return b;
}

Bytes channelUvw() {
    Bytes b;
    b.i32(4).version(2).identityTransform().identityTransform().ints({0, 0, 1});
    return b.defaultComponents().defaultComponents();
}

Bytes environmentUvw() {
    Bytes b;
    b.i32(3).version(2).floats({1, 0, 0, 0, 1, 0, 0, 0, 1}).i32(2).defaultComponents();
    return b;
}

Bytes acolorTexture() {
    Bytes b;
    b.i32(5).version(1).floats({0.5f, 0.5f, 0.5f, 1});
    return b;
}

Bytes presentTexture() {
    Bytes b;
    b.flag(true).append(acolorTexture());
    return b;
}

// The sun's settings as the sky's versions 2 and 3 hold them.
Bytes skyBlock() {
    Bytes b;
    b.floats({0, 0, 1}).floats({0, 3, 2, 1, 1, 50, 150, 0.35f}).ints({500, 1000, 8});
    return b.flag(true).flag(false).text("sky");
}

struct TracedRecord {
    int typeId;
    uint32_t major;
    Bytes record;
};

// One record of each texture class, in its newest layout but the sky's, assembled from the
// classes' field tables.
std::vector<TracedRecord> oneRecordPerClass() {
    std::vector<TracedRecord> records(13);
    for (int id = 0; id < 13; ++id) records[size_t(id)].typeId = id;
    auto at = [&](int id, uint32_t major) -> Bytes& {
        records[size_t(id)].major = major;
        return records[size_t(id)].record.version(major);
    };
    Bytes bitmapChildren;  // both ids ahead of both children's data
    bitmapChildren.i32(4).i32(0);
    Bytes channelBody = channelUvw();
    channelBody.data.erase(channelBody.data.begin(), channelBody.data.begin() + 4);
    bitmapChildren.append(channelBody).version(1).i32(1).floats({0.15f, 1}).text("a.png");
    at(0, 1).append(bitmapChildren).flag(true);
    at(1, 2).color(1, 1, 1).color(0.25f, 0.25f, 0.25f).floats({1.55f, 1.55f, 1, 1, 1, 1});
    records[1].record.absent().absent().absent().append(presentTexture());
    at(2, 1).append(objectUvw());
    at(3, 1).append(environmentUvw()).append(presentTexture()).absent();
    records[3].record.color(1, 1, 1).color(0, 0, 0).floats({1, 1, 2, 1, 1, 1, 0.5f, 0, 1, 1});
    records[3].record.ints({3, 0, 0});
    at(4, 2).append(objectUvw()).append(acolorTexture()).append(acolorTexture());
    records[4].record.flag(true).flag(true).floats({1, 1});
    at(5, 1).floats({1, 1, 1, 1});
    at(6, 2).append(objectUvw()).append(acolorTexture()).append(acolorTexture());
    records[6].record.floats({1, 1, 0.1f, 0.1f});
    at(7, 2).append(objectUvw()).floats({1, 1, 1, 1, 0, 0, 0, 1, 1, 1, 1, 1, 0.1f, 0.1f});
    records[7].record.flag(true);
    at(8, 1).append(objectUvw()).floats({0.1f, 0.1f});
    at(9, 1).append(acolorTexture()).flag(false);
    at(10, 2).append(presentTexture()).f32(1).absent().f32(1).f32(0.5f);
    at(11, 1).append(channelUvw()).append(acolorTexture()).floats({0.5f, 0, 0}).ints({0, 1});
    at(12, 2).absent().identityTransform().append(skyBlock());
    return records;
}

std::unique_ptr<ReadTrace> traceOf(int typeId, const Bytes& record, bool& ok) {
    auto trace = std::make_unique<ReadTrace>();
    auto texture = createTexture(typeId);
    QuickArchive archive = record.archive();
    archive.setTrace(trace.get());
    ok = texture && readTracedObject(archive, *texture);
    EXPECT_EQ(archive.readPos(), record.size()) << "type " << typeId;
    return trace;
}

void expectEveryNodeVersioned(const ReadTrace& trace, int typeId) {
    ASSERT_FALSE(trace.nodes().empty()) << "type " << typeId;
    for (const ReadTrace::Node& node : trace.nodes()) {
        EXPECT_FALSE(node.versionWords.empty()) << node.className << " in type " << typeId;
    }
}

}  // namespace

TEST(TextureTrace, EveryObjectOfEveryClassShowsItsVersionWord) {
    for (const TracedRecord& entry : oneRecordPerClass()) {
        bool ok = false;
        auto trace = traceOf(entry.typeId, entry.record, ok);
        EXPECT_TRUE(ok) << "type " << entry.typeId << ": " << trace->failureText();
        expectEveryNodeVersioned(*trace, entry.typeId);
        ASSERT_FALSE(trace->nodes().empty() || trace->nodes().front().versionWords.empty());
        EXPECT_EQ(trace->nodes().front().versionWords.front(), entry.major << 16)
            << "type " << entry.typeId;
    }
}

// Nested placements report their words to the generator that holds them.
TEST(TextureTrace, GeneratorsShowThePlacementWordsBehindTheirOwn) {
    Bytes record;
    record.version(1).append(channelUvw());
    bool ok = false;
    auto trace = traceOf(2, record, ok);
    ASSERT_TRUE(ok);
    ASSERT_EQ(trace->nodes().size(), 2u);
    EXPECT_EQ(trace->nodes()[1].versionWords, (std::vector<uint32_t>{0x20000, 0x10000, 0x10000}));
}

TEST(TextureTrace, ARefusedWordIsShownOnTheRefusedObject) {
    for (int id = 0; id < 13; ++id) {
        Bytes record;
        record.u32(0x10001);
        bool ok = true;
        auto trace = traceOf(id, record, ok);
        EXPECT_FALSE(ok) << "type " << id;
        ASSERT_EQ(trace->nodes().size(), 1u) << "type " << id;
        EXPECT_TRUE(trace->nodes()[0].refused) << "type " << id;
        EXPECT_EQ(trace->nodes()[0].versionWords, std::vector<uint32_t>{0x10001}) << "type " << id;
    }
}

// A sun light and a sky start from the same settings of the sun; only `enabled` differs.
TEST(SunParameters, SunAndSkyShareTheSunDefaults) {
    auto sky = std::dynamic_pointer_cast<SkyTexture>(createTexture(12));
    SunLight sun;
    for (const SunParameters* p :
         {static_cast<const SunParameters*>(sky.get()), static_cast<const SunParameters*>(&sun)}) {
        EXPECT_EQ(p->up_vector, Vector(0, 0, 1));
        EXPECT_EQ(p->shadowBias, 0.0f);
        EXPECT_EQ(p->turbidity, 3.0f);
        EXPECT_EQ(p->water_vapour, 2.0f);
        EXPECT_EQ(p->intensity_multiplier, 1.0f);
        EXPECT_EQ(p->size_multiplier, 1.0f);
        EXPECT_EQ(p->photon_radius, 50.0f);
        EXPECT_EQ(p->photon_emit_distance, 150.0f);
        EXPECT_EQ(p->ozone, 0.35f);
        EXPECT_EQ(p->photonSubdivs, 500);
        EXPECT_EQ(p->causticSubdivs, 1000);
        EXPECT_EQ(p->shadow_subdivs, 8);
        EXPECT_TRUE(p->shadows);
    }
    EXPECT_FALSE(sky->enabled);
    EXPECT_TRUE(sun.enabled);
}
