#include "record_conversion.h"

#include <sstream>

#include "archive/quick_archive.h"
#include "convert/conversions.h"
#include "materials/material_file.h"
#include "materials/scene_materials.h"
#include "options/all_options.h"
#include "xml/text.h"

namespace quillon_cli {

namespace {

struct KindName {
    RecordKind kind;
    const char* name;
};

const KindName kKindNames[] = {{RecordKind::Light, "light"},
                               {RecordKind::Material, "material"},
                               {RecordKind::Scene, "scene"},
                               {RecordKind::Coropt, "coropt"},
                               {RecordKind::Cormat, "cormat"}};

std::string materialLine(const CorvaneCore::MaterialPtr& material) {
    return CorvaneCore::wideToUtf8(material->name) + " (type " +
           std::to_string(material->getType()) + ")";
}

void refuse(Conversion& c, const std::string& fallback) {
    c.reason = c.trace.failureText().empty() ? fallback : c.trace.failureText();
}

void convertObjectRecord(Conversion& c, RecordKind kind, int32_t type, const std::string& bytes) {
    const bool light = kind == RecordKind::Light;
    if (!(light ? CorvaneCore::isLightType(type) : CorvaneCore::isMaterialType(type))) {
        c.reason =
            std::string("no ") + kindName(kind) + " class has type id " + std::to_string(type);
        return;
    }
    CorvaneCore::QuickArchive archive(1);
    archive.writeBytes(bytes.data(), bytes.size());
    std::optional<std::string> xml = light ? CorvaneCore::convertLight(archive, type, &c.trace)
                                           : CorvaneCore::convertMaterial(archive, type, &c.trace);
    c.measured = true;
    c.readEnd = archive.readPos();
    if (!xml)
        return refuse(c, std::string("the ") + kindName(kind) + " record of type " +
                             std::to_string(type) + " was refused");
    c.converted = true;
    c.xml = std::move(*xml);
}

void convertScene(Conversion& c, const std::string& bytes) {
    CorvaneCore::QuickArchive archive(1);
    archive.writeBytes(bytes.data(), bytes.size());
    const bool read = CorvaneCore::readSceneRecord(archive, &c.trace);
    c.measured = true;
    c.readEnd = archive.readPos();
    for (const auto& entry : CorvaneCore::sceneMaterials()->materials()) {
        if (entry.second) c.materials.push_back(materialLine(entry.second));
    }
    if (!read) return refuse(c, "the scene record was refused");
    std::optional<std::string> xml = CorvaneCore::optionsDocument(&c.trace);
    if (!xml) return refuse(c, "the options document was refused");
    c.converted = true;
    c.xml = std::move(*xml);
}

void convertCoropt(Conversion& c, const std::string& bytes) {
    CorvaneCore::QuickArchive archive(bytes.data(), bytes.size());
    CorvaneCore::AllOptions options;
    const bool read = CorvaneCore::readOptionsRecord(archive, options, &c.trace);
    c.measured = true;
    c.readEnd = archive.readPos();
    // The file holds whole blocks; the rest of the last one read is padding.
    const uint64_t block = CorvaneCore::QuickArchive::kBlockSize;
    c.padding = (block - c.readEnd % block) % block;
    if (!read) return refuse(c, "the options file was refused");
    std::optional<std::string> xml = CorvaneCore::optionsDocument(options, &c.trace);
    if (!xml) return refuse(c, "the options document was refused");
    c.converted = true;
    c.xml = std::move(*xml);
}

void convertCormat(Conversion& c, const std::string& bytes) {
    std::istringstream in(bytes);
    CorvaneCore::CorMatFile file;
    if (!file.read(in)) return refuse(c, "the material file was refused");
    for (const CorvaneCore::MaterialPtr& m : file.materials) {
        if (m) c.materials.push_back(materialLine(m));
    }
    std::optional<std::string> xml = CorvaneCore::convertCorMat(bytes, &c.trace);
    if (!xml) return refuse(c, "the material file was refused");
    c.converted = true;
    c.xml = std::move(*xml);
}

}  // namespace

const char* kindName(RecordKind kind) {
    for (const KindName& k : kKindNames) {
        if (k.kind == kind) return k.name;
    }
    return "record";
}

std::optional<RecordKind> kindFromName(const std::string& name) {
    for (const KindName& k : kKindNames) {
        if (name == k.name) return k.kind;
    }
    return std::nullopt;
}

bool kindNeedsType(RecordKind kind) {
    return kind == RecordKind::Light || kind == RecordKind::Material;
}

Conversion convertRecord(RecordKind kind, int32_t type, const std::string& bytes) {
    Conversion c;
    c.recordSize = bytes.size();
    if (bytes.empty()) {
        c.reason = "the record is empty";
        return c;
    }
    switch (kind) {
        case RecordKind::Light:
        case RecordKind::Material:
            convertObjectRecord(c, kind, type, bytes);
            break;
        case RecordKind::Scene:
            convertScene(c, bytes);
            break;
        case RecordKind::Coropt:
            convertCoropt(c, bytes);
            break;
        case RecordKind::Cormat:
            convertCormat(c, bytes);
            break;
    }
    return c;
}

}  // namespace quillon_cli
