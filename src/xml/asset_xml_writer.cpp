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

void XmlText::appendTo(std::wstring& out) const {
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
    for (size_t i = 0; i < size_; ++i) out[start + i] = static_cast<wchar_t>(narrow_[i]);
}

void XmlText::appendEscapedTo(std::wstring& out) const {
    const size_t start = out.size();
    appendTo(out);
    // Text without "&", "<" or ">" is its own escaped form, which is the usual case.
    if (out.find_first_of(L"&<>", start) == std::wstring::npos) return;
    const std::wstring escaped = escapeXml(out.substr(start));
    out.resize(start);
    out.append(escaped);
}

std::wstring XmlText::str() const {
    std::wstring out;
    appendTo(out);
    return out;
}

}  // namespace CorvaneCore

void AssetXmlWriter::indent() {
    if (depth_ > 0) stream_.append(static_cast<size_t>(depth_) * 2, L' ');
}

void AssetXmlWriter::putFloat(float value) { appendNumber(stream_, static_cast<double>(value)); }

void AssetXmlWriter::putInt(int64_t value) { appendNumber(stream_, value); }

// ---------------------------------------------------------------- structure

void AssetXmlWriter::openRoot(Text tag) {
    put(L"<"), put(tag), put(L">\n");
    rootTag_ = tag.str();
}

void AssetXmlWriter::closeRoot() { put(L"</"), put(rootTag_), put(L">\n"); }

void AssetXmlWriter::openElement(Text name) {
    ++depth_;
    indent(), put(L"<"), put(name), put(L">\n");
}

void AssetXmlWriter::closeElement(Text name) {
    indent(), put(L"</"), put(name), put(L">\n");
    --depth_;
}

void AssetXmlWriter::beginAsset(Text url, Text kind, Text layout) {
    ++depth_;
    indent();
    put(L"<Asset layout=\""), put(layout), put(L"\" renderer=\"ombra\" type=\""), put(kind);
    put(L"\" url=\""), url.appendEscapedTo(stream_), put(L"\" >\n");
}

void AssetXmlWriter::endAsset() {
    indent(), put(L"</Asset>\n");
    --depth_;
}

void AssetXmlWriter::beginPlugin(Text name, Text kind) {
    ++depth_;
    indent(), put(L"<plugin>\n");
    ++depth_;
    indent(), put(L"<ombraplugin name=\""), put(name), put(L"\" type=\""), put(kind), put(L"\">\n");
}

void AssetXmlWriter::endPlugin() {
    indent(), put(L"</ombraplugin>\n");
    --depth_;
    indent(), put(L"</plugin>\n");
    --depth_;
}

void AssetXmlWriter::beginParameters() {
    ++depth_;
    indent(), put(L"<parameters>\n");
    ++depth_;
}

void AssetXmlWriter::endParameters() {
    --depth_;
    indent(), put(L"</parameters>\n");
    --depth_;
}

void AssetXmlWriter::beginParameter(Text name, Text type, Text label, Text listType,
                                    bool isUserData, Text handler) {
    indent();
    put(L"<parameter type=\""), put(type), put(L"\" name=\""), put(name);
    put(L"\" handler=\""), put(handler), put(L"\" listType=\""), put(listType), put(L"\"");
    if (isUserData) put(L" isUserData=\"1\"");
    put(L" label=\""), put(label.empty() ? name : label), put(L"\">\n");
    ++depth_;
}

void AssetXmlWriter::endParameter() {
    --depth_;
    indent(), put(L"</parameter>\n");
}

// ---------------------------------------------------------------- value forms

void AssetXmlWriter::beginValueParameter(Text name, Text type, Text label, bool isUserData,
                                         Text handler) {
    beginParameter(name, type, label, L"none", isUserData, handler);
}

void AssetXmlWriter::blockOpen() {
    indent(), put(L"<value>\n");
    ++depth_;
}

void AssetXmlWriter::blockClose() {
    --depth_;
    indent(), put(L"</value>\n");
    endParameter();
}

void AssetXmlWriter::scalarLine(Text tag, float value) {
    indent(), put(L"<"), put(tag), put(L">"), putFloat(value), put(L"</"), put(tag), put(L">\n");
}

void AssetXmlWriter::vectorElement(const Vector& v) {
    indent(), put(L"<vector>\n");
    ++depth_;
    scalarLine(L"x", v.x);
    scalarLine(L"y", v.y);
    scalarLine(L"z", v.z);
    --depth_;
    indent(), put(L"</vector>\n");
}

void AssetXmlWriter::componentLines(const ComponentValues& value) {
    static const wchar_t* const kFloatTags[9] = {L"x_rotation", L"y_rotation", L"z_rotation",
                                                 L"x_scale",    L"y_scale",    L"z_scale",
                                                 L"x_offset",   L"y_offset",   L"z_offset"};
    static const wchar_t* const kMirrorTags[3] = {L"x_mirror", L"y_mirror", L"z_mirror"};
    const float* groups[3] = {value.rotation, value.scale, value.offset};
    for (int i = 0; i < 9; ++i) scalarLine(kFloatTags[i], groups[i / 3][i % 3]);
    for (int i = 0; i < 3; ++i) {
        indent(), put(L"<"), put(kMirrorTags[i]), put(L">"), putInt(value.mirror[i]);
        put(L"</"), put(kMirrorTags[i]), put(L">\n");
    }
}

void AssetXmlWriter::writeFloat(Text name, float value, Text label, bool isUserData) {
    beginValueParameter(name, L"float", label, isUserData);
    inlineValueOpen(), putFloat(value), inlineValueClose();
}

void AssetXmlWriter::writeInteger(Text name, int32_t value, Text label, bool isUserData) {
    beginValueParameter(name, L"integer", label, isUserData);
    inlineValueOpen(), putInt(value), inlineValueClose();
}

void AssetXmlWriter::writeBool(Text name, bool value, Text label, bool isUserData) {
    beginValueParameter(name, L"bool", label, isUserData);
    inlineValueOpen();
    if (value) {
        put(L"1");
    } else {
        put(L"0");
    }
    inlineValueClose();
}

void AssetXmlWriter::writeString(Text name, Text value, Text label, bool isUserData) {
    beginValueParameter(name, L"string", label, isUserData);
    inlineValueOpen(), put(value), inlineValueClose();
}

void AssetXmlWriter::writeFile(Text name, Text value, Text label, bool isUserData) {
    beginValueParameter(name, L"string", label, isUserData, L"FileBrowserHandler");
    inlineValueOpen(), value.appendEscapedTo(stream_), inlineValueClose();
}

void AssetXmlWriter::writeVector(Text name, const Vector& value, Text label) {
    beginValueParameter(name, L"vector", label);
    blockOpen();
    vectorElement(value);
    blockClose();
}

void AssetXmlWriter::writeColor(Text name, const Color& value, Text label) {
    beginValueParameter(name, L"color", label);
    blockOpen();
    scalarLine(L"r", value.r);
    scalarLine(L"g", value.g);
    scalarLine(L"b", value.b);
    blockClose();
}

void AssetXmlWriter::writeAColor(Text name, const AColor& value, Text label) {
    beginValueParameter(name, L"acolor", label);
    blockOpen();
    scalarLine(L"r", value.r);
    scalarLine(L"g", value.g);
    scalarLine(L"b", value.b);
    scalarLine(L"a", value.a);
    blockClose();
}

void AssetXmlWriter::writeMatrix(Text name, const Matrix& value, Text label) {
    beginValueParameter(name, L"matrix", label);
    blockOpen();
    put(L"\n");  // the format keeps an empty line before the matrix element
    indent(), put(L"<matrix>\n");
    ++depth_;
    for (const Vector& column : value.v) vectorElement(column);
    --depth_;
    indent(), put(L"</matrix>\n");
    blockClose();
}

void AssetXmlWriter::writeTransform(Text name, const Transform& value, Text label) {
    beginValueParameter(name, L"transform", label);
    blockOpen();
    for (const Vector& column : value.m.v) vectorElement(column);
    vectorElement(value.offset);
    blockClose();
}

void AssetXmlWriter::writeComponentMatrix(Text name, const ComponentValues& value, Text label) {
    beginValueParameter(name, L"componentMatrix", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

void AssetXmlWriter::writeComponentTransform(Text name, const ComponentValues& value, Text label) {
    beginValueParameter(name, L"componentTransform", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

namespace {

// Appends the URL text of a plugin reference; false for an empty pointer.
struct PluginUrl {
    const XmlText& prefix;
    std::wstring& out;

    bool operator()(const std::monostate&) const { throw kNoPluginFamily; }
    bool operator()(const std::shared_ptr<BaseMaterial>& m) const {
        if (!m) return false;
        prefix.appendEscapedTo(out);
        out.append(L"/").append(m->name);  // a material's name is not escaped
        return true;
    }
    bool operator()(const std::shared_ptr<BaseLight>& light) const {
        if (!light) return false;
        prefix.appendEscapedTo(out);
        // A sun's caller passes the whole URL.
        if (light->getType() != kSunLightType) out.append(L"/").append(light->pluginType());
        return true;
    }
    template <class Family>
    bool operator()(const std::shared_ptr<Family>& child) const {
        if (!child) return false;
        prefix.appendEscapedTo(out);
        out.append(L"/").append(child->pluginType());
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
    beginValueParameter(name, L"plugin", label);
    if (present) {
        inlineValueOpen();
        std::visit(PluginUrl{urlPrefix, stream_}, child);
        put(L"</value>\n");
    }
    endParameter();
}

void AssetXmlWriter::beginList(Text name, Text listType, Text label) {
    beginParameter(name, L"list", label, listType, false, L"default");
    indent(), put(L"<value>\n");
    indent(), put(L"<list>\n");
    ++depth_;
}

void AssetXmlWriter::writeEntry(Text text) {
    indent(), put(L"<entry>"), text.appendEscapedTo(stream_), put(L"</entry>\n");
}

void AssetXmlWriter::writeStringEntry(Text text) {
    indent(), put(L"<string>\""), put(text), put(L"\"</string>\n");
}

void AssetXmlWriter::endList() {
    --depth_;
    indent(), put(L"</list>\n");
    indent(), put(L"</value>\n");
    endParameter();
}
