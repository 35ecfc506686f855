#include <gtest/gtest.h>

#include <memory>

#include "lights/base_light.h"
#include "materials/base_material.h"
#include "textures/base_texture.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;

class AssetXmlWriterTest : public ::testing::Test {
protected:
    std::string out;
    AssetXmlWriter w{out};
};

TEST_F(AssetXmlWriterTest, OneAssetInsideAssets) {
    w.openAssets();
    w.beginAsset(u"/Wood/TexBitmap/uvwgen/UVWGenChannel", u"uvw", u"");
    w.beginPlugin(u"UVWGenChannel", u"uvw");
    w.beginParameters();
    w.writeInteger("uvw_channel", 1);
    w.endParameters();
    w.endPlugin();
    w.endAsset();
    w.closeAssets();
    EXPECT_EQ(w.stream(),
              R"(  <Assets>
    <Asset layout="" renderer="ombra" type="uvw" url="/Wood/TexBitmap/uvwgen/UVWGenChannel" >
      <plugin>
        <ombraplugin name="UVWGenChannel" type="uvw">
          <parameters>
            <parameter type="integer" name="uvw_channel" handler="default" listType="none" label="uvw_channel">
              <value>1</value>
            </parameter>
          </parameters>
        </ombraplugin>
      </plugin>
    </Asset>
  </Assets>
)");
    EXPECT_EQ(w.depth(), 0);
}

// Floats, flags, labels and user data are inside the light and options documents.
TEST_F(AssetXmlWriterTest, StringsAreWrittenAsGivenAndFileNamesEscaped) {
    w.writeString("s", "a<b");
    w.writeFile("file", "C:\\a&b<c.png");
    EXPECT_EQ(w.stream(),
              R"(<parameter type="string" name="s" handler="default" listType="none" label="s">
  <value>a<b</value>
</parameter>
<parameter type="string" name="file" handler="FileBrowserHandler" listType="none" label="file">
  <value>C:\a&amp;b&lt;c.png</value>
</parameter>
)");
    w.stream().clear();  // narrow names are decoded as UTF-8
    w.writeInteger(
        "gr\xC3\xB6\xC3\x9F"
        "e",
        -3);
    EXPECT_NE(w.stream().find("name=\"gr\xC3\xB6\xC3\x9F"
                              "e\""),
              std::string::npos);
    EXPECT_NE(w.stream().find("<value>-3</value>"), std::string::npos);
}

TEST_F(AssetXmlWriterTest, MatrixHasAnEmptyLineTransformAndAColorHaveNone) {
    Matrix m;
    w.writeMatrix("m", m);
    EXPECT_EQ(w.stream(),
              R"(<parameter type="matrix" name="m" handler="default" listType="none" label="m">
  <value>

    <matrix>
      <vector>
        <x>1</x>
        <y>0</y>
        <z>0</z>
      </vector>
      <vector>
        <x>0</x>
        <y>1</y>
        <z>0</z>
      </vector>
      <vector>
        <x>0</x>
        <y>0</y>
        <z>1</z>
      </vector>
    </matrix>
  </value>
</parameter>
)");

    w.stream().clear();
    Transform t;
    t.offset = Vector(4, 5, 6);
    w.writeTransform("transform", t);
    EXPECT_EQ(
        w.stream(),
        R"(<parameter type="transform" name="transform" handler="default" listType="none" label="transform">
  <value>
    <vector>
      <x>1</x>
      <y>0</y>
      <z>0</z>
    </vector>
    <vector>
      <x>0</x>
      <y>1</y>
      <z>0</z>
    </vector>
    <vector>
      <x>0</x>
      <y>0</y>
      <z>1</z>
    </vector>
    <vector>
      <x>4</x>
      <y>5</y>
      <z>6</z>
    </vector>
  </value>
</parameter>
)");

    w.stream()
        .clear();  // colors, vectors and component transforms: the light and texture documents
    w.writeAColor("a", AColor(0.1f, 0.2f, 0.3f, 1));
    EXPECT_EQ(w.stream(),
              R"(<parameter type="acolor" name="a" handler="default" listType="none" label="a">
  <value>
    <r>0.1</r>
    <g>0.2</g>
    <b>0.3</b>
    <a>1</a>
  </value>
</parameter>
)");
}

TEST_F(AssetXmlWriterTest, PluginReferences) {
    // The factories' own classes: a bitmap texture, a material, a sun (5) and an omni light (2).
    auto material = createMaterial(1);
    material->name = u"A&B";
    w.writePlugin("tex", createTexture(0), u"/W&d/tex");
    w.writePlugin("mtl", material, u"/x");
    w.writePlugin("sun", createLight(5), u"/SunLight1");
    w.writePlugin("omni", createLight(2), u"/l");
    w.writePlugin("none", std::shared_ptr<BaseTexture>(), u"/y");
    EXPECT_EQ(w.stream(),
              R"(<parameter type="plugin" name="tex" handler="default" listType="none" label="tex">
  <value>/W&amp;d/tex/TexBitmap</value>
</parameter>
<parameter type="plugin" name="mtl" handler="default" listType="none" label="mtl">
  <value>/x/A&B</value>
</parameter>
<parameter type="plugin" name="sun" handler="default" listType="none" label="sun">
  <value>/SunLight1</value>
</parameter>
<parameter type="plugin" name="omni" handler="default" listType="none" label="omni">
  <value>/l/LightOmni</value>
</parameter>
<parameter type="plugin" name="none" handler="default" listType="none" label="none">
</parameter>
)");
    const size_t before = w.stream().size();  // a reference to no family throws 20 before writing
    try {
        w.writePlugin("x", PluginRef(), u"/u");
        FAIL() << "expected the integer 20";
    } catch (int code) {
        EXPECT_EQ(code, 20);
    }
    EXPECT_EQ(w.stream().size(), before);
}

TEST_F(AssetXmlWriterTest, ListsRootAndEscapedAssetUrl) {
    w.openRoot(u"cormat");
    w.beginAsset(u"/a&amp;b<", u"material", u"lay");
    w.beginList("channels", "");
    w.writeStringEntry(u"Diffuse");
    w.endList();
    w.beginList("materials", "plugin");
    w.writeEntry(u"/m&n");
    w.endList();
    w.endAsset();
    w.closeRoot();
    EXPECT_EQ(w.stream(),
              R"(<cormat>
  <Asset layout="lay" renderer="ombra" type="material" url="/a&amp;b&lt;" >
  <parameter type="list" name="channels" handler="default" listType="" label="channels">
    <value>
    <list>
      <string>"Diffuse"</string>
    </list>
    </value>
  </parameter>
  <parameter type="list" name="materials" handler="default" listType="plugin" label="materials">
    <value>
    <list>
      <entry>/m&amp;n</entry>
    </list>
    </value>
  </parameter>
  </Asset>
</cormat>
)");
}
