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
#include "xml/text.h"

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
std::u16string assetsOf(T& object, const std::u16string& url) {
    std::string text;
    ::AssetXmlWriter writer(text);
    writer.openAssets();
    object.writeXML(writer, url);
    writer.closeAssets();
    return CorvaneCore::utf8ToWide(writer.stream());  // the writer's UTF-8, compared as model text
}

// Expected asset text. Depths follow an asset inside "Assets": the asset at 4 blanks, its
// parameters at 12, their values at 14 and inner lines at 16. An asset written on its own, without
// "Assets" around it, stands `shift` = -2 blanks further left.
class Xml {
public:
    explicit Xml(int shift = 0) : shift_(shift) {}
    Xml& line(int blanks, const std::u16string& text) {
        out += std::u16string(size_t(blanks + shift_), u' ') + text + u"\n";
        return *this;
    }
    Xml& assetOpen(const std::u16string& url, const std::u16string& kind,
                   const std::u16string& type) {
        line(4, u"<Asset layout=\"\" renderer=\"ombra\" type=\"" + kind + u"\" url=\"" + url +
                    u"\" >");
        line(6, u"<plugin>");
        line(8, u"<ombraplugin name=\"" + type + u"\" type=\"" + kind + u"\">");
        return line(10, u"<parameters>");
    }
    Xml& assetClose() {
        line(10, u"</parameters>");
        line(8, u"</ombraplugin>");
        line(6, u"</plugin>");
        return line(4, u"</Asset>");
    }
    Xml& paramOpen(const std::u16string& type, const std::u16string& name,
                   const std::u16string& handler = u"default") {
        return line(12, u"<parameter type=\"" + type + u"\" name=\"" + name + u"\" handler=\"" +
                            handler + u"\" listType=\"none\" label=\"" + name + u"\">");
    }
    Xml& paramClose() { return line(12, u"</parameter>"); }
    Xml& inlineParam(const std::u16string& type, const std::u16string& name,
                     const std::u16string& value, const std::u16string& handler = u"default") {
        paramOpen(type, name, handler);
        line(14, u"<value>" + value + u"</value>");
        return paramClose();
    }
    Xml& real(const std::u16string& name, const std::u16string& value) {
        return inlineParam(u"float", name, value);
    }
    Xml& integer(const std::u16string& name, const std::u16string& value) {
        return inlineParam(u"integer", name, value);
    }
    Xml& flag(const std::u16string& name, const std::u16string& value) {
        return inlineParam(u"bool", name, value);
    }
    Xml& emptyPlugin(const std::u16string& name) { return paramOpen(u"plugin", name).paramClose(); }
    Xml& scalars(const std::u16string& type, const std::u16string& name,
                 const std::vector<std::pair<const char16_t*, const char16_t*>>& tags) {
        paramOpen(type, name).line(14, u"<value>");
        for (const auto& tag : tags)
            line(16,
                 std::u16string(u"<") + tag.first + u">" + tag.second + u"</" + tag.first + u">");
        return line(14, u"</value>").paramClose();
    }
    // A placement's twelve lines: rotations, scales, offsets, then mirrors, x to z each.
    Xml& components(const std::u16string& type, const std::u16string& name,
                    const std::vector<const char16_t*>& twelve) {
        static const char16_t* const kTags[] = {
            u"x_rotation", u"y_rotation", u"z_rotation", u"x_scale",  u"y_scale",  u"z_scale",
            u"x_offset",   u"y_offset",   u"z_offset",   u"x_mirror", u"y_mirror", u"z_mirror"};
        std::vector<std::pair<const char16_t*, const char16_t*>> tags;
        for (size_t i = 0; i < 12; ++i) tags.emplace_back(kTags[i], twelve.at(i));
        return scalars(type, name, tags);
    }
    Xml& color(const std::u16string& name, const char16_t* r, const char16_t* g,
               const char16_t* b) {
        return scalars(u"color", name, {{u"r", r}, {u"g", g}, {u"b", b}});
    }
    Xml& vectorParam(const std::u16string& name, const char16_t* x, const char16_t* y,
                     const char16_t* z) {
        paramOpen(u"vector", name).line(14, u"<value>").vector(16, x, y, z);
        return line(14, u"</value>").paramClose();
    }
    // Twelve numbers: three columns, then the offset.
    Xml& transform(const std::u16string& name, const std::vector<const char16_t*>& twelve) {
        paramOpen(u"transform", name).line(14, u"<value>");
        for (size_t i = 0; i < 12; i += 3)
            vector(16, twelve.at(i), twelve.at(i + 1), twelve.at(i + 2));
        return line(14, u"</value>").paramClose();
    }
    Xml& vector(int blanks, const char16_t* x, const char16_t* y, const char16_t* z) {
        line(blanks, u"<vector>");
        line(blanks + 2, std::u16string(u"<x>") + x + u"</x>");
        line(blanks + 2, std::u16string(u"<y>") + y + u"</y>");
        line(blanks + 2, std::u16string(u"<z>") + z + u"</z>");
        return line(blanks, u"</vector>");
    }

    // The expected document: these assets inside "Assets".
    std::u16string document() const { return u"  <Assets>\n" + out + u"  </Assets>\n"; }

    std::u16string out;

private:
    int shift_;
};

// The identity placement as the writer prints it.
inline const std::vector<const char16_t*> kIdentityText = {u"1", u"0", u"0", u"0", u"1", u"0",
                                                           u"0", u"0", u"1", u"0", u"0", u"0"};

}  // namespace texture_test
