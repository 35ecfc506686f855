// AssetXmlWriter: the one path by which XML leaves the system. It appends fixed text as UTF-8
// bytes to one growing string and keeps the indentation depth; scene classes choose which
// operations to call. A document that passes its byte budget is abandoned with a throw.
//
// While it writes, the string is the writer's buffer: its tail past the text is room still
// unused. The string holds exactly the text once stream() is called or the writer is gone.
#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "archive/limits.h"
#include "archive/value_types.h"
#include "xml/plugin_ref.h"

namespace CorvaneCore {

// Thrown by writePlugin for a reference that holds none of the six families.
constexpr int kNoPluginFamily = 20;

// Thrown by the writer once its text passes the budget; the conversion that owns the text
// catches it and gives no document.
struct DocumentTooLarge {};

// The twelve numbers of a decomposed placement, in output order.
struct ComponentValues {
    float rotation[3] = {0, 0, 0};
    float scale[3] = {1, 1, 1};
    float offset[3] = {0, 0, 0};
    int32_t mirror[3] = {0, 0, 0};
};

// A piece of text handed to the writer: UTF-16 model text, or UTF-8 for the program's constant
// names. It only points at the caller's characters, so passing one costs no allocation.
class XmlText {
public:
    XmlText() = default;
    XmlText(const char* utf8) : narrow_(utf8 ? utf8 : ""), size_(std::strlen(narrow_)) {}
    XmlText(const std::string& utf8) : narrow_(utf8.c_str()), size_(utf8.size()) {}
    XmlText(const char16_t* wide)
        : wide_(wide ? wide : u""), size_(std::char_traits<char16_t>::length(wide_)) {}
    XmlText(const std::u16string& wide) : wide_(wide.c_str()), size_(wide.size()) {}

    bool empty() const { return size_ == 0; }
    size_t size() const { return size_; }
    const char* narrow() const { return narrow_; }  // null for wide text
    const char16_t* wide() const { return wide_; }  // null for narrow text
    // As UTF-8: the same bytes as wideToUtf8(utf8ToWide(...)) of narrow text would give.
    std::string str() const;

private:
    const char* narrow_ = nullptr;
    const char16_t* wide_ = nullptr;
    size_t size_ = 0;
};

}  // namespace CorvaneCore

class AssetXmlWriter {
public:
    using Color = CorvaneCore::Color;
    using AColor = CorvaneCore::AColor;
    using Vector = CorvaneCore::Vector;
    using Matrix = CorvaneCore::Matrix;
    using Transform = CorvaneCore::Transform;
    using Text = CorvaneCore::XmlText;

    // `budget` is the most bytes the document may reach; passing it throws DocumentTooLarge.
    explicit AssetXmlWriter(std::string& stream, size_t budget = CorvaneCore::kMaxDocumentBytes)
        : stream_(stream), budget_(budget), used_(stream.size()) {}
    // Writes from the start of `buffer`, taking all it holds as room, and leaves it uncut:
    // the text is then the first text().second bytes. For a buffer reused from call to call.
    struct ReuseBuffer {};
    AssetXmlWriter(std::string& buffer, ReuseBuffer, size_t budget = CorvaneCore::kMaxDocumentBytes)
        : stream_(buffer), budget_(budget), used_(0), settled_(false), keepRoom_(true) {}
    ~AssetXmlWriter() {
        if (!keepRoom_) settle();
    }
    // The text so far, without cutting the string.
    std::pair<const char*, size_t> text() const {
        return {stream_.data(), settled_ ? stream_.size() : used_};
    }
    AssetXmlWriter(const AssetXmlWriter&) = delete;
    AssetXmlWriter& operator=(const AssetXmlWriter&) = delete;

    // The text so far; writing may go on after it.
    std::string& stream() {
        settle();
        return stream_;
    }
    int32_t depth() const { return depth_; }
    int32_t targetHost = 0;  // 0: the modelling host every conversion targets
    std::map<std::u16string, std::u16string> sunUrls;  // sun id to the URL it was written under

    // Structure.
    void openRoot(Text tag);
    void closeRoot();
    void openElement(Text name);
    void closeElement(Text name);
    void openAssets() { openElement("Assets"); }
    void closeAssets() { closeElement("Assets"); }
    void beginAsset(Text url, Text kind, Text layout);
    void endAsset();
    void beginPlugin(Text name, Text kind);
    void endPlugin();
    void beginParameters();
    void endParameters();
    void beginParameter(Text name, Text type, Text label, Text listType, bool isUserData,
                        Text handler);
    void endParameter();

    // Values; an empty label means the name is used as label. Names and labels may be wide
    // or UTF-8 text.
    void writeFloat(Text name, float value, Text label = {}, bool isUserData = false);
    void writeInteger(Text name, int32_t value, Text label = {}, bool isUserData = false);
    void writeBool(Text name, bool value, Text label = {}, bool isUserData = false);
    void writeString(Text name, Text value, Text label = {}, bool isUserData = false);
    void writeFile(Text name, Text value, Text label = {}, bool isUserData = false);
    void writeVector(Text name, const Vector& value, Text label = {});
    void writeColor(Text name, const Color& value, Text label = {});
    void writeAColor(Text name, const AColor& value, Text label = {});
    void writeMatrix(Text name, const Matrix& value, Text label = {});
    void writeTransform(Text name, const Transform& value, Text label = {});
    void writeComponentMatrix(Text name, const CorvaneCore::ComponentValues& value,
                              Text label = {});
    void writeComponentTransform(Text name, const CorvaneCore::ComponentValues& value,
                                 Text label = {});
    // Throws the integer kNoPluginFamily when `child` holds no family at all.
    void writePlugin(Text name, const CorvaneCore::PluginRef& child, Text urlPrefix,
                     Text label = {});
    void beginList(Text name, Text listType, Text label = {});
    void writeEntry(Text text);
    void writeStringEntry(Text text);
    void endList();

private:
    // Every line starts here, so this is where the budget is checked.
    void indent();
    // Room for `n` more bytes at the end of the text; advance() then marks what was written.
    char* room(size_t n) {
        if (settled_ || stream_.size() - used_ < n) grow(n);
        return &stream_[used_];
    }
    void advance(const char* end) { used_ = static_cast<size_t>(end - stream_.data()); }
    void grow(size_t n);
    // Cuts the string to the text, so that it can be read or appended to from outside.
    void settle();
    void putBytes(const char* bytes, size_t n) {
        char* at = room(n);
        // Not memcpy by name: Ruby's headers, which the extension includes before this one,
        // redefine that name as a macro.
        std::char_traits<char>::copy(at, bytes, n);
        advance(at + n);
    }
    // Literals are appended with their known length, without measuring them.
    template <size_t N>
    void put(const char (&literal)[N]) {
        putBytes(literal, N - 1);
    }
    void put(Text text);
    // Appends with "&", "<" and ">" escaped as escapeXml does.
    void putEscaped(Text text);
    void putUrlSegment(const std::u16string& segment);
    void putFloat(float value);
    void putInt(int64_t value);
    void beginValueParameter(Text name, Text type, Text label, bool isUserData = false,
                             Text handler = "default");
    void inlineValueOpen() { indent(), put("<value>"); }
    void inlineValueClose() { put("</value>\n"), endParameter(); }
    void blockOpen();
    void blockClose();
    void scalarLine(Text tag, float value);
    void vectorElement(const Vector& v);
    void componentLines(const CorvaneCore::ComponentValues& value);

    std::string& stream_;
    size_t budget_;
    size_t used_;            // bytes of text at the start of stream_
    bool settled_ = true;    // stream_ holds exactly the text
    bool keepRoom_ = false;  // the string is a reused buffer, never cut
    int32_t depth_ = 0;
    std::string rootTag_;
};
