// Messages to the person running the tool: one line each on standard error, named after the
// input or output they are about.
#pragma once

#include <string>

namespace quillon_cli {

// "quillonbin2xml: SUBJECT: TEXT"; an empty subject is left out.
void tell(const std::string& subject, const std::string& text);

// How an input is named in messages: "<stdin>" for "-".
std::string shownName(const std::string& path);

}  // namespace quillon_cli
