// Stored scene records assembled byte by byte from the field tables of the scene record, the
// options record, the material set, the sun and the sky.
#pragma once

#include <string>

#include "options_stream_builder.h"

namespace scene_test {

using options_test::StreamBuilder;

// An options record of the newest layout (0x17, minor 1). Numeric rows hold their row number,
// so img_width (row 13) is 13 and the image filter type (row 11) is 11.
inline void appendOptions(StreamBuilder& b) {
    options_test::OptionsStream options;
    options.channels = {101, 102};  // Diffuse, Reflection
    b.append(options_test::buildOptions(options));
}

// A layered material of version 4 without layers: list, double_sided, options A to C, the
// base section (version 2: name, uuid), option D.
inline void appendLayeredMaterial(StreamBuilder& b, const std::string& name,
                                  const std::string& uuid) {
    b.u32(0x40000).u32(0).i32(0).i32(0).i32(1).i32(1);
    b.u32(0x20000).text(name).text(uuid);
    b.i32(0);
}

// Material set version 2: the materials (type id, stream), then the uuid table.
inline void appendMaterialSet(StreamBuilder& b, const std::string& name, const std::string& uuid) {
    b.u32(0x20000).u32(1);
    b.i32(1);
    appendLayeredMaterial(b, name, uuid);
    b.u32(1).text(uuid).text(name);
}

// A sun light of version 3: plain transform, the fields of version 1, id and name, the two flags.
inline void appendSunV3(StreamBuilder& b, const std::string& id, const std::string& name,
                        float turbidity) {
    b.u32(0x30000);
    options_test::appendDoubleTransform(b, 1.0f);  // twelve floats, as a transform is stored
    b.f32(0).f32(0).f32(1);                        // up_vector
    b.f32(0.0f).f32(turbidity).f32(2.0f).f32(1.0f).f32(1.0f).f32(50.0f).f32(150.0f).f32(0.35f);
    b.i32(500).i32(1000).i32(8).boolean(true);
    b.text(id).text(name);
    b.boolean(true).boolean(false);
}

// A sky of version 1 without a sun of its own.
inline void appendSkyV1(StreamBuilder& b) { b.u32(0x10000).boolean(false); }

// The objects of each major, in the order the scene record holds them.
inline StreamBuilder sceneRecord(uint32_t major, float sunTurbidity = 7.5f) {
    StreamBuilder b;
    b.u32(major << 16);
    appendOptions(b);
    if (major >= 2) appendMaterialSet(b, "Brick", "uuid-brick");
    if (major == 3 || major == 4) appendSunV3(b, "{stored-sun-id}", "Stored", sunTurbidity);
    if (major == 4) appendSkyV1(b);
    return b;
}

}  // namespace scene_test
