// A host model kept in plain C++ objects, so the material upgrade pass runs without Ruby.
// Every operation the pass makes is logged in order.
#pragma once

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
    std::variant<std::wstring, int32_t, std::vector<uint8_t>> value;
};

struct FakeEntity : HostObject {
    std::map<MaterialAttribute, HostRef> dictionary;
    bool hasDictionary = false;
    HostRef painted;
};

struct FakeMaterial : FakeEntity {
    std::wstring name;
    std::wstring displayName;
    std::optional<std::wstring> texture;
    std::optional<CorvaneCore::Color> color;
    std::optional<float> alpha;
    std::optional<BasicMaterialRecord> basic;  // what Quillon.convert_material gives
    int textureAssignments = 0;
};

struct FakeModel : HostObject {};

inline std::shared_ptr<FakeMaterial> hostMaterial(const std::wstring& name) {
    auto m = std::make_shared<FakeMaterial>();
    m->name = name;
    m->displayName = name;
    return m;
}

inline FakeMaterial* asMaterial(const HostRef& m) { return dynamic_cast<FakeMaterial*>(m.get()); }

// A dictionary value as the fake host makes it.
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

inline std::wstring textOf(const HostRef& value) {
    const std::wstring* text = valueOf<std::wstring>(value);
    return text ? *text : L"<not text>";
}

class FakeHost : public HostModelOps {
public:
    HostRef model = std::make_shared<FakeModel>();
    bool answerYes = true;
    bool startSucceeds = true;
    bool commitSucceeds = true;
    bool entitiesNil = false;
    std::wstring path;
    std::vector<std::shared_ptr<FakeMaterial>> materials;
    std::vector<std::shared_ptr<FakeEntity>> entities;
    std::vector<std::string> prompts, messages, warnings, log;
    int activeModelCalls = 0;

    std::shared_ptr<FakeMaterial> material(const std::wstring& name) const {
        for (const auto& m : materials) {
            if (m->name == name) return m;
        }
        return nullptr;
    }

    HostRef activeModel() override {
        ++activeModelCalls;
        log.push_back("active_model");
        return model;
    }
    bool askYesNo(const std::string& text) override {
        prompts.push_back(text);
        return answerYes;
    }
    void showMessage(const std::string& text) override { messages.push_back(text); }
    void warn(const std::string& text) override { warnings.push_back(text); }
    std::wstring modelPath(const HostRef&) override { return path; }
    bool startOperation() override {
        log.push_back("start_operation");
        return startSucceeds;
    }
    void touchActiveModel() override {}
    bool commitOperation() override {
        log.push_back("commit_operation");
        return commitSucceeds;
    }
    void abortOperation() override { log.push_back("abort_operation"); }

    bool materialCount(long& count) override {
        count = static_cast<long>(materials.size());
        return true;
    }
    bool materialLength(long& length) override { return materialCount(length); }
    HostRef materialAt(long index) override {
        if (index < 0 || index >= static_cast<long>(materials.size())) return nullptr;
        return materials[static_cast<size_t>(index)];
    }
    HostRef addMaterial(const std::wstring& name) override {
        materials.push_back(hostMaterial(name));
        log.push_back("add " + CorvaneCore::wideToUtf8(name));
        return materials.back();
    }
    bool nameMatches(const HostRef& m, const std::wstring& name) override {
        return asMaterial(m) && CorvaneCore::equalsIgnoreCase(asMaterial(m)->name, name);
    }
    bool displayNameMatches(const HostRef& m, const std::wstring& name) override {
        return asMaterial(m) && CorvaneCore::equalsIgnoreCase(asMaterial(m)->displayName, name);
    }
    std::wstring displayName(const HostRef& m) override {
        return asMaterial(m) ? asMaterial(m)->displayName : std::wstring();
    }
    bool isHostMaterial(const HostRef& object) override { return asMaterial(object) != nullptr; }
    bool textureFile(const HostRef& m, std::wstring& file) override {
        if (!asMaterial(m) || !asMaterial(m)->texture) return false;
        file = *asMaterial(m)->texture;
        return true;
    }
    void assignTexture(const HostRef& m, const std::wstring* file) override {
        ++asMaterial(m)->textureAssignments;
        asMaterial(m)->texture = file ? std::optional<std::wstring>(*file) : std::nullopt;
    }
    void assignColor(const HostRef& m, const CorvaneCore::Color& c) override {
        asMaterial(m)->color = c;
    }
    void assignAlpha(const HostRef& m, float alpha) override { asMaterial(m)->alpha = alpha; }

    HostRef textValue(const std::wstring& text) override { return fakeValue(text); }
    HostRef intValue(int32_t v) override { return fakeValue(v); }
    HostRef bytesValue(CorvaneCore::QuickArchive& archive) override {
        std::vector<uint8_t> bytes(archive.endOffset());
        archive.setReadPos(0);
        archive.readBytes(bytes.data(), bytes.size());
        return fakeValue(bytes);
    }
    bool setAttribute(const HostRef& owner, MaterialAttribute key, const HostRef& v) override {
        auto* entity = dynamic_cast<FakeEntity*>(owner.get());
        if (!entity) return false;
        entity->hasDictionary = true;
        entity->dictionary[key] = v;
        return true;
    }
    bool readTextAttribute(const HostRef& owner, MaterialAttribute key,
                           std::wstring& out) override {
        auto* entity = dynamic_cast<FakeEntity*>(owner.get());
        if (!entity || !entity->dictionary.count(key)) return false;
        const std::wstring* text = valueOf<std::wstring>(entity->dictionary[key]);
        out = text ? *text : std::wstring();
        return true;
    }
    bool eraseAttribute(const HostRef& owner, MaterialAttribute key) override {
        auto* entity = dynamic_cast<FakeEntity*>(owner.get());
        if (!entity || !entity->hasDictionary) return false;
        entity->dictionary.erase(key);
        return true;
    }

    bool allEntities(std::vector<HostRef>& out) override {
        if (entitiesNil) return false;
        out.assign(entities.begin(), entities.end());
        return true;
    }
    void paint(const HostRef& entity, const HostRef& m) override {
        dynamic_cast<FakeEntity*>(entity.get())->painted = m;
    }

    HostRef findSkpMaterial(const std::wstring& name) override { return material(name); }
    void evaluateMaterial(const HostRef& m) override {
        log.push_back("evaluate " + CorvaneCore::wideToUtf8(displayName(m)));
    }
    void hackDeleteSkpMaterial(const HostRef& m) override {
        log.push_back("delete " + CorvaneCore::wideToUtf8(displayName(m)));
        for (size_t i = 0; i < materials.size(); ++i) {
            if (materials[i] == m) materials.erase(materials.begin() + static_cast<long>(i));
        }
    }
    bool convertMaterial(const HostRef& m, BasicMaterialRecord& out) override {
        if (!asMaterial(m) || !asMaterial(m)->basic) return false;
        out = *asMaterial(m)->basic;
        return true;
    }
};

}  // namespace upgrade_test
