#include <gtest/gtest.h>

#include <memory>

#include "lights/base_light.h"
#include "materials/base_material.h"
#include "textures/base_texture.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;

namespace {

// Joins lines, each given as its count of leading blanks and its text.
std::wstring lines(std::initializer_list<std::pair<int, const wchar_t*>> items) {
    std::wstring out;
    for (const auto& [blanks, text] : items) {
        out.append(static_cast<size_t>(blanks), L' ');
        out.append(text);
        out.push_back(L'\n');
    }
    return out;
}

class FakeTexture : public BaseTexture {
public:
    bool serialize(QuickArchive&) override { return true; }
    bool deserialize(QuickArchive&) override { return true; }
    void setDefaults() override {}
    int getType() override { return 0; }
    std::shared_ptr<BaseTexture> clone() override { return std::make_shared<FakeTexture>(); }
    bool isEqual(const std::shared_ptr<BaseTexture>&) override { return true; }
    int writeXML(AssetXmlWriter&, std::wstring) override { return 0; }
    std::wstring pluginType() override { return L"TexBitmap"; }
};

class FakeLight : public BaseLight {
public:
    explicit FakeLight(int type) : type_(type) {}
    bool serialize(QuickArchive&) override { return true; }
    bool deserialize(QuickArchive&) override { return true; }
    int getType() override { return type_; }
    std::shared_ptr<BaseLight> clone() override { return std::make_shared<FakeLight>(type_); }
    bool isEqual(const std::shared_ptr<BaseLight>&) override { return true; }
    void setDefaults() override {}
    std::wstring pluginType() override { return type_ == 5 ? L"SunLight" : L"LightOmni"; }

private:
    int type_;
};

class FakeMaterial : public BaseMaterial {
public:
    bool serialize(QuickArchive&) override { return true; }
    bool deserialize(QuickArchive&) override { return true; }
    int getType() override { return 1; }
    void setDefaults() override {}
    std::shared_ptr<BaseMaterial> clone() override { return nullptr; }
    std::shared_ptr<BaseMaterial> copy() override { return nullptr; }
    bool isEqual(const std::shared_ptr<BaseMaterial>&) override { return true; }
};

}  // namespace

TEST(AssetXmlWriter, OneAssetInsideAssets) {
    std::wstring out;
    AssetXmlWriter w(out);
    w.openAssets();
    w.beginAsset(L"/Wood/TexBitmap/uvwgen/UVWGenChannel", L"uvw", L"");
    w.beginPlugin(L"UVWGenChannel", L"uvw");
    w.beginParameters();
    w.writeInteger("uvw_channel", 1);
    w.endParameters();
    w.endPlugin();
    w.endAsset();
    w.closeAssets();
    EXPECT_EQ(out, lines({
                       {2, L"<Assets>"},
                       {4,
                        L"<Asset layout=\"\" renderer=\"ombra\" type=\"uvw\" "
                        L"url=\"/Wood/TexBitmap/uvwgen/UVWGenChannel\" >"},
                       {6, L"<plugin>"},
                       {8, L"<ombraplugin name=\"UVWGenChannel\" type=\"uvw\">"},
                       {10, L"<parameters>"},
                       {12,
                        L"<parameter type=\"integer\" name=\"uvw_channel\" handler=\"default\" "
                        L"listType=\"none\" label=\"uvw_channel\">"},
                       {14, L"<value>1</value>"},
                       {12, L"</parameter>"},
                       {10, L"</parameters>"},
                       {8, L"</ombraplugin>"},
                       {6, L"</plugin>"},
                       {4, L"</Asset>"},
                       {2, L"</Assets>"},
                   }));
    EXPECT_EQ(w.depth(), 0);
}

TEST(AssetXmlWriter, InlineScalarsLabelsAndUserData) {
    std::wstring out;
    AssetXmlWriter w(out);
    w.writeFloat("f", 0.5f);
    w.writeBool("legacyMode", true, "Legacy Mode", true);
    w.writeString("s", "a<b");
    w.writeFile("file", "C:\\a&b<c.png");
    EXPECT_EQ(out, lines({
                       {0,
                        L"<parameter type=\"float\" name=\"f\" handler=\"default\" "
                        L"listType=\"none\" label=\"f\">"},
                       {2, L"<value>0.5</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"bool\" name=\"legacyMode\" handler=\"default\" "
                        L"listType=\"none\" isUserData=\"1\" label=\"Legacy Mode\">"},
                       {2, L"<value>1</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"string\" name=\"s\" handler=\"default\" "
                        L"listType=\"none\" label=\"s\">"},
                       {2, L"<value>a<b</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"string\" name=\"file\" handler=\"FileBrowserHandler\" "
                        L"listType=\"none\" label=\"file\">"},
                       {2, L"<value>C:\\a&amp;b&lt;c.png</value>"},
                       {0, L"</parameter>"},
                   }));
}

TEST(AssetXmlWriter, BlockValueForms) {
    std::wstring out;
    AssetXmlWriter w(out);
    w.writeColor("c", Color(1, 0.5f, 0));
    w.writeVector("v", Vector(1, 2, 3));
    EXPECT_EQ(out, lines({
                       {0,
                        L"<parameter type=\"color\" name=\"c\" handler=\"default\" "
                        L"listType=\"none\" label=\"c\">"},
                       {2, L"<value>"},
                       {4, L"<r>1</r>"},
                       {4, L"<g>0.5</g>"},
                       {4, L"<b>0</b>"},
                       {2, L"</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"vector\" name=\"v\" handler=\"default\" "
                        L"listType=\"none\" label=\"v\">"},
                       {2, L"<value>"},
                       {4, L"<vector>"},
                       {6, L"<x>1</x>"},
                       {6, L"<y>2</y>"},
                       {6, L"<z>3</z>"},
                       {4, L"</vector>"},
                       {2, L"</value>"},
                       {0, L"</parameter>"},
                   }));
}

TEST(AssetXmlWriter, MatrixHasAnEmptyLineAndTransformHasNone) {
    std::wstring out;
    AssetXmlWriter w(out);
    Matrix m;
    w.writeMatrix("m", m);
    EXPECT_EQ(out, lines({
                       {0,
                        L"<parameter type=\"matrix\" name=\"m\" handler=\"default\" "
                        L"listType=\"none\" label=\"m\">"},
                       {2, L"<value>"},
                       {0, L""},
                       {4, L"<matrix>"},
                       {6, L"<vector>"},
                       {8, L"<x>1</x>"},
                       {8, L"<y>0</y>"},
                       {8, L"<z>0</z>"},
                       {6, L"</vector>"},
                       {6, L"<vector>"},
                       {8, L"<x>0</x>"},
                       {8, L"<y>1</y>"},
                       {8, L"<z>0</z>"},
                       {6, L"</vector>"},
                       {6, L"<vector>"},
                       {8, L"<x>0</x>"},
                       {8, L"<y>0</y>"},
                       {8, L"<z>1</z>"},
                       {6, L"</vector>"},
                       {4, L"</matrix>"},
                       {2, L"</value>"},
                       {0, L"</parameter>"},
                   }));

    out.clear();
    Transform t;
    t.offset = Vector(4, 5, 6);
    w.writeTransform("transform", t);
    EXPECT_EQ(out, lines({
                       {0,
                        L"<parameter type=\"transform\" name=\"transform\" handler=\"default\" "
                        L"listType=\"none\" label=\"transform\">"},
                       {2, L"<value>"},
                       {4, L"<vector>"},
                       {6, L"<x>1</x>"},
                       {6, L"<y>0</y>"},
                       {6, L"<z>0</z>"},
                       {4, L"</vector>"},
                       {4, L"<vector>"},
                       {6, L"<x>0</x>"},
                       {6, L"<y>1</y>"},
                       {6, L"<z>0</z>"},
                       {4, L"</vector>"},
                       {4, L"<vector>"},
                       {6, L"<x>0</x>"},
                       {6, L"<y>0</y>"},
                       {6, L"<z>1</z>"},
                       {4, L"</vector>"},
                       {4, L"<vector>"},
                       {6, L"<x>4</x>"},
                       {6, L"<y>5</y>"},
                       {6, L"<z>6</z>"},
                       {4, L"</vector>"},
                       {2, L"</value>"},
                       {0, L"</parameter>"},
                   }));
}

TEST(AssetXmlWriter, ComponentLinesAndAColor) {
    std::wstring out;
    AssetXmlWriter w(out);
    ComponentValues c;
    c.rotation[1] = 90;
    c.scale[2] = 2;
    c.offset[0] = -1.5f;
    c.mirror[2] = 1;
    w.writeComponentTransform("uvw_transform", c);
    w.writeAColor("a", AColor(0.1f, 0.2f, 0.3f, 1));
    EXPECT_EQ(out, lines({
                       {0,
                        L"<parameter type=\"componentTransform\" name=\"uvw_transform\" "
                        L"handler=\"default\" listType=\"none\" label=\"uvw_transform\">"},
                       {2, L"<value>"},
                       {4, L"<x_rotation>0</x_rotation>"},
                       {4, L"<y_rotation>90</y_rotation>"},
                       {4, L"<z_rotation>0</z_rotation>"},
                       {4, L"<x_scale>1</x_scale>"},
                       {4, L"<y_scale>1</y_scale>"},
                       {4, L"<z_scale>2</z_scale>"},
                       {4, L"<x_offset>-1.5</x_offset>"},
                       {4, L"<y_offset>0</y_offset>"},
                       {4, L"<z_offset>0</z_offset>"},
                       {4, L"<x_mirror>0</x_mirror>"},
                       {4, L"<y_mirror>0</y_mirror>"},
                       {4, L"<z_mirror>1</z_mirror>"},
                       {2, L"</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"acolor\" name=\"a\" handler=\"default\" "
                        L"listType=\"none\" label=\"a\">"},
                       {2, L"<value>"},
                       {4, L"<r>0.1</r>"},
                       {4, L"<g>0.2</g>"},
                       {4, L"<b>0.3</b>"},
                       {4, L"<a>1</a>"},
                       {2, L"</value>"},
                       {0, L"</parameter>"},
                   }));
}

TEST(AssetXmlWriter, PluginReferences) {
    std::wstring out;
    AssetXmlWriter w(out);
    auto material = std::make_shared<FakeMaterial>();
    material->name = L"A&B";
    w.writePlugin("tex", std::shared_ptr<BaseTexture>(std::make_shared<FakeTexture>()),
                  L"/W&d/tex");
    w.writePlugin("mtl", std::shared_ptr<BaseMaterial>(material), L"/x");
    w.writePlugin("sun", std::shared_ptr<BaseLight>(std::make_shared<FakeLight>(5)), L"/SunLight1");
    w.writePlugin("omni", std::shared_ptr<BaseLight>(std::make_shared<FakeLight>(2)), L"/l");
    w.writePlugin("none", std::shared_ptr<BaseTexture>(), L"/y");
    EXPECT_EQ(out, lines({
                       {0,
                        L"<parameter type=\"plugin\" name=\"tex\" handler=\"default\" "
                        L"listType=\"none\" label=\"tex\">"},
                       {2, L"<value>/W&amp;d/tex/TexBitmap</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"plugin\" name=\"mtl\" handler=\"default\" "
                        L"listType=\"none\" label=\"mtl\">"},
                       {2, L"<value>/x/A&B</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"plugin\" name=\"sun\" handler=\"default\" "
                        L"listType=\"none\" label=\"sun\">"},
                       {2, L"<value>/SunLight1</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"plugin\" name=\"omni\" handler=\"default\" "
                        L"listType=\"none\" label=\"omni\">"},
                       {2, L"<value>/l/LightOmni</value>"},
                       {0, L"</parameter>"},
                       {0,
                        L"<parameter type=\"plugin\" name=\"none\" handler=\"default\" "
                        L"listType=\"none\" label=\"none\">"},
                       {0, L"</parameter>"},
                   }));
}

TEST(AssetXmlWriter, ReferenceToNoFamilyThrowsTwentyBeforeWriting) {
    std::wstring out;
    AssetXmlWriter w(out);
    try {
        w.writePlugin("x", PluginRef(), L"/u");
        FAIL() << "expected the integer 20";
    } catch (int code) {
        EXPECT_EQ(code, 20);
    }
    EXPECT_TRUE(out.empty());
}

TEST(AssetXmlWriter, ListsRootAndEscapedAssetUrl) {
    std::wstring out;
    AssetXmlWriter w(out);
    w.openRoot(L"cormat");
    w.beginAsset(L"/a&amp;b<", L"material", L"lay");
    w.beginList("channels", "");
    w.writeStringEntry(L"Diffuse");
    w.endList();
    w.beginList("materials", "plugin");
    w.writeEntry(L"/m&n");
    w.endList();
    w.endAsset();
    w.closeRoot();
    EXPECT_EQ(
        out,
        lines({
            {0, L"<cormat>"},
            {2,
             L"<Asset layout=\"lay\" renderer=\"ombra\" type=\"material\" url=\"/a&amp;b&lt;\" >"},
            {2,
             L"<parameter type=\"list\" name=\"channels\" handler=\"default\" listType=\"\" "
             L"label=\"channels\">"},
            {4, L"<value>"},
            {4, L"<list>"},
            {6, L"<string>\"Diffuse\"</string>"},
            {4, L"</list>"},
            {4, L"</value>"},
            {2, L"</parameter>"},
            {2,
             L"<parameter type=\"list\" name=\"materials\" handler=\"default\" listType=\"plugin\" "
             L"label=\"materials\">"},
            {4, L"<value>"},
            {4, L"<list>"},
            {6, L"<entry>/m&amp;n</entry>"},
            {4, L"</list>"},
            {4, L"</value>"},
            {2, L"</parameter>"},
            {2, L"</Asset>"},
            {0, L"</cormat>"},
        }));
}

TEST(AssetXmlWriter, NarrowNamesAreDecodedAsUtf8) {
    std::wstring out;
    AssetXmlWriter w(out);
    w.writeInteger(
        "gr\xC3\xB6\xC3\x9F"
        "e",
        -3);
    EXPECT_NE(out.find(L"name=\"gr\u00f6\u00dfe\""), std::wstring::npos);
    EXPECT_NE(out.find(L"<value>-3</value>"), std::wstring::npos);
}
