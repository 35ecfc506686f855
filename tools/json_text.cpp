#include "json_text.h"

namespace quillon_cli {

std::string jsonString(const std::string& text) {
    static const char kHex[] = "0123456789abcdef";
    std::string out = "\"";
    for (char c : text) {
        const unsigned char u = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (u < 0x20) {
            out += "\\u00";
            out += kHex[u >> 4];
            out += kHex[u & 15];
        } else {
            out += c;
        }
    }
    return out + "\"";
}

}  // namespace quillon_cli
