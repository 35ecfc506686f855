// Reading a record for the command-line tool: raw bytes, or the JSON array of integers in
// which the host keeps a record.
#pragma once

#include <optional>
#include <string>

namespace quillon_cli {

enum class InputForm { Auto, Raw, Json };

// Whole file, or standard input for "-". Nothing when the file cannot be read.
std::optional<std::string> readInputFile(const std::string& path);

// Each JSON integer keeps its low 8 bits, as the module does with a Ruby array. Sets `error`
// and gives nothing when the text is no array of integers.
std::optional<std::string> parseJsonByteArray(const std::string& text, std::string& error);

// Raw bytes, or the bytes of a JSON array when the form says so or (Auto) the text starts
// with "[" after blanks.
std::optional<std::string> decodeRecord(const std::string& content, InputForm form,
                                        std::string& error);

}  // namespace quillon_cli
