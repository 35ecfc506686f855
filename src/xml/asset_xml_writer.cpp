#include "xml/asset_xml_writer.h"

#include <cstring>

#include "lights/base_light.h"
#include "materials/base_material.h"
#include "options/base_camera.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"
#include "xml/number_format.h"
#include "xml/text.h"

using namespace CorvaneCore;

// ---------------------------------------------------------------- text pieces

namespace CorvaneCore {

namespace {

// True when every byte is below 0x80, tested eight bytes at a time.
bool isAscii(const char* text, size_t size) {
    constexpr uint64_t kHighBits = 0x8080808080808080ull;
    size_t i = 0;
    for (; size - i >= 8; i += 8) {
        uint64_t word;
        std::memcpy(&word, text + i, 8);
        if (word & kHighBits) return false;
    }
    for (; i < size; ++i) {
        if (static_cast<unsigned char>(text[i]) >= 0x80) return false;
    }
    return true;
}

}  // namespace

void XmlText::appendTo(std::string& out) const {
    if (wide_) {
        appendUtf8(out, wide_, size_);
        return;
    }
    // Constant names are ASCII and go as they are; other text takes the decoding road, so
    // bytes that are not UTF-8 read as they would in a stored record.
    if (isAscii(narrow_, size_)) {
        out.append(narrow_, size_);
        return;
    }
    const std::u16string decoded = utf8ToWide(narrow_, size_);
    appendUtf8(out, decoded.data(), decoded.size());
}

void XmlText::appendEscapedTo(std::string& out) const {
    const size_t start = out.size();
    appendTo(out);
    escapeXmlFrom(out, start);
}

std::string XmlText::str() const {
    std::string out;
    appendTo(out);
    return out;
}

}  // namespace CorvaneCore

namespace {
// Indentation is two blanks per level; deeper levels than this are appended in pieces.
constexpr char kBlanks[] = "                                                                ";
constexpr size_t kBlankCount = sizeof kBlanks - 1;
}  // namespace

void AssetXmlWriter::checkBudget() const {
    if (stream_.size() > budget_) throw DocumentTooLarge{};
}

void AssetXmlWriter::indent() {
    checkBudget();
    size_t blanks = depth_ > 0 ? static_cast<size_t>(depth_) * 2 : 0;
    while (blanks > 0) {
        const size_t piece = blanks < kBlankCount ? blanks : kBlankCount;
        stream_.append(kBlanks, piece);
        blanks -= piece;
    }
}

void AssetXmlWriter::putFloat(float value) { appendNumber(stream_, static_cast<double>(value)); }

void AssetXmlWriter::putInt(int64_t value) { appendNumber(stream_, value); }

// ---------------------------------------------------------------- structure

void AssetXmlWriter::openRoot(Text tag) {
    put("<"), put(tag), put(">\n");
    rootTag_ = tag.str();
}

void AssetXmlWriter::closeRoot() { put("</"), put(rootTag_), put(">\n"); }

void AssetXmlWriter::openElement(Text name) {
    ++depth_;
    indent(), put("<"), put(name), put(">\n");
}

void AssetXmlWriter::closeElement(Text name) {
    indent(), put("</"), put(name), put(">\n");
    --depth_;
}

void AssetXmlWriter::beginAsset(Text url, Text kind, Text layout) {
    ++depth_;
    indent();
    put("<Asset layout=\""), put(layout), put("\" renderer=\"ombra\" type=\""), put(kind);
    put("\" url=\""), url.appendEscapedTo(stream_), put("\" >\n");
}

void AssetXmlWriter::endAsset() {
    indent(), put("</Asset>\n");
    --depth_;
}

void AssetXmlWriter::beginPlugin(Text name, Text kind) {
    ++depth_;
    indent(), put("<plugin>\n");
    ++depth_;
    indent(), put("<ombraplugin name=\""), put(name), put("\" type=\""), put(kind), put("\">\n");
}

void AssetXmlWriter::endPlugin() {
    indent(), put("</ombraplugin>\n");
    --depth_;
    indent(), put("</plugin>\n");
    --depth_;
}

void AssetXmlWriter::beginParameters() {
    ++depth_;
    indent(), put("<parameters>\n");
    ++depth_;
}

void AssetXmlWriter::endParameters() {
    --depth_;
    indent(), put("</parameters>\n");
    --depth_;
}

void AssetXmlWriter::beginParameter(Text name, Text type, Text label, Text listType,
                                    bool isUserData, Text handler) {
    indent();
    put("<parameter type=\""), put(type), put("\" name=\""), put(name);
    put("\" handler=\""), put(handler), put("\" listType=\""), put(listType), put("\"");
    if (isUserData) put(" isUserData=\"1\"");
    put(" label=\""), put(label.empty() ? name : label), put("\">\n");
    ++depth_;
}

void AssetXmlWriter::endParameter() {
    --depth_;
    indent(), put("</parameter>\n");
}

// ---------------------------------------------------------------- value forms

void AssetXmlWriter::beginValueParameter(Text name, Text type, Text label, bool isUserData,
                                         Text handler) {
    beginParameter(name, type, label, "none", isUserData, handler);
}

void AssetXmlWriter::blockOpen() {
    indent(), put("<value>\n");
    ++depth_;
}

void AssetXmlWriter::blockClose() {
    --depth_;
    indent(), put("</value>\n");
    endParameter();
}

void AssetXmlWriter::scalarLine(Text tag, float value) {
    indent(), put("<"), put(tag), put(">"), putFloat(value), put("</"), put(tag), put(">\n");
}

void AssetXmlWriter::vectorElement(const Vector& v) {
    indent(), put("<vector>\n");
    ++depth_;
    scalarLine("x", v.x);
    scalarLine("y", v.y);
    scalarLine("z", v.z);
    --depth_;
    indent(), put("</vector>\n");
}

void AssetXmlWriter::componentLines(const ComponentValues& value) {
    static const char* const kFloatTags[9] = {"x_rotation", "y_rotation", "z_rotation",
                                              "x_scale",    "y_scale",    "z_scale",
                                              "x_offset",   "y_offset",   "z_offset"};
    static const char* const kMirrorTags[3] = {"x_mirror", "y_mirror", "z_mirror"};
    const float* groups[3] = {value.rotation, value.scale, value.offset};
    for (int i = 0; i < 9; ++i) scalarLine(kFloatTags[i], groups[i / 3][i % 3]);
    for (int i = 0; i < 3; ++i) {
        indent(), put("<"), put(kMirrorTags[i]), put(">"), putInt(value.mirror[i]);
        put("</"), put(kMirrorTags[i]), put(">\n");
    }
}

void AssetXmlWriter::writeFloat(Text name, float value, Text label, bool isUserData) {
    beginValueParameter(name, "float", label, isUserData);
    inlineValueOpen(), putFloat(value), inlineValueClose();
}

void AssetXmlWriter::writeInteger(Text name, int32_t value, Text label, bool isUserData) {
    beginValueParameter(name, "integer", label, isUserData);
    inlineValueOpen(), putInt(value), inlineValueClose();
}

void AssetXmlWriter::writeBool(Text name, bool value, Text label, bool isUserData) {
    beginValueParameter(name, "bool", label, isUserData);
    inlineValueOpen();
    if (value) {
        put("1");
    } else {
        put("0");
    }
    inlineValueClose();
}

void AssetXmlWriter::writeString(Text name, Text value, Text label, bool isUserData) {
    beginValueParameter(name, "string", label, isUserData);
    inlineValueOpen(), put(value), inlineValueClose();
}

void AssetXmlWriter::writeFile(Text name, Text value, Text label, bool isUserData) {
    beginValueParameter(name, "string", label, isUserData, "FileBrowserHandler");
    inlineValueOpen(), value.appendEscapedTo(stream_), inlineValueClose();
}

void AssetXmlWriter::writeVector(Text name, const Vector& value, Text label) {
    beginValueParameter(name, "vector", label);
    blockOpen();
    vectorElement(value);
    blockClose();
}

void AssetXmlWriter::writeColor(Text name, const Color& value, Text label) {
    beginValueParameter(name, "color", label);
    blockOpen();
    scalarLine("r", value.r);
    scalarLine("g", value.g);
    scalarLine("b", value.b);
    blockClose();
}

void AssetXmlWriter::writeAColor(Text name, const AColor& value, Text label) {
    beginValueParameter(name, "acolor", label);
    blockOpen();
    scalarLine("r", value.r);
    scalarLine("g", value.g);
    scalarLine("b", value.b);
    scalarLine("a", value.a);
    blockClose();
}

void AssetXmlWriter::writeMatrix(Text name, const Matrix& value, Text label) {
    beginValueParameter(name, "matrix", label);
    blockOpen();
    put("\n");  // the format keeps an empty line before the matrix element
    indent(), put("<matrix>\n");
    ++depth_;
    for (const Vector& column : value.v) vectorElement(column);
    --depth_;
    indent(), put("</matrix>\n");
    blockClose();
}

void AssetXmlWriter::writeTransform(Text name, const Transform& value, Text label) {
    beginValueParameter(name, "transform", label);
    blockOpen();
    for (const Vector& column : value.m.v) vectorElement(column);
    vectorElement(value.offset);
    blockClose();
}

void AssetXmlWriter::writeComponentMatrix(Text name, const ComponentValues& value, Text label) {
    beginValueParameter(name, "componentMatrix", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

void AssetXmlWriter::writeComponentTransform(Text name, const ComponentValues& value, Text label) {
    beginValueParameter(name, "componentTransform", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

namespace {

// Appends the URL text of a plugin reference; false for an empty pointer.
struct PluginUrl {
    const XmlText& prefix;
    std::string& out;

    bool operator()(const std::monostate&) const { throw kNoPluginFamily; }
    bool operator()(const std::shared_ptr<BaseMaterial>& m) const {
        if (!m) return false;
        prefix.appendEscapedTo(out);
        out.push_back('/');
        XmlText(m->name).appendTo(out);  // a material's name is not escaped
        return true;
    }
    bool operator()(const std::shared_ptr<BaseLight>& light) const {
        if (!light) return false;
        prefix.appendEscapedTo(out);
        // A sun's caller passes the whole URL.
        if (light->getType() != kSunLightType) appendSegment(light->pluginType());
        return true;
    }
    template <class Family>
    bool operator()(const std::shared_ptr<Family>& child) const {
        if (!child) return false;
        prefix.appendEscapedTo(out);
        appendSegment(child->pluginType());
        return true;
    }
    void appendSegment(const std::u16string& segment) const {
        out.push_back('/');
        XmlText(segment).appendTo(out);
    }
};

bool isPresent(const PluginRef& child) {
    if (std::holds_alternative<std::monostate>(child)) throw kNoPluginFamily;
    return std::visit(
        [](const auto& p) -> bool {
            if constexpr (std::is_same_v<std::decay_t<decltype(p)>, std::monostate>) {
                return false;
            } else {
                return p != nullptr;
            }
        },
        child);
}

}  // namespace

void AssetXmlWriter::writePlugin(Text name, const PluginRef& child, Text urlPrefix, Text label) {
    const bool present = isPresent(child);  // the dispatch comes before any text
    beginValueParameter(name, "plugin", label);
    if (present) {
        inlineValueOpen();
        std::visit(PluginUrl{urlPrefix, stream_}, child);
        put("</value>\n");
    }
    endParameter();
}

void AssetXmlWriter::beginList(Text name, Text listType, Text label) {
    beginParameter(name, "list", label, listType, false, "default");
    indent(), put("<value>\n");
    indent(), put("<list>\n");
    ++depth_;
}

void AssetXmlWriter::writeEntry(Text text) {
    indent(), put("<entry>"), text.appendEscapedTo(stream_), put("</entry>\n");
}

void AssetXmlWriter::writeStringEntry(Text text) {
    indent(), put("<string>\""), put(text), put("\"</string>\n");
}

void AssetXmlWriter::endList() {
    --depth_;
    indent(), put("</list>\n");
    indent(), put("</value>\n");
    endParameter();
}
