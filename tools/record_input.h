// Reading a record for the command-line tool: raw bytes, or the JSON array of integers in
// which the host keeps a record. Inputs are bounded in size before anything is read.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quillon_cli {

enum class InputForm { Auto, Raw, Json };

// Larger inputs are refused: a stored record is a few hundred kilobytes, its JSON form about
// four times that.
constexpr uint64_t kInputSizeLimit = 64ull << 20;

// The whole file, or standard input for "-". Nothing, with `error` set, for a missing or
// unreadable file, a directory or another non-regular file, or more than the size limit.
std::optional<std::string> readInputFile(const std::string& path, std::string& error);

// The bytes of a JSON array of integers 0 to 2^64 - 1, each cut to its low 8 bits as the Ruby
// module does. Anything else (another JSON value, a
// byte order mark, a fraction, a number out of range) gives nothing and a message in `error`.
std::optional<std::string> parseJsonByteArray(const std::string& text, std::string& error);

// Whether the content is text meant as JSON rather than a binary record. A binary record
// starts with its version word, whose low byte is 0 or 1, never a blank or a JSON token.
bool looksLikeJson(const std::string& content);

// Raw bytes, or the bytes of a JSON array when the form says so or (Auto) the content looks
// like JSON.
std::optional<std::string> decodeRecord(const std::string& content, InputForm form,
                                        std::string& error);

}  // namespace quillon_cli
