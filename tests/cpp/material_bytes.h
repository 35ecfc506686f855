// Test helpers for the material family: records assembled in field-table order (the Brick
// material among them) and the expected text of folded material blocks.
#pragma once

#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "convert/conversions.h"
#include "materials/scene_materials.h"
#include "record_builder.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

namespace material_test {

// Each material test starts and ends with an empty scene material set.
class MaterialSetTest : public ::testing::Test {
protected:
    void SetUp() override { clear(); }
    void TearDown() override { clear(); }
    static void clear() { CorvaneCore::sceneMaterials()->clear(); }
};

// The base section of version 2: name and uuid.
inline RecordBuilder& section(RecordBuilder& r, const std::string& name,
                              const std::string& uuid = "") {
    return r.version(2).text(name).text(uuid);
}

// A BRDF child: id 2 and a version 4 Diffuse_BRDF with default values and the given name.
inline RecordBuilder& diffuseLayer(RecordBuilder& r, const std::string& name) {
    r.i32(2).version(4).color(0.5f, 0.5f, 0.5f).color(0, 0, 0).f32(1).f32(1).absent().absent();
    return r.brdfSection(name).boolean(false);
}

// The stream of a BitmapTexture (version 1) with a default channel generator and a buffer
// holding `path`; no present flag and no type id in front.
inline RecordBuilder& bitmapTexture(RecordBuilder& r, const std::string& path) {
    r.version(1).i32(4).i32(0);
    r.version(2).identityTransform().identityTransform().ints({0, 0, 1});
    r.defaultComponents().defaultComponents();
    return r.version(1).i32(1).f32(0.15f).f32(1.0f).text(path).boolean(true);
}

// The Brick record: a layered material holding one diffuse layer whose colour texture is a
// bitmap with a channel generator and a buffer.
inline RecordBuilder brickRecord() {
    RecordBuilder r;
    r.version(4).u32(1);
    r.i32(2).version(4).color(0.5f, 0.5f, 0.5f).color(0, 0, 0).f32(1).f32(1);
    bitmapTexture(r.boolean(true).i32(0), "C:/maps/brick&mortar.png");
    r.absent().brdfSection("BRDFDiffuse").boolean(false);
    r.i32(1).i32(0).i32(1).i32(1);
    r.version(2).text("Brick").text("6f1c2d3e-0000-4000-8000-00000000b41c");
    r.i32(0);
    return r;
}

// A version 4 layered material with one default diffuse layer, without its type id.
inline RecordBuilder& plainLayered(RecordBuilder& r, const std::string& name,
                                   const std::string& layer, const std::string& uuid = "") {
    diffuseLayer(r.version(4).u32(1), layer).i32(1).i32(0).i32(1).i32(1);
    return r.version(2).text(name).text(uuid).i32(0);
}

// Present material and texture slots: a layered material (id 1) with one default diffuse layer,
// a bitmap texture (id 0), and an id no material class has.
inline RecordBuilder& layeredSlot(RecordBuilder& r, const std::string& name,
                                  const std::string& layer = "Layer") {
    return plainLayered(r.boolean(true).i32(1), name, layer);
}
inline RecordBuilder& bitmapSlot(RecordBuilder& r, const std::string& path) {
    return bitmapTexture(r.boolean(true).i32(0), path);
}
inline RecordBuilder& unknownSlot(RecordBuilder& r) { return r.boolean(true).i32(15); }

// ---------------------------------------------------------------- expected text

inline std::string parameter(const char* type, const std::string& name) {
    return std::string("            <parameter type=\"") + type + "\" name=\"" + name +
           "\" handler=\"default\" listType=\"none\" label=\"" + name + "\">\n";
}

inline std::string plain(const char* type, const std::string& name, const std::string& value) {
    return parameter(type, name) + "              <value>" + value + "</value>\n" +
           "            </parameter>\n";
}

// A parameter with no value, such as an empty plugin slot.
inline std::string empty(const char* type, const std::string& name) {
    return parameter(type, name) + "            </parameter>\n";
}

inline std::string open(const char* type, const char* name) {
    return parameter(type, name) + "              <value>\n";
}

const char* const kClose = "              </value>\n            </parameter>\n";

inline std::string line(const char* tag, const char* value) {
    return std::string("                <") + tag + ">" + value + "</" + tag + ">\n";
}

inline std::string vectorLines(const char* x, const char* y, const char* z) {
    return std::string("                <vector>\n") + "  " + line("x", x) + "  " + line("y", y) +
           "  " + line("z", z) + "                </vector>\n";
}

inline std::string color(const char* name, const char* r, const char* g, const char* b) {
    return open("color", name) + line("r", r) + line("g", g) + line("b", b) + kClose;
}

inline std::string assetHead(const char* type, const std::string& url, const char* plugin,
                             const char* layout = "") {
    return std::string("    <Asset layout=\"") + layout + "\" renderer=\"ombra\" type=\"" + type +
           "\" url=\"" + url + "\" >\n      <plugin>\n        <ombraplugin name=\"" + plugin +
           "\" type=\"" + type + "\">\n          <parameters>\n";
}

const char* const kAssetTail =
    "          </parameters>\n        </ombraplugin>\n      </plugin>\n    </Asset>\n";

// The three blocks of a bitmap texture written under `url` (which ends in "/TexBitmap"):
// its channel generator, its buffer holding `fileText` (as escaped), and itself.
inline std::string bitmapBlocks(const std::string& url, const std::string& fileText) {
    std::string s = assetHead("uvw", url + "/uvwgen/UVWGenChannel", "UVWGenChannel");
    s += open("componentTransform", "uvw_transform");
    s += line("x_rotation", "0") + line("y_rotation", "0") + line("z_rotation", "0");
    s += line("x_scale", "1") + line("y_scale", "1") + line("z_scale", "1");
    s += line("x_offset", "0") + line("y_offset", "0") + line("z_offset", "0");
    s += line("x_mirror", "0") + line("y_mirror", "0") + line("z_mirror", "0") + kClose;
    s += open("transform", "tex_transform") + vectorLines("1", "0", "0") +
         vectorLines("0", "1", "0") + vectorLines("0", "0", "1") + vectorLines("0", "0", "0") +
         kClose;
    s += plain("integer", "wrap_u", "0") + plain("integer", "wrap_v", "0") +
         plain("integer", "uvw_channel", "1") + kAssetTail;

    s += assetHead("bitmap", url + "/buffer/BitmapBuffer", "BitmapBuffer");
    s += plain("integer", "filter_type", "1") + plain("float", "filter_blur", "0.15") +
         plain("float", "gamma", "1");
    s += std::string("            <parameter type=\"string\" name=\"file\" ") +
         "handler=\"FileBrowserHandler\" listType=\"none\" label=\"file\">\n" +
         "              <value>" + fileText + "</value>\n            </parameter>\n";
    s += kAssetTail;

    s += assetHead("texture", url, "TexBitmap");
    s += plain("plugin", "uvwgen", url + "/uvwgen/UVWGenChannel");
    s += plain("plugin", "bitmap", url + "/buffer/BitmapBuffer");
    s += plain("bool", "tile", "1") + kAssetTail;
    return s;
}

// A default diffuse layer's block at `url`; `colorTex` is the url of its colour texture or
// empty.
inline std::string diffuseBlock(const std::string& url, const std::string& colorTex = "") {
    std::string s = assetHead("BRDF", url, "BRDFDiffuse");
    s += color("color", "0.5", "0.5", "0.5") + color("transparency", "0", "0", "0");
    s += plain("float", "color_tex_mult", "1") + plain("float", "transparency_tex_mult", "1");
    s += colorTex.empty() ? empty("plugin", "color_tex") : plain("plugin", "color_tex", colorTex);
    s += empty("plugin", "transparency_tex");
    return s + plain("bool", "use_color_tex_alpha_as_transparency", "0") + kAssetTail;
}

// The Brick layer with its texture, below the root url `root` ("/Brick" unless a wrapper
// gives its own name).
inline std::string brickLayerBlocks(const std::string& root) {
    const std::string tex = root + "/BRDFDiffuse/color_texture/TexBitmap";
    return bitmapBlocks(tex, "C:/maps/brick&amp;mortar.png") +
           diffuseBlock(root + "/BRDFDiffuse", tex);
}

// The head of a folded block up to and with the layer list; the wrappers' parameters follow.
inline std::string foldedHead(const std::string& root, const std::vector<std::string>& layers) {
    std::string s = assetHead("material", root, "MtlCORVANE", "defommat");
    s += plain("integer", "double_sided", "1");
    s += std::string("            <parameter type=\"list\" name=\"brdfs\" handler=\"default\" ") +
         "listType=\"plugin\" label=\"brdfs\">\n              <value>\n              <list>\n";
    for (const std::string& layer : layers) {
        s += "                <entry>" + root + "/" + layer + "</entry>\n";
    }
    return s + "              </list>\n" + kClose;
}

inline std::string document(const std::string& blocks) {
    return "  <Assets>\n" + blocks + "  </Assets>\n";
}

// The document of the Brick record on its own.
inline std::string expectedBrickDocument() {
    return document(brickLayerBlocks("/Brick") + foldedHead("/Brick", {"BRDFDiffuse"}) +
                    kAssetTail);
}

using Names = std::vector<std::string>;

// The asset urls of a piece of XML in order, and the parameter names of its last asset.
struct Outline {
    Names urls;
    Names parameters;
};

inline Outline outline(const std::u16string& xml) {
    const std::string text = CorvaneCore::wideToUtf8(xml);
    static const std::regex item(R"(url="([^"]*)\"|name="([^"]*)\" handler)");
    Outline out;
    for (std::sregex_iterator it(text.begin(), text.end(), item), end; it != end; ++it) {
        if ((*it)[1].matched) {
            out.urls.push_back((*it)[1].str());
            out.parameters.clear();
        } else {
            out.parameters.push_back((*it)[2].str());
        }
    }
    return out;
}

inline Outline outline(const std::string& utf8) { return outline(CorvaneCore::utf8ToWide(utf8)); }

// The words of `text`, split at spaces: a compact way to write a long list of names.
inline Names words(const std::string& text) {
    std::istringstream in(text);
    return Names(std::istream_iterator<std::string>(in), std::istream_iterator<std::string>());
}

// The XML a material or layer writes of itself under `url`.
template <class T>
std::u16string xmlOf(T& object, const std::u16string& url = u"") {
    std::string text;
    AssetXmlWriter writer(text);
    object.writeXML(writer, url);
    return CorvaneCore::utf8ToWide(writer.stream());  // the writer's UTF-8, compared as model text
}

// Reads the whole record into a new object; the read must succeed.
template <class T>
T readAs(const RecordBuilder& record) {
    T object;
    EXPECT_TRUE(readAll(object, record));
    return object;
}

// The document of a material record of type `type`; the conversion must succeed and read the
// whole record.
inline std::string convert(const RecordBuilder& record, int32_t type) {
    CorvaneCore::QuickArchive archive = record.archive();
    const auto xml = CorvaneCore::convertMaterial(archive, type);
    EXPECT_TRUE(xml) << "type " << type;
    EXPECT_EQ(archive.readPos(), record.size());
    return xml.value_or("");
}

// The bytes of a bundled JSON sample: an array of numbers 0 to 255.
inline std::vector<uint8_t> sampleBytes(const std::string& file) {
    std::ifstream in(std::string(QUILLON_SAMPLES_DIR) + "/" + file);
    EXPECT_TRUE(in) << file;
    const std::string json((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::vector<uint8_t> bytes;
    int value = -1;
    for (char c : json) {
        if (c >= '0' && c <= '9') {
            value = (value < 0 ? 0 : value * 10) + (c - '0');
        } else if (value >= 0) {
            bytes.push_back(static_cast<uint8_t>(value));
            value = -1;
        }
    }
    return bytes;
}

}  // namespace material_test
