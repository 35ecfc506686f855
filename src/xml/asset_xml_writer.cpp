#include "xml/asset_xml_writer.h"

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

void XmlText::appendTo(std::u16string& out) const {
    if (wide_) {
        out.append(wide_, size_);
        return;
    }
    // Constant names are ASCII: widen them in place; anything else is decoded as UTF-8.
    for (size_t i = 0; i < size_; ++i) {
        if (static_cast<unsigned char>(narrow_[i]) >= 0x80) {
            out.append(utf8ToWide(narrow_, size_));
            return;
        }
    }
    const size_t start = out.size();
    out.resize(start + size_);
    for (size_t i = 0; i < size_; ++i) out[start + i] = static_cast<char16_t>(narrow_[i]);
}

void XmlText::appendEscapedTo(std::u16string& out) const {
    const size_t start = out.size();
    appendTo(out);
    // Text without "&", "<" or ">" is its own escaped form, which is the usual case.
    if (out.find_first_of(u"&<>", start) == std::u16string::npos) return;
    const std::u16string escaped = escapeXml(out.substr(start));
    out.resize(start);
    out.append(escaped);
}

std::u16string XmlText::str() const {
    std::u16string out;
    appendTo(out);
    return out;
}

}  // namespace CorvaneCore

void AssetXmlWriter::indent() {
    if (depth_ > 0) stream_.append(static_cast<size_t>(depth_) * 2, u' ');
}

void AssetXmlWriter::putFloat(float value) { appendNumber(stream_, static_cast<double>(value)); }

void AssetXmlWriter::putInt(int64_t value) { appendNumber(stream_, value); }

// ---------------------------------------------------------------- structure

void AssetXmlWriter::openRoot(Text tag) {
    put(u"<"), put(tag), put(u">\n");
    rootTag_ = tag.str();
}

void AssetXmlWriter::closeRoot() { put(u"</"), put(rootTag_), put(u">\n"); }

void AssetXmlWriter::openElement(Text name) {
    ++depth_;
    indent(), put(u"<"), put(name), put(u">\n");
}

void AssetXmlWriter::closeElement(Text name) {
    indent(), put(u"</"), put(name), put(u">\n");
    --depth_;
}

void AssetXmlWriter::beginAsset(Text url, Text kind, Text layout) {
    ++depth_;
    indent();
    put(u"<Asset layout=\""), put(layout), put(u"\" renderer=\"ombra\" type=\""), put(kind);
    put(u"\" url=\""), url.appendEscapedTo(stream_), put(u"\" >\n");
}

void AssetXmlWriter::endAsset() {
    indent(), put(u"</Asset>\n");
    --depth_;
}

void AssetXmlWriter::beginPlugin(Text name, Text kind) {
    ++depth_;
    indent(), put(u"<plugin>\n");
    ++depth_;
    indent(), put(u"<ombraplugin name=\""), put(name), put(u"\" type=\""), put(kind), put(u"\">\n");
}

void AssetXmlWriter::endPlugin() {
    indent(), put(u"</ombraplugin>\n");
    --depth_;
    indent(), put(u"</plugin>\n");
    --depth_;
}

void AssetXmlWriter::beginParameters() {
    ++depth_;
    indent(), put(u"<parameters>\n");
    ++depth_;
}

void AssetXmlWriter::endParameters() {
    --depth_;
    indent(), put(u"</parameters>\n");
    --depth_;
}

void AssetXmlWriter::beginParameter(Text name, Text type, Text label, Text listType,
                                    bool isUserData, Text handler) {
    indent();
    put(u"<parameter type=\""), put(type), put(u"\" name=\""), put(name);
    put(u"\" handler=\""), put(handler), put(u"\" listType=\""), put(listType), put(u"\"");
    if (isUserData) put(u" isUserData=\"1\"");
    put(u" label=\""), put(label.empty() ? name : label), put(u"\">\n");
    ++depth_;
}

void AssetXmlWriter::endParameter() {
    --depth_;
    indent(), put(u"</parameter>\n");
}

// ---------------------------------------------------------------- value forms

void AssetXmlWriter::beginValueParameter(Text name, Text type, Text label, bool isUserData,
                                         Text handler) {
    beginParameter(name, type, label, u"none", isUserData, handler);
}

void AssetXmlWriter::blockOpen() {
    indent(), put(u"<value>\n");
    ++depth_;
}

void AssetXmlWriter::blockClose() {
    --depth_;
    indent(), put(u"</value>\n");
    endParameter();
}

void AssetXmlWriter::scalarLine(Text tag, float value) {
    indent(), put(u"<"), put(tag), put(u">"), putFloat(value), put(u"</"), put(tag), put(u">\n");
}

void AssetXmlWriter::vectorElement(const Vector& v) {
    indent(), put(u"<vector>\n");
    ++depth_;
    scalarLine(u"x", v.x);
    scalarLine(u"y", v.y);
    scalarLine(u"z", v.z);
    --depth_;
    indent(), put(u"</vector>\n");
}

void AssetXmlWriter::componentLines(const ComponentValues& value) {
    static const char16_t* const kFloatTags[9] = {u"x_rotation", u"y_rotation", u"z_rotation",
                                                  u"x_scale",    u"y_scale",    u"z_scale",
                                                  u"x_offset",   u"y_offset",   u"z_offset"};
    static const char16_t* const kMirrorTags[3] = {u"x_mirror", u"y_mirror", u"z_mirror"};
    const float* groups[3] = {value.rotation, value.scale, value.offset};
    for (int i = 0; i < 9; ++i) scalarLine(kFloatTags[i], groups[i / 3][i % 3]);
    for (int i = 0; i < 3; ++i) {
        indent(), put(u"<"), put(kMirrorTags[i]), put(u">"), putInt(value.mirror[i]);
        put(u"</"), put(kMirrorTags[i]), put(u">\n");
    }
}

void AssetXmlWriter::writeFloat(Text name, float value, Text label, bool isUserData) {
    beginValueParameter(name, u"float", label, isUserData);
    inlineValueOpen(), putFloat(value), inlineValueClose();
}

void AssetXmlWriter::writeInteger(Text name, int32_t value, Text label, bool isUserData) {
    beginValueParameter(name, u"integer", label, isUserData);
    inlineValueOpen(), putInt(value), inlineValueClose();
}

void AssetXmlWriter::writeBool(Text name, bool value, Text label, bool isUserData) {
    beginValueParameter(name, u"bool", label, isUserData);
    inlineValueOpen();
    if (value) {
        put(u"1");
    } else {
        put(u"0");
    }
    inlineValueClose();
}

void AssetXmlWriter::writeString(Text name, Text value, Text label, bool isUserData) {
    beginValueParameter(name, u"string", label, isUserData);
    inlineValueOpen(), put(value), inlineValueClose();
}

void AssetXmlWriter::writeFile(Text name, Text value, Text label, bool isUserData) {
    beginValueParameter(name, u"string", label, isUserData, u"FileBrowserHandler");
    inlineValueOpen(), value.appendEscapedTo(stream_), inlineValueClose();
}

void AssetXmlWriter::writeVector(Text name, const Vector& value, Text label) {
    beginValueParameter(name, u"vector", label);
    blockOpen();
    vectorElement(value);
    blockClose();
}

void AssetXmlWriter::writeColor(Text name, const Color& value, Text label) {
    beginValueParameter(name, u"color", label);
    blockOpen();
    scalarLine(u"r", value.r);
    scalarLine(u"g", value.g);
    scalarLine(u"b", value.b);
    blockClose();
}

void AssetXmlWriter::writeAColor(Text name, const AColor& value, Text label) {
    beginValueParameter(name, u"acolor", label);
    blockOpen();
    scalarLine(u"r", value.r);
    scalarLine(u"g", value.g);
    scalarLine(u"b", value.b);
    scalarLine(u"a", value.a);
    blockClose();
}

void AssetXmlWriter::writeMatrix(Text name, const Matrix& value, Text label) {
    beginValueParameter(name, u"matrix", label);
    blockOpen();
    put(u"\n");  // the format keeps an empty line before the matrix element
    indent(), put(u"<matrix>\n");
    ++depth_;
    for (const Vector& column : value.v) vectorElement(column);
    --depth_;
    indent(), put(u"</matrix>\n");
    blockClose();
}

void AssetXmlWriter::writeTransform(Text name, const Transform& value, Text label) {
    beginValueParameter(name, u"transform", label);
    blockOpen();
    for (const Vector& column : value.m.v) vectorElement(column);
    vectorElement(value.offset);
    blockClose();
}

void AssetXmlWriter::writeComponentMatrix(Text name, const ComponentValues& value, Text label) {
    beginValueParameter(name, u"componentMatrix", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

void AssetXmlWriter::writeComponentTransform(Text name, const ComponentValues& value, Text label) {
    beginValueParameter(name, u"componentTransform", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

namespace {

// Appends the URL text of a plugin reference; false for an empty pointer.
struct PluginUrl {
    const XmlText& prefix;
    std::u16string& out;

    bool operator()(const std::monostate&) const { throw kNoPluginFamily; }
    bool operator()(const std::shared_ptr<BaseMaterial>& m) const {
        if (!m) return false;
        prefix.appendEscapedTo(out);
        out.append(u"/").append(m->name);  // a material's name is not escaped
        return true;
    }
    bool operator()(const std::shared_ptr<BaseLight>& light) const {
        if (!light) return false;
        prefix.appendEscapedTo(out);
        // A sun's caller passes the whole URL.
        if (light->getType() != kSunLightType) out.append(u"/").append(light->pluginType());
        return true;
    }
    template <class Family>
    bool operator()(const std::shared_ptr<Family>& child) const {
        if (!child) return false;
        prefix.appendEscapedTo(out);
        out.append(u"/").append(child->pluginType());
        return true;
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
    beginValueParameter(name, u"plugin", label);
    if (present) {
        inlineValueOpen();
        std::visit(PluginUrl{urlPrefix, stream_}, child);
        put(u"</value>\n");
    }
    endParameter();
}

void AssetXmlWriter::beginList(Text name, Text listType, Text label) {
    beginParameter(name, u"list", label, listType, false, u"default");
    indent(), put(u"<value>\n");
    indent(), put(u"<list>\n");
    ++depth_;
}

void AssetXmlWriter::writeEntry(Text text) {
    indent(), put(u"<entry>"), text.appendEscapedTo(stream_), put(u"</entry>\n");
}

void AssetXmlWriter::writeStringEntry(Text text) {
    indent(), put(u"<string>\""), put(text), put(u"\"</string>\n");
}

void AssetXmlWriter::endList() {
    --depth_;
    indent(), put(u"</list>\n");
    indent(), put(u"</value>\n");
    endParameter();
}
