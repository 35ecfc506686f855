// The material upgrade pass: moves every renderer material of an old scene onto a host
// material of its own and paints the entities with those host materials, as one undoable host
// operation. The pass talks to the host only through HostModelOps, so it stays free of Ruby.
//
// In the shipped extension it never runs: no host is installed until RegisterHostClasses, which
// the module entry does not call, and the first prompt's answer is always "no".
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "archive/quick_archive.h"
#include "archive/value_types.h"
#include "materials/base_brdf.h"
#include "materials/base_material.h"
#include "upgrade/basic_material.h"

// One object of the host (model, material, entity or attribute value), opaque to the pass.
class HostObject {
public:
    virtual ~HostObject() = default;
};
using HostRef = std::shared_ptr<HostObject>;

// Keys of the plug-in's attribute dictionary that the pass reads and writes.
enum class MaterialAttribute { Material, MaterialType, MaterialName };

// The host operations the pass uses. A null HostRef stands for Ruby's nil (or false).
class HostModelOps {
public:
    virtual ~HostModelOps() = default;

    virtual HostRef activeModel() = 0;  // Sketchup.active_model
    // Dialog texts are pasted as Ruby source, as they stand.
    virtual bool askYesNo(const std::string& text) = 0;
    virtual void showMessage(const std::string& text) = 0;
    virtual void warn(const std::string& text) = 0;
    virtual std::u16string modelPath(const HostRef& model) = 0;  // empty for an unsaved model

    // The host operation around the pass. Start and commit give whether the host said true.
    virtual bool startOperation() = 0;
    virtual void touchActiveModel() = 0;
    virtual bool commitOperation() = 0;
    virtual void abortOperation() = 0;

    // The model's materials: "count" and "length" (false when the collection or the number is
    // missing), "[]" with an index, "add" with a name.
    virtual bool materialCount(long& count) = 0;
    virtual bool materialLength(long& length) = 0;
    virtual HostRef materialAt(long index) = 0;
    virtual HostRef addMaterial(const std::u16string& name) = 0;

    // A host material: its "name" or "display_name" equals `name` by Ruby's casecmp.
    virtual bool nameMatches(const HostRef& material, const std::u16string& name) = 0;
    virtual bool displayNameMatches(const HostRef& material, const std::u16string& name) = 0;
    virtual std::u16string displayName(const HostRef& material) = 0;
    virtual bool isHostMaterial(const HostRef& object) = 0;
    // The file name of the material's texture; false when it has none.
    virtual bool textureFile(const HostRef& material, std::u16string& file) = 0;
    virtual void assignTexture(const HostRef& material,
                               const std::u16string* path) = 0;  // null clears
    virtual void assignColor(const HostRef& material, const CorvaneCore::Color& color) = 0;
    virtual void assignAlpha(const HostRef& material, float alpha) = 0;

    // Values for the attribute dictionary; null when the value cannot be made.
    virtual HostRef textValue(const std::u16string& text) = 0;
    virtual HostRef intValue(int32_t value) = 0;
    virtual HostRef bytesValue(CorvaneCore::QuickArchive& archive) = 0;  // whole blocks
    // The plug-in's dictionary: set creates it and gives whether the host took the value;
    // read gives false when there is no value (a value that is no text reads as empty text);
    // erase gives false when the owner has no dictionary.
    virtual bool setAttribute(const HostRef& owner, MaterialAttribute key,
                              const HostRef& value) = 0;
    virtual bool readTextAttribute(const HostRef& owner, MaterialAttribute key,
                                   std::u16string& out) = 0;
    virtual bool eraseAttribute(const HostRef& owner, MaterialAttribute key) = 0;

    // Entities: all of the model's (false when the helper gives nil), and painting one.
    virtual bool allEntities(std::vector<HostRef>& out) = 0;
    virtual void paint(const HostRef& entity, const HostRef& material) = 0;

    // The plug-in's own Ruby helpers on the module Quillon.
    virtual HostRef findSkpMaterial(const std::u16string& name) = 0;
    virtual void evaluateMaterial(const HostRef& material) = 0;
    virtual void hackDeleteSkpMaterial(const HostRef& material) = 0;
    virtual bool convertMaterial(const HostRef& material, BasicMaterialRecord& out) = 0;
};

// Old renderer material name to its host material, by plain character order.
using MaterialRenameMap = std::map<std::u16string, HostRef>;

class SkpMaterialEditor {
public:
    static constexpr const char* kBackupFileName = "Unnamed_QuillonSR1_Upgrade_Backup.skp";

    // Made on first use and never destroyed; it has no host until one is installed.
    static SkpMaterialEditor& instance();

    explicit SkpMaterialEditor(HostModelOps* host = nullptr) : host_(host) {}
    virtual ~SkpMaterialEditor() = default;
    void setHost(HostModelOps* host) { host_ = host; }
    HostModelOps* host() const { return host_; }

    // The entry: asks, backs the file up, and runs the pass inside one host operation, which
    // a failure aborts.
    void offerUpgrade();

    virtual void applyMaterial(const CorvaneCore::MaterialPtr& material, const HostRef& host);
    virtual void SetBasicOmbraMaterial(const std::shared_ptr<CorvaneCore::Base_BRDF>& layer,
                                       const HostRef& host);
    virtual void refreshBasicMaterial(const CorvaneCore::MaterialPtr& material,
                                      const HostRef& host);

    // The steps of the pass.
    bool backupModel(const HostRef& model);
    // False when the operation could not start; throws UpgradeFailure when it cannot commit.
    bool runUpgrade();
    void abortUpgrade();
    void convertMaterials(MaterialRenameMap& map);
    void assignEntities(const MaterialRenameMap& map);

    HostRef findHostMaterial(const CorvaneCore::MaterialPtr& material);
    bool isHostNameFree(const std::u16string& name);
    std::u16string makeUniqueName(const std::u16string& name);
    bool writeAttributes(const HostRef& host, const std::u16string& name, bool apply);
    bool clearAttributes(const HostRef& host);
    void deleteMaterial(const std::u16string& name);
    CorvaneCore::MaterialPtr resolveLinked(const CorvaneCore::MaterialPtr& material);
    void setHostTexture(const HostRef& host, const std::u16string* path);
    std::vector<HostRef> allHostMaterials();

private:
    void convertLinked(const CorvaneCore::MaterialPtr& material,
                       const CorvaneCore::MaterialPtr& firstLink, MaterialRenameMap& map);
    void convertPlain(const CorvaneCore::MaterialPtr& material, const std::u16string& name);
    void applyDiffuse(const std::shared_ptr<CorvaneCore::Base_BRDF>& layer, const HostRef& host);
    void applyTexture(const std::shared_ptr<CorvaneCore::Base_BRDF>& layer, const HostRef& host);
    void applyToReferrers(const CorvaneCore::MaterialPtr& material);

    HostModelOps* host_;
};

// The error that makes the pass abort its host operation.
class UpgradeFailure : public std::exception {
public:
    explicit UpgradeFailure(const char* message) : message_(message) {}
    const char* what() const noexcept override { return message_; }

private:
    const char* message_;
};
