#include "upgrade/skp_material_editor.h"

#include <algorithm>
#include <fstream>

#include "materials/brdf.h"
#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/scene_materials.h"
#include "textures/procedural.h"
#include "textures/texture.h"
#include "xml/number_format.h"
#include "xml/text.h"

using namespace CorvaneCore;

namespace {

constexpr int kLinkedType = 6;
constexpr int kLayeredType = MaterialLayeredBRDF::kType;
constexpr int kReferenceType = 13;
constexpr int kDiffuseType = Diffuse_BRDF::kType;
constexpr int kBitmapTextureType = 0;
constexpr int kAColorTextureType = 5;
constexpr int kBlendTextureType = 10;
constexpr size_t kCopyChunk = 4096;
// A parent search gives up below this depth or after this many materials: a reference cycle
// must not spin.
constexpr int kMaxParentDepth = 256;
constexpr int kMaxParentVisits = 100000;
constexpr unsigned kMaxNameCounter = 100000;

const char kUpgradePrompt[] =
    "We have made some changes to the way we handle materials in Quillon. An upgrade will be "
    "required to convert your older scenes to work with the new setup. Would you like to "
    "proceed?";
const char kNoBackupPrompt[] =
    "We were unable to back up this file automatically - you should do so before continuing. "
    "Would you like to proceed with the upgrade anyway?";
const char kStartFailed[] = "Failed to start operation for Quillon Scene Upgrade";
const char kCommitFailed[] = "Failed to commit operation for SR1 Scene Upgrade";
const char kConvertFailed[] =
    "[SkpMaterialEditor::SetBasicOmbraMaterial] - failed to convert sketchup material to our "
    "representation\n";

// Stops applyMaterial's walk over referring materials from starting again inside itself.
bool g_applyingReferrers = false;

std::vector<std::shared_ptr<Base_BRDF>> diffuseLayers(const MaterialPtr& material) {
    std::vector<std::shared_ptr<Base_BRDF>> found;
    const std::vector<MaterialPtr> layered = collectMaterials(material, kLayeredType);
    if (layered.empty()) return found;
    auto* first = dynamic_cast<MaterialLayeredBRDF*>(layered.front().get());
    if (!first) return found;
    for (const auto& layer : first->brdfs) {
        if (layer && layer->getType() == kDiffuseType) found.push_back(layer);
    }
    return found;
}

int textureType(const std::shared_ptr<BaseTexture>& texture) {
    return texture ? texture->getType() : -1;
}

// A blend of a bitmap and a plain colour, in either order: the bitmap and the colour.
bool splitBlend(const std::shared_ptr<BaseTexture>& texture, BitmapTexture*& bitmap,
                AColorTexture*& color) {
    auto* blend = dynamic_cast<BlendTexture*>(texture.get());
    if (!blend || blend->getType() != kBlendTextureType) return false;
    const std::shared_ptr<BaseTexture>* parts[2] = {&blend->color_a, &blend->color_b};
    for (int first = 0; first < 2; ++first) {
        const auto& a = *parts[first];
        const auto& b = *parts[1 - first];
        if (textureType(a) == kBitmapTextureType && textureType(b) == kAColorTextureType) {
            bitmap = dynamic_cast<BitmapTexture*>(a.get());
            color = dynamic_cast<AColorTexture*>(b.get());
            return bitmap && color;
        }
    }
    return false;
}

bool isBitmapOrBitmapBlend(const std::shared_ptr<BaseTexture>& texture) {
    if (textureType(texture) == kBitmapTextureType) return true;
    BitmapTexture* bitmap = nullptr;
    AColorTexture* color = nullptr;
    return splitBlend(texture, bitmap, color);
}

std::u16string bitmapFile(const BitmapTexture& texture) {
    const auto* buffer = dynamic_cast<const BitmapBuffer*>(texture.bitmap.get());
    return buffer ? buffer->file : std::u16string();
}

Color rgb(const AColor& c) { return Color(c.r, c.g, c.b); }

// The material of the tree below `root` that holds `child` among its walked materials.
MaterialPtr findParent(const MaterialPtr& root, const MaterialPtr& child, int depth, int& visits) {
    if (!root || depth > kMaxParentDepth || ++visits > kMaxParentVisits) return nullptr;
    const std::vector<MaterialPtr> children = root->walkedMaterials();
    for (const MaterialPtr& c : children) {
        if (c == child) return root;
    }
    for (const MaterialPtr& c : children) {
        if (MaterialPtr found = findParent(c, child, depth + 1, visits)) return found;
    }
    return nullptr;
}

bool isWrapperWithBase(int type) {
    // Bump, environment override, displaced, object exclusion, alpha contribution.
    return type == 3 || type == 8 || type == 9 || type == 10 || type == 11;
}

std::u16string uuidOfName(const SceneMaterials& set, const std::u16string& name) {
    for (const auto& entry : set.ids()) {
        if (equalsIgnoreCase(entry.second, name)) return entry.first;
    }
    return std::u16string();
}

std::u16string stripTrailingDigits(std::u16string text) {
    while (!text.empty() && isAsciiDigit(text.back())) text.pop_back();
    return text;
}

}  // namespace

SkpMaterialEditor& SkpMaterialEditor::instance() {
    static SkpMaterialEditor* editor = new SkpMaterialEditor();  // never destroyed
    return *editor;
}

// ---------------------------------------------------------------- the entry and its steps

void SkpMaterialEditor::offerUpgrade() {
    if (!host_) return;
    const HostRef model = host_->activeModel();
    if (!model) return;
    if (!host_->askYesNo(kUpgradePrompt)) return;
    if (!backupModel(model)) return;
    try {
        runUpgrade();
    } catch (...) {
        abortUpgrade();
    }
}

bool SkpMaterialEditor::backupModel(const HostRef& model) {
    const std::string source = wideToUtf8(host_->modelPath(model));
    // Both are opened whatever the other gave, so the target is created or emptied even for an
    // unsaved model, whose empty path opens nothing.
    std::ifstream in(source, std::ios::binary);
    std::ofstream out(kBackupFileName, std::ios::binary | std::ios::trunc);
    if (!in.is_open() || !out.is_open()) return host_->askYesNo(kNoBackupPrompt);
    char chunk[kCopyChunk];
    while (in.read(chunk, sizeof chunk) || in.gcount() > 0) {
        out.write(chunk, in.gcount());
    }
    in.close();
    out.close();
    host_->showMessage(std::string("We have backed up this file to '") + kBackupFileName +
                       "' in case you are unhappy with the file upgrade changes");
    return true;
}

bool SkpMaterialEditor::runUpgrade() {
    if (!host_->startOperation()) {
        host_->warn(kStartFailed);
        return false;
    }
    MaterialRenameMap map;
    convertMaterials(map);
    assignEntities(map);
    host_->touchActiveModel();
    if (!host_->commitOperation()) throw UpgradeFailure(kCommitFailed);
    return true;
}

void SkpMaterialEditor::abortUpgrade() { host_->abortOperation(); }

// ---------------------------------------------------------------- materials

void SkpMaterialEditor::convertMaterials(MaterialRenameMap& map) {
    const std::shared_ptr<SceneMaterials> set = sceneMaterials();
    // A snapshot: the loop renames and removes.
    std::vector<std::u16string> names;
    set->names(names);
    for (const std::u16string& name : names) {
        const MaterialPtr material = set->findByName(name);
        if (!material || equalsIgnoreCase(name, defaultMaterialName())) continue;
        const std::vector<MaterialPtr> links = collectMaterials(material, kLinkedType);
        if (!links.empty()) {
            convertLinked(material, links.front(), map);
        } else {
            convertPlain(material, name);
        }
    }
}

// The material stands on a host material already: it takes that material's name.
void SkpMaterialEditor::convertLinked(const MaterialPtr& material, const MaterialPtr& firstLink,
                                      MaterialRenameMap& map) {
    const std::u16string hostName = firstLink->linkedHostName();
    const std::u16string oldName = material->name;
    const MaterialPtr resolved = resolveLinked(material);
    const MaterialPtr copy = resolved ? resolved->copy() : nullptr;
    if (copy) copy->name = hostName;
    deleteMaterial(oldName);
    // Without a resolved material (two links) the material is gone from the set.
    if (!copy) return;
    sceneMaterials()->addMaterial(copy);
    const HostRef host = host_->findSkpMaterial(hostName);
    if (!host) return;
    if (writeAttributes(host, hostName, false)) map[oldName] = host;
    refreshBasicMaterial(copy, host);
}

void SkpMaterialEditor::convertPlain(const MaterialPtr& material, const std::u16string& name) {
    std::u16string target = name;
    if (!isHostNameFree(name)) {
        target = makeUniqueName(name);
        material->name = target;
        sceneMaterials()->renameMaterial(name, material);
    }
    const HostRef host = host_->addMaterial(target);
    if (host) writeAttributes(host, target, true);
}

MaterialPtr SkpMaterialEditor::resolveLinked(const MaterialPtr& material) {
    const std::vector<MaterialPtr> links = collectMaterials(material, kLinkedType);
    if (links.empty() || links.size() >= 3) return material;
    if (links.size() == 2) return nullptr;
    const std::vector<MaterialPtr> layered = collectMaterials(material, kLayeredType);
    if (layered.size() == 1) {
        if (auto* m = dynamic_cast<MaterialLayeredBRDF*>(layered.front().get())) {
            for (const auto& layer : m->brdfs) {
                if (layer) layer->layerFlagB = false;
            }
        }
    }
    const MaterialPtr& link = links.front();
    const std::vector<MaterialPtr> linkChildren = link->walkedMaterials();
    const MaterialPtr base = linkChildren.empty() ? nullptr : linkChildren.front();
    if (link == material) {
        if (base) base->name = material->name;
        return base;
    }
    int visits = 0;
    const MaterialPtr parent = findParent(material, link, 0, visits);
    if (!parent || !isWrapperWithBase(parent->getType())) return nullptr;
    parent->setBaseMaterial(base);
    return material;
}

bool SkpMaterialEditor::isHostNameFree(const std::u16string& name) {
    long length = 0;
    if (!host_->materialLength(length)) return false;
    for (long i = 0; i < length; ++i) {
        const HostRef material = host_->materialAt(i);
        if (host_->nameMatches(material, name) || host_->displayNameMatches(material, name)) {
            return false;
        }
    }
    return true;
}

std::u16string SkpMaterialEditor::makeUniqueName(const std::u16string& name) {
    const std::shared_ptr<SceneMaterials> set = sceneMaterials();
    std::u16string candidate = name;
    // A host that cannot list its materials calls no name free: the counter gives up at a bound
    // instead of running on.
    for (unsigned counter = 1; counter <= kMaxNameCounter; ++counter) {
        if (set->isNameFree(candidate) && isHostNameFree(candidate)) return candidate;
        candidate = stripTrailingDigits(candidate) + numberText(static_cast<int64_t>(counter));
    }
    return candidate;
}

bool SkpMaterialEditor::writeAttributes(const HostRef& host, const std::u16string& name,
                                        bool apply) {
    if (!host) return false;
    const MaterialPtr material = sceneMaterials()->findByName(name);
    if (!material) return false;
    QuickArchive archive(1);
    if (!material->serialize(archive)) return false;
    const HostRef bytes = host_->bytesValue(archive);
    if (!bytes) return false;
    const HostRef type = host_->intValue(material->getType());
    const HostRef text = host_->textValue(material->name);
    const bool nameSet = host_->setAttribute(host, MaterialAttribute::MaterialName, text);
    const bool typeSet = host_->setAttribute(host, MaterialAttribute::MaterialType, type);
    const bool bytesSet = host_->setAttribute(host, MaterialAttribute::Material, bytes);
    const bool stored = nameSet && typeSet && bytesSet;
    if (stored && apply) applyMaterial(material, host);
    return stored;
}

bool SkpMaterialEditor::clearAttributes(const HostRef& host) {
    return host_->eraseAttribute(host, MaterialAttribute::Material) &&
           host_->eraseAttribute(host, MaterialAttribute::MaterialName) &&
           host_->eraseAttribute(host, MaterialAttribute::MaterialType);
}

std::vector<HostRef> SkpMaterialEditor::allHostMaterials() {
    std::vector<HostRef> all;
    long count = 0;
    if (!host_->materialCount(count)) return all;
    for (long i = 0; i < count; ++i) all.push_back(host_->materialAt(i));
    return all;
}

HostRef SkpMaterialEditor::findHostMaterial(const MaterialPtr& material) {
    if (!material) return nullptr;
    for (const HostRef& candidate : allHostMaterials()) {
        std::u16string stored;
        if (host_->readTextAttribute(candidate, MaterialAttribute::MaterialName, stored) &&
            equalsIgnoreCase(stored, material->name)) {
            return candidate;
        }
    }
    return nullptr;
}

void SkpMaterialEditor::deleteMaterial(const std::u16string& name) {
    const std::shared_ptr<SceneMaterials> set = sceneMaterials();
    const HostRef host = findHostMaterial(set->findByName(name));
    set->removeMaterial(name);
    if (!host) return;
    clearAttributes(host);
    host_->hackDeleteSkpMaterial(host);
}

// ---------------------------------------------------------------- entities

void SkpMaterialEditor::assignEntities(const MaterialRenameMap& map) {
    std::vector<HostRef> entities;
    if (!host_->allEntities(entities)) return;
    for (const HostRef& entity : entities) {
        std::u16string stored;
        if (!host_->readTextAttribute(entity, MaterialAttribute::Material, stored)) continue;
        const auto found = map.find(stored);
        if (found != map.end()) host_->paint(entity, found->second);
        // The key goes whether or not its material was converted.
        host_->eraseAttribute(entity, MaterialAttribute::Material);
    }
}

// ---------------------------------------------------------------- showing a material on the host

void SkpMaterialEditor::applyMaterial(const MaterialPtr& material, const HostRef& host) {
    if (!material || !collectMaterials(material, kLinkedType).empty()) return;
    const std::vector<std::shared_ptr<Base_BRDF>> layers = diffuseLayers(material);
    if (layers.empty()) return;
    applyDiffuse(layers.front(), host);
    host_->evaluateMaterial(host);
    if (g_applyingReferrers) return;
    g_applyingReferrers = true;
    applyToReferrers(material);
    g_applyingReferrers = false;
}

// The host material of each reference to `material` shows what the reference points to.
void SkpMaterialEditor::applyToReferrers(const MaterialPtr& material) {
    const std::shared_ptr<SceneMaterials> set = sceneMaterials();
    const std::u16string uuid = uuidOfName(*set, material->name);
    if (uuid.empty()) return;
    std::vector<std::u16string> names;
    set->names(names);
    for (const std::u16string& name : names) {
        const MaterialPtr referrer = set->findByName(name);
        const std::vector<MaterialPtr> references = collectMaterials(referrer, kReferenceType);
        if (references.empty() || !equalsIgnoreCase(references.front()->referenceTarget(), uuid)) {
            continue;
        }
        const HostRef referrerHost = findHostMaterial(referrer);
        if (!referrerHost) continue;
        applyMaterial(material, referrerHost);
        host_->evaluateMaterial(referrerHost);
    }
}

void SkpMaterialEditor::applyDiffuse(const std::shared_ptr<Base_BRDF>& layer, const HostRef& host) {
    auto* diffuse = dynamic_cast<Diffuse_BRDF*>(layer.get());
    if (!diffuse || diffuse->getType() != kDiffuseType) return;
    if (diffuse->color_tex) {
        applyTexture(layer, host);
    } else {
        setHostTexture(host, nullptr);
        host_->assignColor(host, diffuse->color);
    }
    const Color& t = diffuse->transparency;
    const float alpha =
        (std::max(1.0f - t.r, 0.0f) + std::max(1.0f - t.g, 0.0f) + std::max(1.0f - t.b, 0.0f)) *
        0.33333334f;
    host_->assignAlpha(host, alpha);
}

void SkpMaterialEditor::applyTexture(const std::shared_ptr<Base_BRDF>& layer, const HostRef& host) {
    auto* diffuse = dynamic_cast<Diffuse_BRDF*>(layer.get());
    const std::shared_ptr<BaseTexture>& texture = diffuse->color_tex;
    BitmapTexture* bitmap = nullptr;
    AColorTexture* color = nullptr;
    if (textureType(texture) == kBitmapTextureType) {
        bitmap = dynamic_cast<BitmapTexture*>(texture.get());
        if (!bitmap) return;
        const std::u16string file = bitmapFile(*bitmap);
        setHostTexture(host, &file);
        const float m = diffuse->color_tex_mult;
        host_->assignColor(host, Color(m, m, m));
    } else if (splitBlend(texture, bitmap, color)) {
        const std::u16string file = bitmapFile(*bitmap);
        setHostTexture(host, &file);
        host_->assignColor(host, rgb(color->texture));
    } else if (textureType(texture) == kAColorTextureType) {
        color = dynamic_cast<AColorTexture*>(texture.get());
        if (!color) return;
        setHostTexture(host, nullptr);
        host_->assignColor(host, rgb(color->texture));
    }
}

void SkpMaterialEditor::setHostTexture(const HostRef& host, const std::u16string* path) {
    if (!host || !host_->isHostMaterial(host)) return;
    std::u16string current;
    // The same file is not loaded again.
    if (path && host_->textureFile(host, current) &&
        equalsIgnoreCase(fileNameOf(current), fileNameOf(*path))) {
        return;
    }
    host_->assignTexture(host, path);
}

void SkpMaterialEditor::SetBasicOmbraMaterial(const std::shared_ptr<Base_BRDF>& layer,
                                              const HostRef& host) {
    auto* target = dynamic_cast<Diffuse_BRDF*>(layer.get());
    if (!target || target->getType() != kDiffuseType || !host || !host_->isHostMaterial(host)) {
        return;
    }
    BasicMaterialRecord record;
    if (!host_->convertMaterial(host, record)) {
        host_->warn(kConvertFailed);
        return;
    }
    const LayeredPair pair = materialToLayered(record);
    const std::vector<std::shared_ptr<Base_BRDF>> made = diffuseLayers(pair.front);
    if (made.empty()) return;
    const auto* source = dynamic_cast<const Diffuse_BRDF*>(made.front().get());
    target->transparency = source->transparency;
    if (record.type != BasicMaterialRecord::kColorOnly) {
        target->color_tex = source->color_tex;
        return;
    }
    target->color = source->color;
    // The host material no longer has a bitmap.
    if (isBitmapOrBitmapBlend(target->color_tex)) target->color_tex.reset();
}

void SkpMaterialEditor::refreshBasicMaterial(const MaterialPtr& material, const HostRef& host) {
    for (const auto& layer : diffuseLayers(material)) {
        if (layer->layerFlagB) continue;
        SetBasicOmbraMaterial(layer, host);
        host_->displayName(host);
        return;
    }
}
