#include "bridge/host_ids.h"

namespace {

const char* const kNames[kHostMethodCount] = {"deleted?",
                                              "layer",
                                              "hidden?",
                                              "visible?",
                                              "entities",
                                              "count",
                                              "length",
                                              "[]",
                                              "[]=",
                                              "definition",
                                              "entityID",
                                              "material=",
                                              "material",
                                              "materials",
                                              "back_material=",
                                              "back_material",
                                              "vertices",
                                              "normal",
                                              "write",
                                              "load",
                                              "mesh",
                                              "polygons",
                                              "x",
                                              "y",
                                              "z",
                                              "get_front_UVQ",
                                              "get_back_UVQ",
                                              "get_UVHelper",
                                              "point_at",
                                              "instance_of?",
                                              "attribute_dictionary",
                                              "delete_key",
                                              "name",
                                              "display_name",
                                              "casecmp",
                                              "add",
                                              "clear",
                                              "transformation",
                                              "to_a",
                                              "position",
                                              "get_attribute",
                                              "set_attribute",
                                              "alpha=",
                                              "color=",
                                              "texture=",
                                              "set",
                                              "active_model"};

ID g_ids[kHostMethodCount];

}  // namespace

void internHostMethods() {
    for (int i = 0; i < kHostMethodCount; ++i) g_ids[i] = rb_intern(kNames[i]);
}

ID hostMethod(HostMethod which) { return g_ids[which]; }

const char* hostMethodName(HostMethod which) { return kNames[which]; }
