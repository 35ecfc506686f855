#include "materials/material_linked.h"

#include <cstdlib>

#include "archive/read_helpers.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kIdDataVersion = 1;
constexpr uint32_t kLinkedVersion = 1;
constexpr uint32_t kReferenceVersion = 2;

bool isKnownKind(int32_t kind) { return kind >= 0 && kind <= MaterialLinked::IdData::kNumber; }
}  // namespace

// ---------------------------------------------------------------- link id

bool MaterialLinked::IdData::serialize(QuickArchive& archive) {
    if (!isKnownKind(kind)) return false;
    writeVersion(archive, kIdDataVersion);
    archive.write(static_cast<uint32_t>(kind));
    if (holdsText()) {
        archive.write(text);
    } else {
        archive.write(number);
    }
    return true;
}

bool MaterialLinked::IdData::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersion(archive, major) || major != kIdDataVersion) return false;
    uint32_t storedKind = 0;
    archive.read(storedKind);
    // Read as unsigned, a negative kind is above 2 as well.
    if (storedKind > static_cast<uint32_t>(kNumber)) return false;
    kind = static_cast<int32_t>(storedKind);
    if (holdsText()) {
        archive.read(text);
    } else {
        archive.read(number);
    }
    return true;
}

bool MaterialLinked::IdData::sameAs(const IdData& other) const {
    if (kind != other.kind) return false;
    return holdsText() ? equalsIgnoreCase(text, other.text) : number == other.number;
}

// ---------------------------------------------------------------- linked material

void MaterialLinked::setDefaults() {
    base_mtl.reset();
    linkId = IdData();
}

bool MaterialLinked::serialize(QuickArchive& archive) {
    if (!base_mtl) return false;
    writeVersion(archive, kLinkedVersion);
    if (!linkId.serialize(archive)) return false;
    if (!writeBareMaterial(archive, base_mtl)) return false;
    writeMaterialSection(archive);
    return true;
}

bool MaterialLinked::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major != kLinkedVersion) return false;
    // An unknown id leaves base_mtl empty and ends the read.
    return linkId.deserialize(archive) && readBareMaterial(archive, base_mtl) &&
           readMaterialSection(archive);
}

bool MaterialLinked::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialLinked&>(*other);
    return sameMaterial(base_mtl, o.base_mtl) && linkId.sameAs(o.linkId);
}

// ---------------------------------------------------------------- reference

void MaterialReference::setDefaults() {
    target.clear();
    resolved.reset();
}

bool MaterialReference::serialize(QuickArchive& archive) {
    if (writing_.on) return false;
    writing_.on = true;
    writeVersion(archive, kReferenceVersion);
    writeMaterialSection(archive);
    archive.write(target);
    if (MaterialPtr found = sceneMaterials()->findByUuid(target)) resolved = found;
    const bool written = writeMaterialSlot(archive, resolved);
    writing_.on = false;
    return written;
}

bool MaterialReference::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > kReferenceVersion) return false;
    if (!readMaterialSection(archive)) return false;
    archive.read(target);
    if (major == 1) return true;
    return readMaterialSlot(archive, resolved);
}

MaterialPtr MaterialReference::clone() { return std::make_shared<MaterialReference>(*this); }

MaterialPtr MaterialReference::copy() { return std::make_shared<MaterialReference>(*this); }

bool MaterialReference::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialReference&>(*other);
    if (!equalsIgnoreCase(target, o.target)) return false;
    if (comparing_.on) return false;
    const MaterialPtr mine = sceneMaterials()->findByUuid(target);
    const MaterialPtr theirs = sceneMaterials()->findByUuid(o.target);
    if (!mine) return !theirs;
    comparing_.on = true;
    const bool same = mine->isEqual(theirs);
    comparing_.on = false;
    return same;
}

// A walk that finds the target keeps it as the new resolved copy, as a write does.
std::vector<MaterialPtr> MaterialReference::walkedMaterials() {
    if (MaterialPtr found = sceneMaterials()->findByUuid(target)) resolved = found;
    return {resolved};
}

int MaterialReference::writeXML(AssetXmlWriter&, std::u16string) { std::abort(); }

std::u16string MaterialReference::pluginType() { std::abort(); }

// ---------------------------------------------------------------- seeing through references

MaterialPtr resolveReference(const MaterialPtr& material) {
    if (material && material->getType() == MaterialReference::kType) {
        return static_cast<MaterialReference&>(*material).resolved;
    }
    return material;
}

bool isUsable(const MaterialPtr& material) {
    if (!material) return false;
    if (material->getType() == MaterialReference::kType) {
        return !static_cast<MaterialReference&>(*material).target.empty();
    }
    return true;
}

// ---------------------------------------------------------------- names and the default

bool validateName(const std::u16string& name, std::u16string& message) {
    message.clear();
    if (!sceneMaterials()->isNameFree(name)) {
        message = u"The name, \"" + name + u"\", is already in use";
        return false;
    }
    if (name.empty()) {
        message = u"A name must have at least one character";
        return false;
    }
    return true;
}

std::u16string defaultMaterialName() { return u"Default_Ombra_Material"; }

MaterialPtr makeDefaultMaterial() {
    auto diffuse = std::make_shared<Diffuse_BRDF>();
    diffuse->name = u"Diffuse";
    auto actual = std::make_shared<MaterialLayeredBRDF>();
    actual->name = defaultMaterialName() + u"_Actual";
    actual->brdfs.push_back(diffuse);
    MaterialPtr material = actual->clone();
    material->name = defaultMaterialName();
    sceneMaterials()->addMaterial(material);
    return material;
}

}  // namespace CorvaneCore
