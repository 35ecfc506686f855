// A host model kept in plain C++ objects, so the material upgrade pass runs without Ruby.
// Every operation the pass makes is logged in order.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "upgrade/skp_material_editor.h"
#include "xml/text.h"

namespace upgrade_test {

struct FakeValue : HostObject {
    std::variant<std::u16string, int32_t, std::vector<uint8_t>> value;
};

struct FakeEntity : HostObject {
    std::map<MaterialAttribute, HostRef> dictionary;
    bool hasDictionary = false;
    HostRef painted;
};

struct FakeMaterial : FakeEntity {
    std::u16string name, displayName;
    std::optional<std::u16string> texture;
    std::optional<CorvaneCore::Color> color;
    std::optional<float> alpha;
    std::optional<BasicMaterialRecord> basic;  // what Quillon.convert_material gives
    int textureAssignments = 0;
};

inline std::shared_ptr<FakeMaterial> hostMaterial(const std::u16string& name) {
    auto m = std::make_shared<FakeMaterial>();
    m->name = m->displayName = name;
    return m;
}

inline FakeMaterial* asMaterial(const HostRef& m) { return dynamic_cast<FakeMaterial*>(m.get()); }
inline FakeEntity* asEntity(const HostRef& e) { return dynamic_cast<FakeEntity*>(e.get()); }

template <class T>
HostRef fakeValue(const T& v) {
    auto made = std::make_shared<FakeValue>();
    made->value = v;
    return made;
}

// The value of kind T a dictionary entry holds; null for no value or one of another kind.
template <class T>
const T* valueOf(const HostRef& value) {
    auto* v = dynamic_cast<FakeValue*>(value.get());
    return v ? std::get_if<T>(&v->value) : nullptr;
}

inline std::u16string textOf(const HostRef& value) {
    const std::u16string* text = valueOf<std::u16string>(value);
    return text ? *text : u"<not text>";
}

class FakeHost : public HostModelOps {
public:
    HostRef model = std::make_shared<HostObject>();
    bool answerYes = true, startSucceeds = true, commitSucceeds = true;
    std::u16string path;
    std::vector<std::shared_ptr<FakeMaterial>> materials;
    std::vector<std::shared_ptr<FakeEntity>> entities;
    std::vector<std::string> prompts, messages, warnings, log;
    int activeModelCalls = 0;

    std::shared_ptr<FakeMaterial> material(const std::u16string& name) const {
        for (const auto& m : materials) {
            if (m->name == name) return m;
        }
        return nullptr;
    }
    bool logged(const std::string& entry, bool result = true) {
        log.push_back(entry);
        return result;
    }
    std::string nameOf(const HostRef& m) { return CorvaneCore::wideToUtf8(displayName(m)); }

    HostRef activeModel() override {
        ++activeModelCalls;
        logged("active_model");
        return model;
    }
    bool askYesNo(const std::string& text) override {
        prompts.push_back(text);
        return answerYes;
    }
    void showMessage(const std::string& text) override { messages.push_back(text); }
    void warn(const std::string& text) override { warnings.push_back(text); }
    std::u16string modelPath(const HostRef&) override { return path; }
    bool startOperation() override { return logged("start_operation", startSucceeds); }
    void touchActiveModel() override {}
    bool commitOperation() override { return logged("commit_operation", commitSucceeds); }
    void abortOperation() override { logged("abort_operation"); }

    bool materialCount(long& count) override {
        count = static_cast<long>(materials.size());
        return true;
    }
    bool materialLength(long& length) override { return materialCount(length); }
    HostRef materialAt(long index) override {
        if (index < 0 || index >= static_cast<long>(materials.size())) return nullptr;
        return materials[static_cast<size_t>(index)];
    }
    HostRef addMaterial(const std::u16string& name) override {
        materials.push_back(hostMaterial(name));
        logged("add " + CorvaneCore::wideToUtf8(name));
        return materials.back();
    }
    bool nameMatches(const HostRef& m, const std::u16string& name) override {
        return asMaterial(m) && CorvaneCore::equalsIgnoreCase(asMaterial(m)->name, name);
    }
    bool displayNameMatches(const HostRef& m, const std::u16string& name) override {
        return asMaterial(m) && CorvaneCore::equalsIgnoreCase(asMaterial(m)->displayName, name);
    }
    std::u16string displayName(const HostRef& m) override {
        return asMaterial(m) ? asMaterial(m)->displayName : std::u16string();
    }
    bool isHostMaterial(const HostRef& object) override { return asMaterial(object) != nullptr; }
    bool textureFile(const HostRef& m, std::u16string& file) override {
        if (!asMaterial(m) || !asMaterial(m)->texture) return false;
        file = *asMaterial(m)->texture;
        return true;
    }
    void assignTexture(const HostRef& m, const std::u16string* file) override {
        ++asMaterial(m)->textureAssignments;
        asMaterial(m)->texture = file ? std::optional<std::u16string>(*file) : std::nullopt;
    }
    void assignColor(const HostRef& m, const CorvaneCore::Color& c) override {
        asMaterial(m)->color = c;
    }
    void assignAlpha(const HostRef& m, float alpha) override { asMaterial(m)->alpha = alpha; }

    HostRef textValue(const std::u16string& text) override { return fakeValue(text); }
    HostRef intValue(int32_t v) override { return fakeValue(v); }
    HostRef bytesValue(CorvaneCore::QuickArchive& archive) override {
        std::vector<uint8_t> bytes(archive.endOffset());
        archive.setReadPos(0);
        archive.readBytes(bytes.data(), bytes.size());
        return fakeValue(bytes);
    }
    bool setAttribute(const HostRef& owner, MaterialAttribute key, const HostRef& v) override {
        if (!asEntity(owner)) return false;
        asEntity(owner)->hasDictionary = true;
        asEntity(owner)->dictionary[key] = v;
        return true;
    }
    bool readTextAttribute(const HostRef& owner, MaterialAttribute key,
                           std::u16string& out) override {
        if (!asEntity(owner) || !asEntity(owner)->dictionary.count(key)) return false;
        const std::u16string* text = valueOf<std::u16string>(asEntity(owner)->dictionary[key]);
        out = text ? *text : std::u16string();
        return true;
    }
    bool eraseAttribute(const HostRef& owner, MaterialAttribute key) override {
        if (!asEntity(owner) || !asEntity(owner)->hasDictionary) return false;
        asEntity(owner)->dictionary.erase(key);
        return true;
    }

    bool allEntities(std::vector<HostRef>& out) override {
        out.assign(entities.begin(), entities.end());
        return true;
    }
    void paint(const HostRef& entity, const HostRef& m) override { asEntity(entity)->painted = m; }

    HostRef findSkpMaterial(const std::u16string& name) override { return material(name); }
    void evaluateMaterial(const HostRef& m) override { logged("evaluate " + nameOf(m)); }
    void hackDeleteSkpMaterial(const HostRef& m) override {
        logged("delete " + nameOf(m));
        materials.erase(std::remove(materials.begin(), materials.end(), m), materials.end());
    }
    bool convertMaterial(const HostRef& m, BasicMaterialRecord& out) override {
        if (!asMaterial(m) || !asMaterial(m)->basic) return false;
        out = *asMaterial(m)->basic;
        return true;
    }
};

}  // namespace upgrade_test
