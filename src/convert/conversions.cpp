#include "convert/conversions.h"

#include <sstream>

#include "archive/read_helpers.h"
#include "lights/base_light.h"
#include "materials/base_material.h"
#include "materials/material_file.h"
#include "options/all_options.h"
#include "upgrade/mtl_converter.h"
#include "upgrade/skp_module.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {
constexpr int32_t kLastMaterialType = 14;
constexpr int32_t kLastLightType = 7;
constexpr int32_t kLightTypeWithoutClass = 1;
// Room for the usual documents, so their text grows without copies.
constexpr size_t kOptionsDocumentReserve = 64 * 1024;
constexpr size_t kRecordDocumentReserve = 16 * 1024;

// Attaches a trace to the archive for the length of one read.
class TraceScope {
public:
    TraceScope(QuickArchive& archive, ReadTrace* trace) : archive_(archive) {
        archive_.setTrace(trace);
    }
    ~TraceScope() { archive_.setTrace(nullptr); }

private:
    QuickArchive& archive_;
};

// The buffer documents are written into, kept from call to call so that a large document
// does not fault in fresh pages while it grows; the result is one exact copy. A buffer that
// grew past kKeptScratchBytes is released after its call.
constexpr size_t kKeptScratchBytes = size_t(2) << 20;

std::string& scratchBuffer() {
    static thread_local std::string buffer;
    return buffer;
}

// Writes one document through `write`; nothing when it would pass kMaxDocumentBytes, in which
// case the trace, if any, says why.
template <class Write>
std::optional<std::string> writeDocument(size_t reserve, ReadTrace* trace, const Write& write) {
    std::string& buffer = scratchBuffer();
    if (buffer.size() < reserve) buffer.resize(reserve);
    std::optional<std::string> result;
    bool tooLarge = false;
    try {
        AssetXmlWriter writer(buffer, AssetXmlWriter::ReuseBuffer{});
        writer.targetHost = 0;
        write(writer);
        const auto text = writer.text();
        // The last lines may pass the budget, after the last check.
        tooLarge = text.second > kMaxDocumentBytes;
        if (!tooLarge) result.emplace(text.first, text.second);
    } catch (const DocumentTooLarge&) {
        tooLarge = true;
    }
    if (buffer.size() > kKeptScratchBytes) std::string().swap(buffer);
    if (tooLarge && trace) trace->documentTooLarge(kMaxDocumentBytes);
    return result;
}

}  // namespace

bool isLightType(int32_t type) {
    return type >= 0 && type <= kLastLightType && type != kLightTypeWithoutClass;
}

bool isMaterialType(int32_t type) { return type >= 0 && type <= kLastMaterialType; }

std::optional<std::string> convertLight(QuickArchive& archive, int32_t type, ReadTrace* trace) {
    if (!isLightType(type)) return std::nullopt;
    std::shared_ptr<BaseLight> light = createLight(type);
    if (!light) return std::nullopt;
    TraceScope scope(archive, trace);
    if (!readTracedObject(archive, *light)) return std::nullopt;
    return writeDocument(kRecordDocumentReserve, trace, [&](AssetXmlWriter& writer) {
        light->writeXML(writer, std::u16string());
    });
}

std::optional<std::string> convertMaterial(QuickArchive& archive, int32_t type, ReadTrace* trace) {
    if (!isMaterialType(type)) return std::nullopt;
    std::shared_ptr<BaseMaterial> material = createMaterial(type);
    if (!material) return std::nullopt;
    TraceScope scope(archive, trace);
    if (!readTracedObject(archive, *material)) return std::nullopt;
    return writeDocument(kRecordDocumentReserve, trace, [&](AssetXmlWriter& writer) {
        MtlCORVANEConverter converter(material);
        converter.writeXML(writer, std::u16string());
    });
}

std::optional<std::string> convertCorMat(const std::string& fileBytes, ReadTrace* trace) {
    std::istringstream in(fileBytes);
    CorMatFile file;
    if (!file.read(in)) return std::nullopt;
    return writeDocument(kRecordDocumentReserve, trace,
                         [&](AssetXmlWriter& writer) { writeCorMatDocument(writer, file); });
}

std::optional<std::string> optionsDocument(AllOptions& options, ReadTrace* trace) {
    return writeDocument(kOptionsDocumentReserve, trace, [&](AssetXmlWriter& writer) {
        writer.openAssets();
        options.writeXML(writer, std::u16string());
        writer.closeAssets();
    });
}

std::optional<std::string> optionsDocument(ReadTrace* trace) {
    return optionsDocument(sceneOptions(), trace);
}

bool readOptionsRecord(QuickArchive& archive, AllOptions& options, ReadTrace* trace) {
    TraceScope scope(archive, trace);
    return readTracedObject(archive, options);
}

bool readSceneRecord(QuickArchive& archive, ReadTrace* trace) {
    TraceScope scope(archive, trace);
    return readTracedObject(archive, SkpModule::instance());
}

}  // namespace CorvaneCore
