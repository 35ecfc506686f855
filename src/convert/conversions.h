// The conversions themselves, free of any host: one archive and a type id in, UTF-8 XML out.
// The Ruby module, the command-line tool and the tests all go through these, so each front
// gives byte-identical text for the same record.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "archive/quick_archive.h"
#include "archive/read_trace.h"

namespace CorvaneCore {

// Every document is bounded by kMaxDocumentBytes (archive/limits.h): one that would pass it
// is not given, and a trace, when given, names the limit as the reason.

// Whether a type id names a class that the conversion can make.
bool isLightType(int32_t type);
bool isMaterialType(int32_t type);

// The light record's XML, or nothing when the type has no class or the record is refused.
// A trace, when given, records what the read went through.
std::optional<std::string> convertLight(QuickArchive& archive, int32_t type,
                                        ReadTrace* trace = nullptr);

// The material record's folded XML document, or nothing when refused.
std::optional<std::string> convertMaterial(QuickArchive& archive, int32_t type,
                                           ReadTrace* trace = nullptr);

// The document of a .cormat material file, given its bytes: one "Assets" element inside the
// root element "cormat", holding every material's blocks in file order. Nothing when the file
// is refused.
std::optional<std::string> convertCorMat(const std::string& fileBytes, ReadTrace* trace = nullptr);

class AllOptions;

// The options held by the stored scene record (or the defaults) as one "Assets" document.
std::optional<std::string> optionsDocument(ReadTrace* trace = nullptr);
// The same document for any options record, such as one read from a .coropt file.
std::optional<std::string> optionsDocument(AllOptions& options, ReadTrace* trace = nullptr);

// Reads an options record (the content of a .coropt file) into `options`.
bool readOptionsRecord(QuickArchive& archive, AllOptions& options, ReadTrace* trace = nullptr);

// Reads a model's stored scene record into the process-wide scene state (the options that
// optionsDocument() shows, and the scene's material set). A refused record leaves what was
// read before the refusal.
bool readSceneRecord(QuickArchive& archive, ReadTrace* trace = nullptr);

}  // namespace CorvaneCore
