#include <locale>
#include <sstream>
#include <string>

#include "bridge/entry_guard.h"
#include "bridge/host_classes.h"
#include "bridge/ruby_value.h"
#include "bridge/value_arguments.h"
#include "bridge/value_classes.h"
#include "bridge/wrapped_records.h"
#include "xml/text.h"

using CorvaneCore::Color;

namespace {

VALUE materialInitialize(VALUE self) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        BasicMaterialRecord* record = materialOf(self);
        if (record) *record = BasicMaterialRecord();
        return self;
    });
}

template <class Read>
VALUE materialGetter(VALUE self, const Read& read) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        const BasicMaterialRecord* record = materialOf(self);
        return record ? read(*record) : Qnil;
    });
}

// A setter gives self, or nil when the value is of the wrong kind.
template <class Write>
VALUE materialSetter(VALUE self, const Write& write) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        BasicMaterialRecord* record = materialOf(self);
        return record && write(*record) ? self : Qnil;
    });
}

VALUE materialType(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) { return INT2NUM(r.type); });
}
VALUE materialSetType(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) {
        int type = 0;
        if (!toInt(v, type)) return false;
        r.type = type;
        return true;
    });
}
VALUE materialColor(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) {
        const VALUE color = allocColor(valueClasses().color);
        *colorOf(color) = r.color;
        return color;
    });
}
VALUE materialSetColor(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) {
        const Color* color = colorOf(v);
        if (!color) return false;
        r.color = *color;
        return true;
    });
}

// Text setters take a String only; anything else gives nil rather than a conversion error.
bool textOf(VALUE value, std::u16string& out) {
    return RB_TYPE_P(value, T_STRING) && rubyToWide(value, out);
}

using TextField = std::u16string BasicMaterialRecord::*;

VALUE materialText(VALUE self, TextField field) {
    return materialGetter(self, [field](const BasicMaterialRecord& r) {
        VALUE out = Qnil;
        wideToRuby(r.*field, out);
        return out;
    });
}
VALUE materialSetText(VALUE self, VALUE v, TextField field) {
    return materialSetter(self, [&](BasicMaterialRecord& r) {
        std::u16string text;
        if (!textOf(v, text)) return false;
        r.*field = text;
        return true;
    });
}

VALUE materialTexture(VALUE self) { return materialText(self, &BasicMaterialRecord::texture); }
VALUE materialSetTexture(VALUE self, VALUE v) {
    return materialSetText(self, v, &BasicMaterialRecord::texture);
}
VALUE materialName(VALUE self) { return materialText(self, &BasicMaterialRecord::name); }
VALUE materialSetName(VALUE self, VALUE v) {
    return materialSetText(self, v, &BasicMaterialRecord::name);
}
VALUE materialAlpha(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) { return DBL2NUM(r.alpha); });
}
VALUE materialSetAlpha(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) { return toFloat(v, r.alpha); });
}
VALUE materialUseAlpha(VALUE self) {
    return materialGetter(
        self, [](const BasicMaterialRecord& r) { return r.use_alpha ? Qtrue : Qfalse; });
}
VALUE materialSetUseAlpha(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) { return toBool(v, r.use_alpha); });
}

VALUE materialToS(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) {
        std::ostringstream out;
        out.imbue(std::locale::classic());
        out << "Name: " << CorvaneCore::wideToUtf8(r.name)
            << "\tColor: " << numbersText({r.color.r, r.color.g, r.color.b}, ", ")
            << "\nAlpha: " << r.alpha << "\tUse Alpha: " << r.use_alpha
            << "\nTexture: " << CorvaneCore::wideToUtf8(r.texture);
        return textValue(out.str());
    });
}

bool sameMaterial(const BasicMaterialRecord& a, const BasicMaterialRecord& b) {
    return CorvaneCore::equalsIgnoreCase(a.texture, b.texture) &&
           CorvaneCore::equalsIgnoreCase(a.name, b.name) && a.color == b.color &&
           a.alpha == b.alpha && a.type == b.type && a.use_alpha == b.use_alpha;
}

struct ComparisonTexts {
    const char* invalidArgument;
    const char* wrongType;
};

VALUE compareMaterials(VALUE self, VALUE other, const ComparisonTexts& texts, bool wantEqual) {
    return rubyEntry([&](EntryCall& error) -> VALUE {
        const BasicMaterialRecord* mine = materialOf(self);
        if (!mine) return error.fail(rb_eRuntimeError, "[Quillon::Material#==] - invalid self\n");
        if (NIL_P(other)) return error.fail(rb_eRuntimeError, texts.invalidArgument);
        if (!rb_typeddata_is_kind_of(other, &kMaterialType)) {
            return error.fail(rb_eRuntimeError, texts.wrongType);
        }
        const BasicMaterialRecord* theirs = materialOf(other);
        if (!theirs) return error.fail(rb_eRuntimeError, texts.invalidArgument);
        return sameMaterial(*mine, *theirs) == wantEqual ? Qtrue : Qfalse;
    });
}

VALUE materialIsEqual(VALUE self, VALUE other) {
    static const ComparisonTexts texts{
        "[Quillon::Material#==] - invalid argument 1\n",
        "[Quillon::Material#==] - argument 1 expected to be of type Quillon::Material\n"};
    return compareMaterials(self, other, texts, true);
}

VALUE materialNotEqual(VALUE self, VALUE other) {
    static const ComparisonTexts texts{
        "[Quillon::Material#!=] - invalid argument 1\n",
        "[Quillon::Material#!=] - argument 1 expected to be of type Quillon::Material\n"};
    return compareMaterials(self, other, texts, false);
}

}  // namespace

void defineMaterial(VALUE under) {
    const VALUE c = rb_define_class_under(under, "Material", rb_cObject);
    valueClasses().material = c;
    rb_define_alloc_func(c, allocMaterial);
    rb_define_method(c, "initialize", RUBY_METHOD_FUNC(materialInitialize), 0);
    rb_define_method(c, "type", RUBY_METHOD_FUNC(materialType), 0);
    rb_define_method(c, "type=", RUBY_METHOD_FUNC(materialSetType), 1);
    rb_define_method(c, "color", RUBY_METHOD_FUNC(materialColor), 0);
    rb_define_method(c, "color=", RUBY_METHOD_FUNC(materialSetColor), 1);
    rb_define_method(c, "texture", RUBY_METHOD_FUNC(materialTexture), 0);
    rb_define_method(c, "texture=", RUBY_METHOD_FUNC(materialSetTexture), 1);
    rb_define_method(c, "name", RUBY_METHOD_FUNC(materialName), 0);
    rb_define_method(c, "name=", RUBY_METHOD_FUNC(materialSetName), 1);
    rb_define_method(c, "alpha", RUBY_METHOD_FUNC(materialAlpha), 0);
    rb_define_method(c, "alpha=", RUBY_METHOD_FUNC(materialSetAlpha), 1);
    rb_define_method(c, "use_alpha", RUBY_METHOD_FUNC(materialUseAlpha), 0);
    rb_define_method(c, "use_alpha=", RUBY_METHOD_FUNC(materialSetUseAlpha), 1);
    rb_define_method(c, "to_s", RUBY_METHOD_FUNC(materialToS), 0);
    rb_define_method(c, "is_equal?", RUBY_METHOD_FUNC(materialIsEqual), 1);
    rb_define_method(c, "not_equal?", RUBY_METHOD_FUNC(materialNotEqual), 1);
}
