// The well-formedness check, by libxml2 where the build has it.
#include "findings.h"

#ifdef QUILLON_HAVE_LIBXML2
#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlversion.h>
#endif

namespace quillon_cli {

#ifdef QUILLON_HAVE_LIBXML2

namespace {

// The parser stops at the first place where the document is not well-formed; errors that it
// notes on the way there are kept, one per line.
constexpr size_t kMostFindings = 20;
constexpr size_t kShownLineLength = 120;

struct Collected {
    const std::string* document;
    std::vector<std::string> findings;
    int lastLine = 0;
    bool stopped = false;
};

std::string lineText(const std::string& document, int line) {
    size_t start = 0;
    for (int i = 1; i < line && start != std::string::npos; ++i) {
        start = document.find('\n', start);
        if (start != std::string::npos) ++start;
    }
    if (start == std::string::npos || start >= document.size()) return std::string();
    std::string text = document.substr(start, document.find('\n', start) - start);
    const size_t first = text.find_first_not_of(' ');
    text = first == std::string::npos ? std::string() : text.substr(first);
    if (text.size() > kShownLineLength) text = text.substr(0, kShownLineLength) + "...";
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20) c = '?';
    }
    return text;
}

void collect(void* context, const xmlError* error) {
    auto* collected = static_cast<Collected*>(context);
    if (!error || collected->stopped || collected->findings.size() >= kMostFindings) return;
    // After an element was cut short, mismatched tags only echo the finding already made.
    if (error->code == XML_ERR_TAG_NAME_MISMATCH || error->code == XML_ERR_DOCUMENT_END) {
        collected->stopped = !collected->findings.empty();
        if (collected->stopped) return;
    }
    if (error->line == collected->lastLine) return;
    collected->lastLine = error->line;
    std::string message = error->message ? error->message : "not well-formed";
    while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) {
        message.pop_back();
    }
    collected->findings.push_back("line " + std::to_string(error->line) + ": " + message + ": " +
                                  lineText(*collected->document, error->line));
}

// libxml2 before 2.12 passes a non-const error.
#if LIBXML_VERSION >= 21200
void collectError(void* context, const xmlError* error) { collect(context, error); }
#else
void collectError(void* context, xmlError* error) { collect(context, error); }
#endif

}  // namespace

bool xmlCheckBuiltIn() { return true; }

std::vector<std::string> xmlFindings(const std::string& document) {
    // The wrapper shares the first line with the document, so line numbers stay the same.
    const std::string wrapped = "<check>" + document + "</check>";
    Collected collected{&document, {}};
    xmlSetStructuredErrorFunc(&collected, collectError);
    xmlDocPtr doc = xmlReadMemory(wrapped.data(), static_cast<int>(wrapped.size()), "record.xml",
                                  "UTF-8", XML_PARSE_NONET);
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    if (doc) xmlFreeDoc(doc);
    return collected.findings;
}

#else

bool xmlCheckBuiltIn() { return false; }

std::vector<std::string> xmlFindings(const std::string&) { return {}; }

#endif

}  // namespace quillon_cli
