#include "xml/asset_xml_writer.h"

#include <cstring>

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

std::string XmlText::str() const {
    if (wide_) {
        std::string out;
        appendUtf8(out, wide_, size_);
        return out;
    }
    if (isAscii(narrow_, size_)) return std::string(narrow_, size_);
    return wideToUtf8(utf8ToWide(narrow_, size_));  // decoded as a stored record would be
}

}  // namespace CorvaneCore

namespace {
// Text that needs no decoding is appended as it is; anything else is widened first.
bool isAsciiNarrow(const XmlText& text) {
    return text.narrow() && isAscii(text.narrow(), text.size());
}
}  // namespace

void AssetXmlWriter::grow(size_t n) {
    if (settled_) {
        used_ = stream_.size();  // the caller may have appended to the settled text
        settled_ = false;
    }
    if (stream_.size() - used_ >= n) return;
    // Room for at least as much again as there is, so the string is copied O(log n) times,
    // and all the room a reserved string already has.
    const size_t wanted = used_ + n;
    const size_t doubled = stream_.size() * 2 + 256;
    const size_t size = wanted > doubled ? wanted : doubled;
    stream_.resize(size > stream_.capacity() ? size : stream_.capacity());
}

void AssetXmlWriter::settle() {
    if (settled_) return;
    stream_.resize(used_);
    settled_ = true;
}

void AssetXmlWriter::put(Text text) {
    if (text.wide()) {
        char* at = room(3 * text.size());
        advance(writeUtf8(at, text.wide(), text.size()));
    } else if (isAsciiNarrow(text)) {
        putBytes(text.narrow(), text.size());
    } else {
        // Bytes that are not UTF-8 read as they would in a stored record.
        const std::u16string decoded = utf8ToWide(text.narrow(), text.size());
        put(decoded);
    }
}

void AssetXmlWriter::putEscaped(Text text) {
    room(0);  // in step with the string before `used_` is read
    const size_t start = used_;
    put(text);
    const char* p = stream_.data() + start;
    const char* const end = stream_.data() + used_;
    while (p != end && *p != '&' && *p != '<' && *p != '>') ++p;
    // Text without "&", "<" or ">" is its own escaped form, which is the usual case.
    if (p == end) return;
    const std::string escaped = escapeXml(stream_.substr(start, used_ - start));
    used_ = start;
    putBytes(escaped.data(), escaped.size());
}

void AssetXmlWriter::putUrlSegment(const std::u16string& segment) {
    put("/");
    put(segment);
}

// Every line starts with its indentation: two blanks per level.
void AssetXmlWriter::indent() {
    if ((settled_ ? stream_.size() : used_) > budget_) throw DocumentTooLarge{};
    const size_t blanks = depth_ > 0 ? static_cast<size_t>(depth_) * 2 : 0;
    char* at = room(blanks);
    std::memset(at, ' ', blanks);
    advance(at + blanks);
}

void AssetXmlWriter::putFloat(float value) {
    advance(writeNumber(room(kNumberRoom), static_cast<double>(value)));
}

void AssetXmlWriter::putInt(int64_t value) { advance(writeNumber(room(kNumberRoom), value)); }

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
    put("\" url=\""), putEscaped(url), put("\" >\n");
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
    inlineValueOpen(), putEscaped(value), inlineValueClose();
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

void AssetXmlWriter::writePlugin(Text name, const PluginRef& child, Text urlPrefix, Text label) {
    if (!child.hasFamily()) throw kNoPluginFamily;  // before any text
    beginValueParameter(name, "plugin", label);
    if (PluginTarget* target = child.target()) {
        inlineValueOpen();
        putEscaped(urlPrefix);
        std::u16string segment;
        if (target->urlSegment(segment)) putUrlSegment(segment);
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
    indent(), put("<entry>"), putEscaped(text), put("</entry>\n");
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
