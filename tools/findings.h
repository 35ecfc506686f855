// What a person migrating records should know about one: where the read stopped against the
// record's length, and text in it that makes the produced document ill-formed XML.
#pragma once

#include <string>
#include <vector>

#include "record_conversion.h"

namespace quillon_cli {

// Bytes read past the record's end (read as zeros), and bytes after the last one read.
std::vector<std::string> byteFindings(const Conversion& conversion);

// Whether the XML parser is built in; without it only the byte findings are made.
bool xmlCheckBuiltIn();

// Where `document` stops being well-formed, as "line N: message: the line's text". Documents
// with several top-level elements (a light's) are checked as the content of one element.
std::vector<std::string> xmlFindings(const std::string& document);

// Every finding of a converted record; the XML ones only when the parser is built in.
std::vector<std::string> allFindings(const Conversion& conversion);

}  // namespace quillon_cli
