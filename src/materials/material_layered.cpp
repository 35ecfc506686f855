#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "materials/material.h"
#include "xml/asset_frame.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void MaterialLayeredBRDF::setDefaults() {
    resetMaterialBase();
    brdfs.clear();
    double_sided = 1;
    layeredOptionA = 0;
    layeredOptionB = 1;
    layeredOptionC = 1;
    layeredOptionD = 0;
}

// The list's count comes from the record: it is trusted only as far as there are bytes left,
// and layers already read stay when a later one fails.
bool MaterialLayeredBRDF::readLayers(QuickArchive& archive) {
    uint32_t count = 0;
    archive.read(count);
    for (uint32_t i = 0; i < count; ++i) {
        // Past the end every id reads as 0, which names no layer.
        if (archive.remaining() == 0) return false;
        std::shared_ptr<Base_BRDF> layer;
        if (!readRequiredChild<Base_BRDF>(archive, layer, &createBRDF)) return false;
        brdfs.push_back(layer);
    }
    return true;
}

bool MaterialLayeredBRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionThenReset(archive, kNewestVersion, major, *this)) return false;
    if (!readLayers(archive)) return false;
    readListedFields(archive, major, *this);
    if (major == 1) {
        readBareName(archive);
        return true;
    }
    if (!readMaterialSection(archive)) return false;
    FieldReader readTrailing{archive, major};
    visitTrailingFields(readTrailing, *this);
    return true;
}

bool MaterialLayeredBRDF::serialize(QuickArchive& archive) {
    writeVersion(archive, kNewestVersion);
    archive.write(static_cast<uint32_t>(brdfs.size()));
    for (const auto& layer : brdfs) {
        if (!writeRequiredChild(archive, layer)) return false;
    }
    writeListedFields(archive, *this);
    writeMaterialSection(archive);
    FieldWriter writeTrailing{archive};
    visitTrailingFields(writeTrailing, *this);
    return true;
}

void MaterialLayeredBRDF::duplicateChildren(MaterialDuplicator) {
    for (auto& layer : brdfs) {
        if (layer) layer = layer->clone();
    }
}

bool MaterialLayeredBRDF::isEqual(const std::shared_ptr<BaseMaterial>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialLayeredBRDF&>(*other);
    if (brdfs.size() != o.brdfs.size()) return false;
    for (size_t i = 0; i < brdfs.size(); ++i) {
        const bool same = brdfs[i] ? brdfs[i]->isEqual(o.brdfs[i]) : !o.brdfs[i];
        if (!same) return false;
    }
    FieldComparer compare;
    visitFields(compare, *this, o);
    visitTrailingFields(compare, *this, o);
    return compare.same;
}

void MaterialLayeredBRDF::writeLayers(AssetXmlWriter& writer, const std::u16string& url) {
    for (const auto& layer : brdfs) {
        if (layer) layer->writeXML(writer, url);
    }
}

void MaterialLayeredBRDF::writeLeadingParameters(AssetXmlWriter& writer,
                                                 const std::u16string& url) {
    writer.writeInteger("double_sided", double_sided);
    writer.beginList("brdfs", "plugin");
    for (const auto& layer : brdfs) {
        if (layer) writer.writeEntry(url + u"/" + layer->name);
    }
    writer.endList();
}

int MaterialLayeredBRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeLayers(writer, url);
    beginAssetFrame(writer, url, *this, u"defommat");
    writeLeadingParameters(writer, url);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
