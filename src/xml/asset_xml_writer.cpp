#include "xml/asset_xml_writer.h"

#include "lights/base_light.h"
#include "materials/base_material.h"
#include "options/base_camera.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"
#include "xml/number_format.h"
#include "xml/text.h"

using namespace CorvaneCore;

void AssetXmlWriter::indent() {
    for (int32_t i = 0; i < depth_; ++i) stream_.append(L"  ");
}

void AssetXmlWriter::putFloat(float value) { appendNumber(stream_, static_cast<double>(value)); }

void AssetXmlWriter::putInt(int64_t value) { appendNumber(stream_, value); }

// ---------------------------------------------------------------- structure

void AssetXmlWriter::openRoot(const std::wstring& tag) {
    put(L"<"), put(tag), put(L">\n");
    rootTag_ = tag;
}

void AssetXmlWriter::closeRoot() { put(L"</"), put(rootTag_), put(L">\n"); }

void AssetXmlWriter::openElement(const std::wstring& name) {
    ++depth_;
    indent(), put(L"<"), put(name), put(L">\n");
}

void AssetXmlWriter::closeElement(const std::wstring& name) {
    indent(), put(L"</"), put(name), put(L">\n");
    --depth_;
}

void AssetXmlWriter::beginAsset(const std::wstring& url, const std::wstring& kind,
                                const std::wstring& layout) {
    ++depth_;
    indent();
    put(L"<Asset layout=\""), put(layout), put(L"\" renderer=\"ombra\" type=\""), put(kind);
    put(L"\" url=\""), put(escapeXml(url)), put(L"\" >\n");
}

void AssetXmlWriter::endAsset() {
    indent(), put(L"</Asset>\n");
    --depth_;
}

void AssetXmlWriter::beginPlugin(const std::wstring& name, const std::wstring& kind) {
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

void AssetXmlWriter::beginParameter(const std::wstring& name, const std::wstring& type,
                                    const std::wstring& label, const std::wstring& listType,
                                    bool isUserData, const std::wstring& handler) {
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

void AssetXmlWriter::beginValueParameter(const std::wstring& name, const wchar_t* type,
                                         const std::wstring& label, bool isUserData,
                                         const wchar_t* handler) {
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

void AssetXmlWriter::scalarLine(const wchar_t* tag, float value) {
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

void AssetXmlWriter::writeFloat(const std::wstring& name, float value, const std::wstring& label,
                                bool isUserData) {
    beginValueParameter(name, L"float", label, isUserData);
    inlineValueOpen(), putFloat(value), inlineValueClose();
}

void AssetXmlWriter::writeInteger(const std::wstring& name, int32_t value,
                                  const std::wstring& label, bool isUserData) {
    beginValueParameter(name, L"integer", label, isUserData);
    inlineValueOpen(), putInt(value), inlineValueClose();
}

void AssetXmlWriter::writeBool(const std::wstring& name, bool value, const std::wstring& label,
                               bool isUserData) {
    beginValueParameter(name, L"bool", label, isUserData);
    inlineValueOpen(), put(value ? L"1" : L"0"), inlineValueClose();
}

void AssetXmlWriter::writeString(const std::wstring& name, const std::wstring& value,
                                 const std::wstring& label, bool isUserData) {
    beginValueParameter(name, L"string", label, isUserData);
    inlineValueOpen(), put(value), inlineValueClose();
}

void AssetXmlWriter::writeFile(const std::wstring& name, const std::wstring& value,
                               const std::wstring& label, bool isUserData) {
    beginValueParameter(name, L"string", label, isUserData, L"FileBrowserHandler");
    inlineValueOpen(), put(escapeXml(value)), inlineValueClose();
}

void AssetXmlWriter::writeVector(const std::wstring& name, const Vector& value,
                                 const std::wstring& label) {
    beginValueParameter(name, L"vector", label);
    blockOpen();
    vectorElement(value);
    blockClose();
}

void AssetXmlWriter::writeColor(const std::wstring& name, const Color& value,
                                const std::wstring& label) {
    beginValueParameter(name, L"color", label);
    blockOpen();
    scalarLine(L"r", value.r);
    scalarLine(L"g", value.g);
    scalarLine(L"b", value.b);
    blockClose();
}

void AssetXmlWriter::writeAColor(const std::wstring& name, const AColor& value,
                                 const std::wstring& label) {
    beginValueParameter(name, L"acolor", label);
    blockOpen();
    scalarLine(L"r", value.r);
    scalarLine(L"g", value.g);
    scalarLine(L"b", value.b);
    scalarLine(L"a", value.a);
    blockClose();
}

void AssetXmlWriter::writeMatrix(const std::wstring& name, const Matrix& value,
                                 const std::wstring& label) {
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

void AssetXmlWriter::writeTransform(const std::wstring& name, const Transform& value,
                                    const std::wstring& label) {
    beginValueParameter(name, L"transform", label);
    blockOpen();
    for (const Vector& column : value.m.v) vectorElement(column);
    vectorElement(value.offset);
    blockClose();
}

void AssetXmlWriter::writeComponentMatrix(const std::wstring& name, const ComponentValues& value,
                                          const std::wstring& label) {
    beginValueParameter(name, L"componentMatrix", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

void AssetXmlWriter::writeComponentTransform(const std::wstring& name,
                                             const ComponentValues& value,
                                             const std::wstring& label) {
    beginValueParameter(name, L"componentTransform", label);
    blockOpen();
    componentLines(value);
    blockClose();
}

namespace {

// The URL text of a plugin reference, or false for an empty pointer.
struct PluginUrl {
    const std::wstring& prefix;
    std::wstring& url;

    bool operator()(const std::monostate&) const { throw kNoPluginFamily; }
    bool operator()(const std::shared_ptr<BaseMaterial>& m) const {
        if (!m) return false;
        url = escapeXml(prefix) + L"/" + m->name;
        return true;
    }
    bool operator()(const std::shared_ptr<BaseLight>& light) const {
        if (!light) return false;
        // A sun's caller passes the whole URL.
        url = light->getType() == kSunLightType ? escapeXml(prefix)
                                                : escapeXml(prefix) + L"/" + light->pluginType();
        return true;
    }
    template <class Family>
    bool operator()(const std::shared_ptr<Family>& child) const {
        if (!child) return false;
        url = escapeXml(prefix) + L"/" + child->pluginType();
        return true;
    }
};

}  // namespace

void AssetXmlWriter::writePlugin(const std::wstring& name, const PluginRef& child,
                                 const std::wstring& urlPrefix, const std::wstring& label) {
    std::wstring url;
    const bool present = std::visit(PluginUrl{urlPrefix, url}, child);
    beginValueParameter(name, L"plugin", label);
    if (present) inlineValueOpen(), put(url), put(L"</value>\n");
    endParameter();
}

void AssetXmlWriter::beginList(const std::wstring& name, const std::wstring& listType,
                               const std::wstring& label) {
    beginParameter(name, L"list", label, listType, false, L"default");
    indent(), put(L"<value>\n");
    indent(), put(L"<list>\n");
    ++depth_;
}

void AssetXmlWriter::writeEntry(const std::wstring& text) {
    indent(), put(L"<entry>"), put(escapeXml(text)), put(L"</entry>\n");
}

void AssetXmlWriter::writeStringEntry(const std::wstring& text) {
    indent(), put(L"<string>\""), put(text), put(L"\"</string>\n");
}

void AssetXmlWriter::endList() {
    --depth_;
    indent(), put(L"</list>\n");
    indent(), put(L"</value>\n");
    endParameter();
}

// ---------------------------------------------------------------- narrow overloads

void AssetXmlWriter::writeFloat(const char* name, float value, const char* label,
                                bool isUserData) {
    writeFloat(utf8ToWide(name), value, utf8ToWide(label), isUserData);
}
void AssetXmlWriter::writeInteger(const char* name, int32_t value, const char* label,
                                  bool isUserData) {
    writeInteger(utf8ToWide(name), value, utf8ToWide(label), isUserData);
}
void AssetXmlWriter::writeBool(const char* name, bool value, const char* label, bool isUserData) {
    writeBool(utf8ToWide(name), value, utf8ToWide(label), isUserData);
}
void AssetXmlWriter::writeString(const char* name, const std::string& value, const char* label,
                                 bool isUserData) {
    writeString(utf8ToWide(name), utf8ToWide(value), utf8ToWide(label), isUserData);
}
void AssetXmlWriter::writeFile(const char* name, const std::string& value, const char* label,
                               bool isUserData) {
    writeFile(utf8ToWide(name), utf8ToWide(value), utf8ToWide(label), isUserData);
}
void AssetXmlWriter::writeVector(const char* name, const Vector& value, const char* label) {
    writeVector(utf8ToWide(name), value, utf8ToWide(label));
}
void AssetXmlWriter::writeColor(const char* name, const Color& value, const char* label) {
    writeColor(utf8ToWide(name), value, utf8ToWide(label));
}
void AssetXmlWriter::writeAColor(const char* name, const AColor& value, const char* label) {
    writeAColor(utf8ToWide(name), value, utf8ToWide(label));
}
void AssetXmlWriter::writeMatrix(const char* name, const Matrix& value, const char* label) {
    writeMatrix(utf8ToWide(name), value, utf8ToWide(label));
}
void AssetXmlWriter::writeTransform(const char* name, const Transform& value, const char* label) {
    writeTransform(utf8ToWide(name), value, utf8ToWide(label));
}
void AssetXmlWriter::writeComponentMatrix(const char* name, const ComponentValues& value,
                                          const char* label) {
    writeComponentMatrix(utf8ToWide(name), value, utf8ToWide(label));
}
void AssetXmlWriter::writeComponentTransform(const char* name, const ComponentValues& value,
                                             const char* label) {
    writeComponentTransform(utf8ToWide(name), value, utf8ToWide(label));
}
void AssetXmlWriter::writePlugin(const char* name, const PluginRef& child,
                                 const std::wstring& urlPrefix, const char* label) {
    writePlugin(utf8ToWide(name), child, urlPrefix, utf8ToWide(label));
}
void AssetXmlWriter::beginList(const char* name, const char* listType, const char* label) {
    beginList(utf8ToWide(name), utf8ToWide(listType), utf8ToWide(label));
}
