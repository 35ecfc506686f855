// The upgrade pass's host in Ruby: each operation is a protected call or an evaluated text, as
// the host's Ruby API and the plug-in's helpers offer them. Installed by RegisterHostClasses.
#include "bridge/upgrade_host.h"

#include <ruby.h>

#include "bridge/host_classes.h"
#include "bridge/host_dictionary.h"
#include "bridge/host_ids.h"
#include "bridge/layered_material_bridge.h"
#include "bridge/ruby_archive.h"
#include "bridge/ruby_value.h"
#include "upgrade/skp_material_editor.h"

// The pass's keys of the plug-in's dictionary, as pinned Ruby strings.
struct SkpMaterialEditorKeys {
    static RubyValueHolder MaterialKey() {
        static VALUE key = Qnil;
        return sharedKeyString(key, "ombra_material",
                               "[SkpMaterialEditor::MaterialKey]- About to go boom...\n");
    }
    static RubyValueHolder MaterialTypeKey() {
        static VALUE key = Qnil;
        return sharedKeyString(key, "ombra_material_type",
                               "[SkpMaterialEditor::MaterialTypeKey]- About to go boom...\n");
    }
    static RubyValueHolder MaterialNameKey() {
        static VALUE key = Qnil;
        return sharedKeyString(key, "ombra_material_name",
                               "[SkpMaterialEditor::MaterialNameKey]- About to go boom...\n");
    }
};

namespace {

struct RubyHostObject : HostObject {
    explicit RubyHostObject(VALUE v) : value(v) {}
    RubyValueHolder value;
};

// Nil and false are no object.
HostRef wrap(VALUE value) {
    return RTEST(value) ? std::make_shared<RubyHostObject>(value) : nullptr;
}

VALUE unwrap(const HostRef& ref) {
    const auto* object = dynamic_cast<const RubyHostObject*>(ref.get());
    return object ? object->value.get() : Qnil;
}

RubyValueHolder keyOf(MaterialAttribute key) {
    switch (key) {
        case MaterialAttribute::Material:
            return SkpMaterialEditorKeys::MaterialKey();
        case MaterialAttribute::MaterialType:
            return SkpMaterialEditorKeys::MaterialTypeKey();
        case MaterialAttribute::MaterialName:
            return SkpMaterialEditorKeys::MaterialNameKey();
    }
    return RubyValueHolder();
}

VALUE warnText(VALUE text) {
    rb_warn("%s", StringValueCStr(text));
    return Qnil;
}

ID idOf(const char* name) { return rb_intern(name); }

class RubyHostModelOps : public HostModelOps {
public:
    HostRef activeModel() override { return call(sketchupModule(), hostMethod(kActiveModel)); }
    bool askYesNo(const std::string& text) override { return AskYesNo(text); }
    void showMessage(const std::string& text) override { ShowMessage(text); }
    void warn(const std::string& text) override {
        // A warning hook may raise; that is dropped here like any failing call.
        callRaising(warnText, rb_str_new(text.data(), static_cast<long>(text.size())));
    }
    std::u16string modelPath(const HostRef& model) override {
        RubyValueHolder path;
        protectedCall(path, unwrap(model), idOf("path"));
        return wideOf(path.get());
    }

    bool startOperation() override {
        RubyValueHolder result;
        return protectedEval("Sketchup.active_model.start_operation('Quillon Scene Upgrade')",
                             &result) &&
               result.get() == Qtrue;
    }
    void touchActiveModel() override { protectedEval("Sketchup.active_model"); }
    bool commitOperation() override {
        RubyValueHolder result;
        protectedEval("Sketchup.active_model.commit_operation", &result);
        return result.get() == Qtrue;
    }
    void abortOperation() override { protectedEval("Sketchup.active_model.abort_operation"); }

    bool materialCount(long& count) override { return materialsNumber(hostMethod(kCount), count); }
    bool materialLength(long& length) override {
        return materialsNumber(hostMethod(kLength), length);
    }
    HostRef materialAt(long index) override {
        return call(materials().get(), hostMethod(kIndex), LONG2NUM(index));
    }
    HostRef addMaterial(const std::u16string& name) override {
        RubyValueHolder text;
        wideToRuby(name, text);
        return call(materials().get(), hostMethod(kAdd), text.get());
    }

    bool nameMatches(const HostRef& material, const std::u16string& name) override {
        return caseEqual(material, hostMethod(kName), name);
    }
    bool displayNameMatches(const HostRef& material, const std::u16string& name) override {
        return caseEqual(material, hostMethod(kDisplayName), name);
    }
    std::u16string displayName(const HostRef& material) override {
        RubyValueHolder name;
        protectedCall(name, unwrap(material), hostMethod(kDisplayName));
        return wideOf(name.get());
    }
    bool isHostMaterial(const HostRef& object) override {
        const VALUE klass = hostClass(HostClass::Material);
        return !NIL_P(klass) && RTEST(rb_obj_is_kind_of(unwrap(object), klass));
    }
    bool textureFile(const HostRef& material, std::u16string& file) override {
        RubyValueHolder texture, name;
        protectedCall(texture, unwrap(material), idOf("texture"));
        if (!texture.isTruthy()) return false;
        protectedCall(name, texture.get(), idOf("filename"));
        file = wideOf(name.get());
        return true;
    }
    void assignTexture(const HostRef& material, const std::u16string* path) override {
        RubyValueHolder text, ignored;
        if (path) wideToRuby(*path, text);
        protectedCall(ignored, unwrap(material), hostMethod(kTextureSet), text.get());
    }
    void assignColor(const HostRef& material, const CorvaneCore::Color& color) override {
        RubyValueHolder rgb, ignored;
        colorToRuby(color, rgb);
        protectedCall(ignored, unwrap(material), hostMethod(kColorSet), rgb.get());
    }
    void assignAlpha(const HostRef& material, float alpha) override {
        RubyValueHolder ignored;
        protectedCall(ignored, unwrap(material), hostMethod(kAlphaSet), DBL2NUM(alpha));
    }

    HostRef textValue(const std::u16string& text) override {
        VALUE out = Qnil;
        wideToRuby(text, out);
        return wrap(out);
    }
    HostRef intValue(int32_t value) override { return wrap(INT2NUM(value)); }
    HostRef bytesValue(CorvaneCore::QuickArchive& archive) override {
        VALUE out = Qnil;
        if (!ArchiveToRubyArray(archive, out)) return nullptr;
        return wrap(out);
    }
    bool setAttribute(const HostRef& owner, MaterialAttribute key, const HostRef& value) override {
        RubyValueHolder o(unwrap(owner)), name = GuidValue(), k = keyOf(key), v(unwrap(value));
        return SetDictionaryValue(o, name, k, v, true);
    }
    bool readTextAttribute(const HostRef& owner, MaterialAttribute key,
                           std::u16string& out) override {
        RubyValueHolder o(unwrap(owner)), name = GuidValue(), k = keyOf(key), value;
        if (!GetDictionaryValue(o, name, k, value)) return false;
        out = wideOf(value.get());
        return true;
    }
    bool eraseAttribute(const HostRef& owner, MaterialAttribute key) override {
        RubyValueHolder out, o(unwrap(owner)), name = GuidValue(), k = keyOf(key);
        DeleteDictionaryKey(out, o, name, k);
        return out.get() == Qtrue;
    }

    bool allEntities(std::vector<HostRef>& out) override {
        RubyValueHolder list;
        protectedCall(list, quillonModule(), idOf("grab_all_entities"));
        if (NIL_P(list.get())) return false;
        if (!RB_TYPE_P(list.get(), T_ARRAY)) return true;
        for (long i = 0; i < RARRAY_LEN(list.get()); ++i) {
            out.push_back(wrap(RARRAY_AREF(list.get(), i)));
        }
        return true;
    }
    void paint(const HostRef& entity, const HostRef& material) override {
        RubyValueHolder ignored;
        protectedCall(ignored, unwrap(entity), hostMethod(kMaterialSet), unwrap(material));
    }

    // These two helpers go to the interned name of the plug-in's module, not to the module
    // itself, so they reach only a receiver that answers them under that name.
    HostRef findSkpMaterial(const std::u16string& name) override {
        RubyValueHolder text;
        wideToRuby(name, text);
        return call(quillonName(), idOf("find_skp_material"), text.get());
    }
    void hackDeleteSkpMaterial(const HostRef& material) override {
        call(quillonName(), idOf("hack_delete_skp_material"), unwrap(material));
    }
    void evaluateMaterial(const HostRef& material) override {
        call(quillonModule(), idOf("evaluate_material"), unwrap(material));
    }
    bool convertMaterial(const HostRef& material, BasicMaterialRecord& out) override {
        RubyValueHolder value;
        protectedCall(value, quillonModule(), idOf("convert_material"), unwrap(material));
        return materialRecordOf(value.get(), out);
    }

private:
    static VALUE quillonName() { return ID2SYM(rb_intern("Quillon")); }

    static std::u16string wideOf(VALUE value) {
        std::u16string text;
        if (RB_TYPE_P(value, T_STRING)) rubyToWide(value, text);
        return text;
    }

    static HostRef call(VALUE receiver, ID method) {
        RubyValueHolder out;
        protectedCall(out, receiver, method);
        return wrap(out.get());
    }
    static HostRef call(VALUE receiver, ID method, VALUE arg) {
        RubyValueHolder out;
        protectedCall(out, receiver, method, arg);
        return wrap(out.get());
    }

    RubyValueHolder materials() {
        RubyValueHolder model, list;
        protectedCall(model, sketchupModule(), hostMethod(kActiveModel));
        protectedCall(list, model.get(), hostMethod(kMaterials));
        return list;
    }

    bool materialsNumber(ID method, long& out) {
        RubyValueHolder number;
        protectedCall(number, materials().get(), method);
        return RTEST(number.get()) && toLong(number.get(), out);
    }

    bool caseEqual(const HostRef& material, ID nameMethod, const std::u16string& name) {
        RubyValueHolder own, text, answer;
        protectedCall(own, unwrap(material), nameMethod);
        wideToRuby(name, text);
        protectedCall(answer, own.get(), hostMethod(kCasecmp), text.get());
        return answer.get() == INT2FIX(0);
    }
};

}  // namespace

void installRubyUpgradeHost() {
    static RubyHostModelOps* host = new RubyHostModelOps();  // lives as long as the editor
    SkpMaterialEditor::instance().setHost(host);
}
