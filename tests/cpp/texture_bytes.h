// Test helpers for the texture family: records assembled byte by byte in field-table order, and
// expected asset text assembled line by line in the asset format's fixed layout.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "archive/quick_archive.h"
#include "record_builder.h"
#include "xml/asset_xml_writer.h"

namespace texture_test {

using Bytes = ::RecordBuilder;

// Reading a record that holds only a version `word` must fail, for each of `words`.
template <class T>
void expectRefusesWords(std::initializer_list<uint32_t> words) {
    for (uint32_t word : words) {
        Bytes bad;
        bad.u32(word);
        EXPECT_FALSE(deserializeFrom(T(), bad)) << "word " << word;
    }
}

// The document of one object written under `url` inside an "Assets" element.
template <class T>
std::wstring assetsOf(T& object, const std::wstring& url) {
    std::wstring text;
    ::AssetXmlWriter writer(text);
    writer.openAssets();
    object.writeXML(writer, url);
    writer.closeAssets();
    return text;
}

// Expected asset text. Depths follow an asset inside "Assets": the asset at 4 blanks, its
// parameters at 12, their values at 14 and inner lines at 16. An asset written on its own, without
// "Assets" around it, stands `shift` = -2 blanks further left.
class Xml {
public:
    explicit Xml(int shift = 0) : shift_(shift) {}
    Xml& line(int blanks, const std::wstring& text) {
        out += std::wstring(size_t(blanks + shift_), L' ') + text + L"\n";
        return *this;
    }
    Xml& assetOpen(const std::wstring& url, const std::wstring& kind, const std::wstring& type) {
        line(4, L"<Asset layout=\"\" renderer=\"ombra\" type=\"" + kind + L"\" url=\"" + url +
                    L"\" >");
        line(6, L"<plugin>");
        line(8, L"<ombraplugin name=\"" + type + L"\" type=\"" + kind + L"\">");
        return line(10, L"<parameters>");
    }
    Xml& assetClose() {
        line(10, L"</parameters>");
        line(8, L"</ombraplugin>");
        line(6, L"</plugin>");
        return line(4, L"</Asset>");
    }
    Xml& paramOpen(const std::wstring& type, const std::wstring& name,
                   const std::wstring& handler = L"default") {
        return line(12, L"<parameter type=\"" + type + L"\" name=\"" + name + L"\" handler=\"" +
                            handler + L"\" listType=\"none\" label=\"" + name + L"\">");
    }
    Xml& paramClose() { return line(12, L"</parameter>"); }
    Xml& inlineParam(const std::wstring& type, const std::wstring& name, const std::wstring& value,
                     const std::wstring& handler = L"default") {
        paramOpen(type, name, handler);
        line(14, L"<value>" + value + L"</value>");
        return paramClose();
    }
    Xml& real(const std::wstring& name, const std::wstring& value) {
        return inlineParam(L"float", name, value);
    }
    Xml& integer(const std::wstring& name, const std::wstring& value) {
        return inlineParam(L"integer", name, value);
    }
    Xml& flag(const std::wstring& name, const std::wstring& value) {
        return inlineParam(L"bool", name, value);
    }
    Xml& emptyPlugin(const std::wstring& name) { return paramOpen(L"plugin", name).paramClose(); }
    Xml& scalars(const std::wstring& type, const std::wstring& name,
                 const std::vector<std::pair<const wchar_t*, const wchar_t*>>& tags) {
        paramOpen(type, name).line(14, L"<value>");
        for (const auto& tag : tags)
            line(16, std::wstring(L"<") + tag.first + L">" + tag.second + L"</" + tag.first + L">");
        return line(14, L"</value>").paramClose();
    }
    // A placement's twelve lines: rotations, scales, offsets, then mirrors, x to z each.
    Xml& components(const std::wstring& type, const std::wstring& name,
                    const std::vector<const wchar_t*>& twelve) {
        static const wchar_t* const kTags[] = {
            L"x_rotation", L"y_rotation", L"z_rotation", L"x_scale",  L"y_scale",  L"z_scale",
            L"x_offset",   L"y_offset",   L"z_offset",   L"x_mirror", L"y_mirror", L"z_mirror"};
        std::vector<std::pair<const wchar_t*, const wchar_t*>> tags;
        for (size_t i = 0; i < 12; ++i) tags.emplace_back(kTags[i], twelve.at(i));
        return scalars(type, name, tags);
    }
    Xml& color(const std::wstring& name, const wchar_t* r, const wchar_t* g, const wchar_t* b) {
        return scalars(L"color", name, {{L"r", r}, {L"g", g}, {L"b", b}});
    }
    Xml& vectorParam(const std::wstring& name, const wchar_t* x, const wchar_t* y,
                     const wchar_t* z) {
        paramOpen(L"vector", name).line(14, L"<value>").vector(16, x, y, z);
        return line(14, L"</value>").paramClose();
    }
    // Twelve numbers: three columns, then the offset.
    Xml& transform(const std::wstring& name, const std::vector<const wchar_t*>& twelve) {
        paramOpen(L"transform", name).line(14, L"<value>");
        for (size_t i = 0; i < 12; i += 3)
            vector(16, twelve.at(i), twelve.at(i + 1), twelve.at(i + 2));
        return line(14, L"</value>").paramClose();
    }
    Xml& vector(int blanks, const wchar_t* x, const wchar_t* y, const wchar_t* z) {
        line(blanks, L"<vector>");
        line(blanks + 2, std::wstring(L"<x>") + x + L"</x>");
        line(blanks + 2, std::wstring(L"<y>") + y + L"</y>");
        line(blanks + 2, std::wstring(L"<z>") + z + L"</z>");
        return line(blanks, L"</vector>");
    }

    // The expected document: these assets inside "Assets".
    std::wstring document() const { return L"  <Assets>\n" + out + L"  </Assets>\n"; }

    std::wstring out;

private:
    int shift_;
};

// The identity placement as the writer prints it.
inline const std::vector<const wchar_t*> kIdentityText = {L"1", L"0", L"0", L"0", L"1", L"0",
                                                          L"0", L"0", L"1", L"0", L"0", L"0"};

}  // namespace texture_test
