#include "materials/scene_materials.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "archive/read_helpers.h"
#include "xml/number_format.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {

constexpr uint32_t kSceneMaterialsVersion = 2;
// Longer digit runs cannot be a counter that uniqueName would ever reach.
constexpr size_t kMaxCounterDigits = 18;

std::u16string trailingDigitsRemoved(const std::u16string& text) {
    size_t end = text.size();
    while (end > 0 && isAsciiDigit(text[end - 1])) --end;
    return text.substr(0, end);
}

bool startsWithIgnoreCase(const std::u16string& text, const std::u16string& prefix) {
    return text.size() >= prefix.size() && equalsIgnoreCase(text.substr(0, prefix.size()), prefix);
}

// The counter that `suffix` spells as uniqueName writes it (decimal, no leading zero), or 0.
uint64_t counterIn(const std::u16string& suffix) {
    if (suffix.empty() || suffix.size() > kMaxCounterDigits || suffix[0] == u'0') return 0;
    uint64_t value = 0;
    for (char16_t c : suffix) {
        if (!isAsciiDigit(c)) return 0;
        value = value * 10 + static_cast<uint64_t>(c - u'0');
    }
    return value;
}

std::u16string sanitisedName(std::u16string name) {
    for (char16_t& c : name) {
        if (c == u' ') c = u'_';
    }
    if (!name.empty() && isAsciiDigit(name[0])) name.insert(name.begin(), u'a');
    return name;
}

}  // namespace

std::shared_ptr<SceneMaterials> sceneMaterials() {
    static const std::shared_ptr<SceneMaterials> instance = std::make_shared<SceneMaterials>();
    return instance;
}

bool SceneMaterials::addMaterial(const MaterialPtr& material) {
    if (!material || material->name.empty()) return false;
    if (!materials_.emplace(material->name, material).second) return false;
    nameAdded(material->name);
    const std::u16string key = material->uuid.empty() ? newUuidText() : material->uuid;
    ids_[key] = material->name;
    return true;
}

void SceneMaterials::removeIdsNaming(const std::u16string& name) {
    for (auto it = ids_.begin(); it != ids_.end();) {
        it = equalsIgnoreCase(it->second, name) ? ids_.erase(it) : std::next(it);
    }
}

bool SceneMaterials::removeMaterial(const std::u16string& name) {
    const bool found = materials_.erase(name) > 0;
    if (found) nameRemoved();
    removeIdsNaming(name);
    return found;
}

bool SceneMaterials::renameMaterial(const std::u16string& oldName, const MaterialPtr& material) {
    if (!material) return false;
    const std::u16string& newName = material->name;
    if (!equalsIgnoreCase(oldName, newName) && !isNameFree(newName)) return false;
    auto entry = materials_.find(oldName);
    if (entry == materials_.end()) return false;
    materials_.erase(entry);
    materials_[newName] = material;
    nameRemoved();
    for (auto& id : ids_) {
        if (equalsIgnoreCase(id.second, oldName)) id.second = newName;
    }
    return true;
}

MaterialPtr SceneMaterials::findByName(const std::u16string& name) const {
    auto it = materials_.find(name);
    return it == materials_.end() ? nullptr : it->second;
}

MaterialPtr SceneMaterials::findByUuid(const std::u16string& uuid) const {
    auto id = ids_.find(uuid);
    return id == ids_.end() ? nullptr : findByName(id->second);
}

bool SceneMaterials::isNameFree(const std::u16string& name) const {
    return materials_.find(name) == materials_.end();
}

void SceneMaterials::names(std::vector<std::u16string>& list) const {
    list.clear();
    for (const auto& entry : materials_) list.push_back(entry.first);
}

// Notes what one name in the set means for the memo's stem: the stem itself, or a counter.
void SceneMaterials::takeIntoMemo(const std::u16string& name) const {
    if (!startsWithIgnoreCase(name, memo_.stem)) return;
    const std::u16string suffix = name.substr(memo_.stem.size());
    if (suffix.empty()) memo_.stemTaken = true;
    if (uint64_t counter = counterIn(suffix)) memo_.takenCounters.insert(counter);
    while (memo_.takenCounters.count(memo_.firstFree)) ++memo_.firstFree;
}

void SceneMaterials::nameAdded(const std::u16string& name) {
    if (!memo_.valid) return;
    if (memo_.setSize + 1 != materials_.size() || memo_.removals != removals_) {
        memo_.valid = false;
        return;
    }
    takeIntoMemo(name);
    memo_.setSize = materials_.size();
}

// The candidates are the stem, then the stem with 1, 2, ... behind it. Every name that could
// be one of them starts with the stem, so one pass over that range of the ordered map finds
// all taken candidates at once; the memo keeps them while names are only added.
std::u16string SceneMaterials::uniqueName(const std::u16string& wish) const {
    const std::u16string stem = trailingDigitsRemoved(wish);
    if (!memo_.valid || memo_.stem != stem || memo_.setSize != materials_.size() ||
        memo_.removals != removals_) {
        memo_ = NameMemo();
        memo_.stem = stem;
        for (auto it = materials_.lower_bound(stem);
             it != materials_.end() && startsWithIgnoreCase(it->first, stem); ++it) {
            takeIntoMemo(it->first);
        }
        memo_.setSize = materials_.size();
        memo_.removals = removals_;
        memo_.valid = true;
    }
    if (!memo_.stemTaken) return sanitisedName(stem);
    return sanitisedName(stem + numberText(static_cast<int64_t>(memo_.firstFree)));
}

bool SceneMaterials::serialize(QuickArchive& archive) {
    writeVersion(archive, kSceneMaterialsVersion);
    archive.write(static_cast<uint32_t>(materials_.size()));
    for (const auto& entry : materials_) {
        const MaterialPtr& material = entry.second;
        if (!material) return false;
        archive.write(static_cast<int32_t>(material->getType()));
        if (!material->serialize(archive)) return false;
    }
    archive.write(static_cast<uint32_t>(ids_.size()));
    for (const auto& id : ids_) {
        archive.write(id.first);
        archive.write(id.second);
    }
    return true;
}

// Each material's key is its own name again. Version 1 enters them as new materials, so a
// duplicate name refuses the read; version 2 takes them as they stand.
bool SceneMaterials::readMaterialList(QuickArchive& archive, bool throughAdd) {
    uint32_t count = 0;
    archive.read(count);
    for (uint32_t i = 0; i < count; ++i) {
        // Past the end a type id reads as 0 and that material's version word as 0, which
        // refuses the read.
        if (archive.remaining() == 0) return false;
        MaterialPtr material;
        if (!readRequiredChild<BaseMaterial>(archive, material, &createMaterial)) return false;
        if (throughAdd) {
            if (!addMaterial(material)) return false;
        } else {
            putMaterial(material);
        }
    }
    return true;
}

bool SceneMaterials::readIdList(QuickArchive& archive) {
    uint32_t count = 0;
    archive.read(count);
    for (uint32_t i = 0; i < count; ++i) {
        if (archive.remaining() == 0) {
            // Every entry left would read as two empty strings.
            ids_[std::u16string()] = std::u16string();
            break;
        }
        std::u16string key, value;
        archive.read(key);
        archive.read(value);
        ids_[key] = value;
    }
    return true;
}

void SceneMaterials::putMaterial(const MaterialPtr& material) {
    const size_t before = materials_.size();
    materials_[material->name] = material;
    if (materials_.size() != before) nameAdded(material->name);
}

void SceneMaterials::clear() {
    materials_.clear();
    nameRemoved();
    ids_.clear();
}

bool SceneMaterials::deserialize(QuickArchive& archive) {
    clear();
    uint32_t major = 0;
    if (!readVersion(archive, major)) return false;
    switch (major) {
        case 1:
            return readMaterialList(archive, true);
        case 2:
            return readMaterialList(archive, false) && readIdList(archive);
        default:
            return false;
    }
}

void SceneMaterials::writeXML(AssetXmlWriter& writer) {
    for (const auto& entry : materials_) {
        if (entry.second) entry.second->writeXML(writer, std::u16string());
    }
}

void SceneMaterials::dump(std::ostream& stream) const {
    for (const auto& entry : materials_) {
        stream << wideToUtf8(entry.first) << " "
               << (entry.second ? wideToUtf8(entry.second->name) : std::string()) << "\n";
    }
    stream << "Beginning UUIDs\n";
    for (const auto& id : ids_)
        stream << wideToUtf8(id.first) << " " << wideToUtf8(id.second) << "\n";
}

// Two-child wrappers and references can turn a material tree into a shared or cyclic graph
// (a reference may lead back to a material above it). A material already on the current path
// ends that branch, and the whole walk visits at most kMaxWalkVisits materials, so its cost
// stays bounded however the graph is shaped. Real trees stay far below both limits.
constexpr int kMaxWalkDepth = 256;
constexpr size_t kMaxWalkVisits = size_t(1) << 16;

namespace {

struct MaterialWalk {
    int typeId = 0;
    std::vector<MaterialPtr> found;
    std::vector<const BaseMaterial*> path;
    size_t visits = 0;

    void collect(const MaterialPtr& root) {
        if (!root || path.size() > size_t(kMaxWalkDepth) || visits >= kMaxWalkVisits) return;
        ++visits;
        if (root->getType() == typeId) {
            found.push_back(root);
            return;
        }
        if (std::find(path.begin(), path.end(), root.get()) != path.end()) return;
        path.push_back(root.get());
        for (const MaterialPtr& child : root->walkedMaterials()) collect(child);
        path.pop_back();
    }
};

}  // namespace

std::vector<MaterialPtr> collectMaterials(const MaterialPtr& root, int typeId) {
    MaterialWalk walk;
    walk.typeId = typeId;
    walk.collect(root);
    return walk.found;
}

}  // namespace CorvaneCore
