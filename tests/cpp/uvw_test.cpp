#include "textures/uvw.h"

#include <gtest/gtest.h>

#include <array>

#include "texture_bytes.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;
using texture_test::Bytes;
using texture_test::Xml;

namespace {

void expectColumns(const Matrix& m, const std::array<Vector, 3>& columns) {
    for (int j = 0; j < 3; ++j) {
        EXPECT_NEAR(m.v[j].x, columns[j].x, 1e-6) << "column " << j;
        EXPECT_NEAR(m.v[j].y, columns[j].y, 1e-6) << "column " << j;
        EXPECT_NEAR(m.v[j].z, columns[j].z, 1e-6) << "column " << j;
    }
}

// Placement values in the record's order: rotations, scales and offsets x to z, then mirrors.
TransformComponents comps(std::array<float, 9> f, std::array<int32_t, 3> mirrors) {
    TransformComponents c;
    c.x_rotation = f[0], c.y_rotation = f[1], c.z_rotation = f[2];
    c.x_scale = f[3], c.y_scale = f[4], c.z_scale = f[5];
    c.x_offset = f[6], c.y_offset = f[7], c.z_offset = f[8];
    c.x_mirror = mirrors[0], c.y_mirror = mirrors[1], c.z_mirror = mirrors[2];
    return c;
}

}  // namespace

// X(90) rows (1,0,0),(0,0,-1),(0,1,0); Y(90) rows (0,0,1),(0,1,0),(-1,0,0); Z(90) rows
// (0,-1,0),(1,0,0),(0,0,1).
TEST(TransformComponents, ComposesXTimesYTimesZWithScaleAndMirrorInTheAxisFrame) {
    const Vector x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
    const struct {
        const char* note;
        TransformComponents c;
        std::array<Vector, 3> columns;
    } cases[] = {
        // X*Y has rows (0,0,1),(1,0,0),(0,1,0); Y*X would have rows (0,1,0),(0,0,1),(1,0,0).
        {"X(90) Y(90)", comps({90, 90, 0, 1, 1, 1, 0, 0, 0}, {0, 0, 0}), {y, z, x}},
        // Y*Z has rows (0,0,1),(1,0,0),(0,1,0); Z*Y would have rows (0,-1,0),(0,0,1),(-1,0,0).
        {"Y(90) Z(90)", comps({0, 90, 90, 1, 1, 1, 0, 0, 0}, {0, 0, 0}), {y, z, x}},
        {"scaled, z mirrored",
         comps({0, 0, 0, 3, 2, 0.5f, 0, 0, 0}, {0, 0, 1}),
         {Vector(3, 0, 0), Vector(0, 2, 0), Vector(0, 0, -0.5f)}},
        // diag(-1,1,1) times Z(90); any non-zero value mirrors.
        {"x mirrored, Z(90)", comps({0, 0, 90, 1, 1, 1, 0, 0, 0}, {2, 0, 0}), {y, x, z}},
        // X(90) times diag(1,2,1): the y scale lands in X's second column (0,0,1).
        {"X(90), y scaled",
         comps({90, 0, 0, 1, 2, 1, 0, 0, 0}, {0, 0, 0}),
         {x, Vector(0, 0, 2), Vector(0, -1, 0)}},
    };
    Matrix m;
    for (const auto& test : cases) {
        SCOPED_TRACE(test.note);
        test.c.compose(m);
        expectColumns(m, test.columns);
    }
}

TEST(TransformComponents, ReadsItsOnlyVersionAndResetsOnAnyWord) {
    Bytes record;
    record.components({10, 20, 30, 2, 3, 4, 5, 6, 7}, {1, 0, 2});
    TransformComponents c;
    ASSERT_TRUE(readAll(c, record));
    EXPECT_EQ(c, comps({10, 20, 30, 2, 3, 4, 5, 6, 7}, {1, 0, 2}));

    for (uint32_t word : {0x20000u, 0x10001u, 0u}) {
        Bytes bad;
        bad.u32(word);
        EXPECT_FALSE(deserializeFrom(c, bad)) << word;
        EXPECT_EQ(c, TransformComponents());  // reset before the refusal
        c.x_rotation = 5;
    }
}

TEST(GenChannelUVW, ReadsBothVersionsInTableOrder) {
    Bytes record;
    record.version(2)
        .floats({2, 0, 0, 0, 2, 0, 0, 0, 2, 9, 8, 7})  // uvw_transform
        .identityTransform()                           // tex_transform
        .ints({1, 2, 3})                               // wrap_u, wrap_v, uvw_channel
        .components({0, 0, 45, 1, 1, 1, 0, 0, 0}, {0, 0, 0})
        .components({0, 0, 0, 2, 2, 2, 0.5f, 0, 0}, {0, 1, 0});
    GenChannelUVW uvw;
    ASSERT_TRUE(readAll(uvw, record));
    EXPECT_EQ(uvw.uvw_channel, 3);
    EXPECT_EQ(uvw.texComponents, comps({0, 0, 0, 2, 2, 2, 0.5f, 0, 0}, {0, 1, 0}));
    expectWritesBack(uvw, record);

    // Version 1 stores the texture placement between the transforms.
    record = Bytes();
    record.version(1)
        .identityTransform()
        .floats({3, 0, 0, 0, 3, 0, 0, 0, 3, 0, 0, 0})  // a stored scale the components lack
        .floats({30, 60})                              // tex x_rotation, y_rotation
        .ints({1, 0})                                  // tex x_mirror, y_mirror
        .ints({4, 5, 2});                              // wrap_u, wrap_v, uvw_channel
    uvw = GenChannelUVW();
    ASSERT_TRUE(readAll(uvw, record));
    EXPECT_EQ(uvw.texComponents, comps({30, 60, 0, 1, 1, 1, 0, 0, 0}, {1, 0, 0}));
    EXPECT_EQ(uvw.uvw_channel, 2);
    EXPECT_EQ(uvw.tex_transform.m.v[0].x, 3);

    // The components win: output recomputes the stored matrix from them.
    std::string text;
    AssetXmlWriter writer(text);
    uvw.writeXML(writer, u"");
    Matrix expected;
    uvw.texComponents.compose(expected);
    EXPECT_EQ(uvw.tex_transform.m, expected);
    EXPECT_NE(uvw.tex_transform.m.v[0].x, 3);
}

TEST(GenChannelUVW, RefusesUnknownWords) {
    texture_test::expectRefusesWords<GenChannelUVW>({0x20001, 0x30000, 0});
    // A nested placement with a wrong word fails the generator.
    Bytes record;
    record.version(2).identityTransform().identityTransform().ints({0, 0, 1}).version(2);
    EXPECT_FALSE(deserializeFrom(GenChannelUVW(), record));
}

TEST(GenEnvironmentUVW, ReadsBothVersionsVersionOneZBeforeX) {
    Bytes record;
    record.version(1)
        .floats({1, 0, 0, 0, 1, 0, 0, 0, 1})  // uvw_matrix
        .i32(3)                               // mappingType
        .floats({15, 25})                     // z_rotation, then x_rotation
        .ints({1, 0});                        // z_mirror, then x_mirror
    GenEnvironmentUVW uvw;
    ASSERT_TRUE(readAll(uvw, record));
    EXPECT_EQ(uvw.mappingType, 3);
    EXPECT_EQ(uvw.components, comps({25, 0, 15, 1, 1, 1, 0, 0, 0}, {0, 0, 1}));

    record = Bytes();
    record.version(2)
        .floats({0, 1, 0, -1, 0, 0, 0, 0, 1})
        .i32(0)
        .components({0, 0, 90, 1, 1, 1, 0, 0, 0}, {0, 0, 0});
    uvw = GenEnvironmentUVW();
    ASSERT_TRUE(readAll(uvw, record));
    EXPECT_EQ(uvw.uvw_matrix.v[1], Vector(-1, 0, 0));
    expectWritesBack(uvw, record);

    texture_test::expectRefusesWords<GenEnvironmentUVW>({0x30000});
}

// Orientation goes to "uvw_matrix", scale and offset to "uvw_transform".
TEST(GenEnvironmentUVW, SplitsComponentsOverTwoParameters) {
    GenEnvironmentUVW uvw;
    uvw.components = comps({10, 0.5f, -20, 2, 1, 1.6f, 0, 0.1f, 3}, {0, 1, 0});
    uvw.mappingType = 3;

    Xml expected;
    expected.assetOpen(u"/Env/UVWGenEnvironment", u"uvw", u"UVWGenEnvironment")
        .components(u"componentMatrix", u"uvw_matrix",
                    {u"10", u"0.5", u"-20", u"1", u"1", u"1", u"0", u"0", u"0", u"0", u"1", u"0"})
        .components(u"componentTransform", u"uvw_transform",
                    {u"0", u"0", u"0", u"2", u"1", u"1.6", u"0", u"0.1", u"3", u"0", u"0", u"0"})
        .inlineParam(u"string", u"mapping_type", u"mirror_ball")
        .assetClose();

    EXPECT_EQ(texture_test::assetsOf(uvw, u"/Env"), expected.document());

    // The stored matrix was recomputed from all the components before output.
    Matrix composed;
    uvw.components.compose(composed);
    EXPECT_EQ(uvw.uvw_matrix, composed);
}

TEST(ProjectionUVW, ReadVersionOneAndOnlyObjectStartsFromDefaults) {
    Bytes record;
    record.version(1)
        .floats({1, 0, 0, 0, 1, 0, 0, 0, 1, 4, 5, 6})
        .components({0, 0, 0, 1, 1, 1, 4, 5, 6}, {0, 0, 1});
    for (int id : {0, 1}) {
        auto uvw = std::dynamic_pointer_cast<GenProjectionUVW>(createUVW(id));
        ASSERT_TRUE(uvw && readAll(*uvw, record));
        EXPECT_EQ(uvw->uvw_transform.offset, Vector(4, 5, 6));
        EXPECT_EQ(uvw->components.z_mirror, 1);
    }

    Bytes bad;
    bad.version(2);
    GenPlanarWorldUVW world;
    GenObjectUVW object;
    world.uvw_transform.offset = object.uvw_transform.offset = Vector(1, 1, 1);
    EXPECT_FALSE(deserializeFrom(world, bad));
    EXPECT_FALSE(deserializeFrom(object, bad));
    EXPECT_EQ(world.uvw_transform.offset, Vector(1, 1, 1));
    EXPECT_EQ(object.uvw_transform.offset, Vector(0, 0, 0));
}

TEST(ProjectionUVW, WritesOnePlacementParameter) {
    GenObjectUVW uvw;
    uvw.components.x_offset = 2;
    Xml expected;
    expected.assetOpen(u"/T/uvwgen/UVWGenObject", u"uvw", u"UVWGenObject")
        .components(u"componentTransform", u"uvw_transform",
                    {u"0", u"0", u"0", u"1", u"1", u"1", u"2", u"0", u"0", u"0", u"0", u"0"})
        .assetClose();
    EXPECT_EQ(texture_test::assetsOf(uvw, u"/T/uvwgen"), expected.document());
    EXPECT_EQ(uvw.uvw_transform.offset, Vector(2, 0, 0));
}

TEST(UVWFactory, EveryGeneratorClonesAndRoundTrips) {
    for (int id : {-1, 2, 5}) EXPECT_EQ(createUVW(id), nullptr) << id;
    const std::pair<int, const char16_t*> known[] = {{0, u"UVWGenPlanarWorld"},
                                                     {1, u"UVWGenObject"},
                                                     {3, u"UVWGenEnvironment"},
                                                     {4, u"UVWGenChannel"}};
    for (const auto& [id, type] : known) {
        auto uvw = createUVW(id);
        ASSERT_TRUE(uvw) << id;
        EXPECT_EQ(uvw->pluginType(), type);
        // Change the one placement every generator has, through its own record.
        if (auto channel = std::dynamic_pointer_cast<GenChannelUVW>(uvw))
            channel->uvwComponents.y_rotation = 12;
        if (auto env = std::dynamic_pointer_cast<GenEnvironmentUVW>(uvw))
            env->components.y_rotation = 12;
        if (auto proj = std::dynamic_pointer_cast<GenProjectionUVW>(uvw))
            proj->components.y_rotation = 12;

        auto copy = uvw->clone();
        ASSERT_NE(copy, uvw);
        EXPECT_TRUE(copy->isEqual(uvw));
        QuickArchive archive(1);
        ASSERT_TRUE(uvw->serialize(archive));
        auto reread = createUVW(id);
        ASSERT_TRUE(reread->deserialize(archive));
        EXPECT_TRUE(reread->isEqual(uvw)) << id;
        EXPECT_FALSE(createUVW(id)->isEqual(uvw)) << id;
        EXPECT_FALSE(uvw->isEqual(nullptr));
    }
    EXPECT_FALSE(createUVW(0)->isEqual(createUVW(1)));
}
