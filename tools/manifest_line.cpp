#include "manifest_line.h"

#include "record_request.h"

namespace quillon_cli {

namespace {

class LineReader {
public:
    explicit LineReader(const std::string& text) : text_(text) {}

    void skipBlanks() {
        while (i_ < text_.size() && (text_[i_] == ' ' || text_[i_] == '\t' || text_[i_] == '\r'))
            ++i_;
    }
    bool take(char c) {
        skipBlanks();
        if (i_ >= text_.size() || text_[i_] != c) return false;
        ++i_;
        return true;
    }
    bool peek(char c) {
        skipBlanks();
        return i_ < text_.size() && text_[i_] == c;
    }
    bool atEnd() {
        skipBlanks();
        return i_ == text_.size();
    }

    // A JSON string; \u escapes of the basic plane become UTF-8.
    bool string(std::string& out) {
        if (!take('"')) return false;
        while (i_ < text_.size() && text_[i_] != '"') {
            char c = text_[i_++];
            if (static_cast<unsigned char>(c) < 0x20) return false;
            if (c != '\\') {
                out += c;
                continue;
            }
            if (i_ >= text_.size()) return false;
            c = text_[i_++];
            const std::string simple = "\"\\/bfnrt";
            const std::string meaning = "\"\\/\b\f\n\r\t";
            const size_t k = simple.find(c);
            if (k != std::string::npos) {
                out += meaning[k];
            } else if (c != 'u' || !unicodeEscape(out)) {
                return false;
            }
        }
        return take('"');
    }

    // A bare token: a number or a literal, up to the next separator.
    std::string token() {
        skipBlanks();
        const size_t start = i_;
        while (i_ < text_.size() && text_[i_] != ',' && text_[i_] != '}' && text_[i_] != ' ') ++i_;
        return text_.substr(start, i_ - start);
    }

private:
    bool unicodeEscape(std::string& out) {
        if (text_.size() - i_ < 4) return false;
        unsigned code = 0;
        for (int k = 0; k < 4; ++k) {
            const char h = text_[i_++];
            const int v = h >= '0' && h <= '9'   ? h - '0'
                          : h >= 'a' && h <= 'f' ? h - 'a' + 10
                          : h >= 'A' && h <= 'F' ? h - 'A' + 10
                                                 : -1;
            if (v < 0) return false;
            code = code * 16 + static_cast<unsigned>(v);
        }
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
        return true;
    }

    const std::string& text_;
    size_t i_ = 0;
};

bool readValue(LineReader& r, const std::string& key, ManifestLine& out, std::string& error) {
    if (key == "file" || key == "kind") {
        std::string value;
        if (!r.string(value)) {
            error = "\"" + key + "\" needs a string";
            return false;
        }
        (key == "file" ? out.file : out.kind) = value;
        return true;
    }
    if (r.peek('"')) {
        std::string ignored;
        if (key != "type" && r.string(ignored)) return true;
        error = key == "type" ? "\"type\" needs an integer" : "a malformed string";
        return false;
    }
    const std::string token = r.token();
    if (key != "type" || token == "null") return !token.empty();
    out.type = parseTypeId(token);
    if (!out.type) error = "\"type\" needs an integer that fits 32 bits, not " + token;
    return out.type.has_value();
}

}  // namespace

bool parseManifestLine(const std::string& line, ManifestLine& out, std::string& error) {
    LineReader r(line);
    error = "expected {\"file\": ..., \"kind\": ..., \"type\": ...}";
    if (!r.take('{')) return false;
    bool first = true;
    while (!r.take('}')) {
        if (!first && !r.take(',')) return false;
        first = false;
        std::string key;
        if (!r.string(key) || !r.take(':')) return false;
        if (!readValue(r, key, out, error)) return false;
    }
    if (!r.atEnd()) return false;
    if (out.file.empty() || out.kind.empty()) {
        error = "needs \"file\" and \"kind\"";
        return false;
    }
    return true;
}

}  // namespace quillon_cli
