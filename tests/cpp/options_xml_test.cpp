// Options documents with stored values: exchanged, inverted and named parameters, and the
// environment's textures ahead of its own asset. The whole default document is compared with
// the bundled expected document elsewhere.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "convert/conversions.h"
#include "options/all_options.h"
#include "options_stream_builder.h"
#include "textures/base_texture.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

using namespace CorvaneCore;
using options_test::valueOf;

namespace {

class StubTexture : public BaseTexture {
public:
    void setDefaults() override {}
    int getType() override { return 0; }
    std::shared_ptr<BaseTexture> clone() override { return std::make_shared<StubTexture>(); }
    bool isEqual(const std::shared_ptr<BaseTexture>&) override { return false; }
    bool serialize(QuickArchive&) override { return true; }
    bool deserialize(QuickArchive&) override { return true; }
    std::u16string pluginType() override { return u"StubTex"; }
    int writeXML(AssetXmlWriter& writer, std::u16string name) override {
        writer.beginAsset(name + u"/" + pluginType(), pluginKind(), u"");
        writer.endAsset();
        return 0;
    }
};

}  // namespace

TEST(OptionsXml, StoredValuesAreExchangedInvertedAndNamed) {
    AllOptions options;
    options.imageFilterType = 1;
    options.view.override_focal_dist = 0;
    options.params.photonMap.auto_search_distance = 0;
    options.channels = {126, 999, 133, 100};
    options.path(OptionPath::ImageFile) = u"C:\\out\\a&b.png";
    std::string doc = optionsDocument(options).value();
    EXPECT_EQ(valueOf(doc, "SettingsImageFilter", "type"), "2");
    EXPECT_EQ(valueOf(doc, "SettingsCameraDof", "override_focal_dist"), "1");
    EXPECT_EQ(valueOf(doc, "SettingsPhotonMap", "search_distance_toggle"), "0");
    EXPECT_EQ(valueOf(doc, "SettingsRenderChannels", "channel_names"),
              "<list><entry>RGB color</entry><entry></entry><entry>SSS2</entry>"
              "<entry>Atmosphere</entry></list>");
    EXPECT_EQ(valueOf(doc, "SettingsOutput", "img_file"), "C:\\out\\a&amp;b.png");
    options.imageFilterType = 2;
    doc = optionsDocument(options).value();
    EXPECT_EQ(valueOf(doc, "SettingsImageFilter", "type"), "1");
}

TEST(OptionsXml, EnvironmentTextureStandsBeforeTheEnvironmentAsset) {
    AllOptions options;
    options.environment.bg_tex = std::make_shared<StubTexture>();
    options.environment.bgTexMult = 3.5f;
    options.environment.bgColorMult = 2.0f;
    options.environment.giColorMult = 0.25f;
    std::string text;
    AssetXmlWriter writer(text);
    writer.openAssets();
    options.writeXML(writer, u"/scene");
    writer.closeAssets();
    const std::string doc = writer.stream();
    const size_t texture = doc.find(
        "      <Asset layout=\"\" renderer=\"ombra\" type=\"texture\" "
        "url=\"/scene/SettingsEnvironment/bg_texture/StubTex\" >\n"
        "      </Asset>\n"
        "      <Asset layout=\"\" renderer=\"ombra\" type=\"settings\" "
        "url=\"/scene/SettingsEnvironment\" >\n");
    ASSERT_NE(texture, std::string::npos);
    // Both stand inside the one inner "Assets" element opened just before the texture.
    EXPECT_EQ(doc.rfind("    <Assets>\n", texture), texture - 13);
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "bg_tex"),
              "/scene/SettingsEnvironment/bg_texture/StubTex");
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "bg_mult"), "3.5");
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "gi_mult"), "0.25");
}
