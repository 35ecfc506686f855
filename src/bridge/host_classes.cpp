#include "bridge/host_classes.h"

#include "bridge/entry_guard.h"
#include "bridge/host_ids.h"
#include "bridge/upgrade_host.h"
#include "bridge/value_classes.h"

namespace {

constexpr int kHostClassCount = static_cast<int>(HostClass::Count);
const char* const kHostClassPaths[kHostClassCount] = {"Sketchup::ComponentDefinition",
                                                      "Sketchup::ComponentInstance",
                                                      "Sketchup::Material",
                                                      "Sketchup::Group",
                                                      "Sketchup::Face",
                                                      "Sketchup::Vertex",
                                                      "Sketchup::Drawingelement",
                                                      "Sketchup::Image",
                                                      "Sketchup::Entity",
                                                      "Sketchup::Model",
                                                      "Sketchup::Color",
                                                      "Sketchup::Texture",
                                                      "Geom::Vector3d",
                                                      "Geom::Point3d",
                                                      "Geom::Transformation",
                                                      "Geom::PolygonMesh"};

struct Handles {
    VALUE registeredModule = Qnil;
    VALUE quillon = Qnil;
    VALUE sketchup = Qnil;
    VALUE hostClasses[kHostClassCount];
    Handles() {
        for (VALUE& v : hostClasses) v = Qnil;
    }
};

Handles& handles() {
    static Handles* h = new Handles();  // never destroyed; every value in it is pinned
    return *h;
}

VALUE pathToClass(VALUE path) { return rb_path2class(StringValueCStr(path)); }

// A pinned handle, or nil with a pending ArgumentError when the path names nothing.
VALUE lookUp(const char* path) {
    const VALUE found = callRaising(pathToClass, rb_str_new_cstr(path));
    if (!NIL_P(found)) rb_gc_register_mark_object(found);
    return found;
}

}  // namespace

bool isKindOf(VALUE value, VALUE klass) {
    return !NIL_P(klass) && RTEST(rb_obj_is_kind_of(value, klass));
}

bool isHost(VALUE value, HostClass which) { return isKindOf(value, hostClass(which)); }

VALUE quillonModule() { return handles().quillon; }
VALUE sketchupModule() { return handles().sketchup; }
VALUE hostClass(HostClass which) { return handles().hostClasses[static_cast<int>(which)]; }

namespace {

void registerHostClasses(VALUE module) {
    Handles& h = handles();
    static bool pinned = false;
    if (!pinned) {
        rb_gc_register_address(&h.registeredModule);
        pinned = true;
    }
    h.registeredModule = module;
    const VALUE quillon = lookUp("Quillon");
    if (hasPendingException()) return;
    VALUE found[kHostClassCount];
    for (int i = 0; i < kHostClassCount; ++i) {
        found[i] = lookUp(kHostClassPaths[i]);
        if (hasPendingException()) return;
    }
    const VALUE sketchup = lookUp("Sketchup");
    if (hasPendingException()) return;
    h.quillon = quillon;
    for (int i = 0; i < kHostClassCount; ++i) h.hostClasses[i] = found[i];
    h.sketchup = sketchup;
    internHostMethods();
    defineVector(quillon);
    defineColor(quillon);
    defineTransform(quillon);
    defineMaterial(quillon);
    installRubyUpgradeHost();
}

}  // namespace

// Inside a Ruby-facing function the error belongs to that function's call; called on its own
// (after load), it is a call of its own. Either way a missing class raises when the call ends,
// never in a later one.
void RegisterHostClasses(VALUE module) {
    if (currentEntryCall()) return registerHostClasses(module);
    rubyEntry([&] {
        registerHostClasses(module);
        return Qnil;
    });
}
