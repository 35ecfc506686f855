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

// Writes one document through `write`; nothing when it would pass kMaxDocumentBytes, in which
// case its text is released at once and the trace, if any, says why.
template <class Write>
std::optional<std::string> writeDocument(size_t reserve, ReadTrace* trace, const Write& write) {
    std::string text;
    text.reserve(reserve);
    try {
        AssetXmlWriter writer(text);
        writer.targetHost = 0;
        write(writer);
    } catch (const DocumentTooLarge&) {
        std::string().swap(text);
        if (trace) trace->documentTooLarge(kMaxDocumentBytes);
        return std::nullopt;
    }
    if (text.size() > kMaxDocumentBytes) {  // the last lines pass the budget
        if (trace) trace->documentTooLarge(kMaxDocumentBytes);
        return std::nullopt;
    }
    return text;
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

bool readSceneRecord(QuickArchive& archive, ReadTrace* trace) {
    TraceScope scope(archive, trace);
    return readTracedObject(archive, SkpModule::instance());
}

}  // namespace CorvaneCore
