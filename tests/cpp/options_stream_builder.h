// Test-side assembly of option streams, byte by byte in little-endian order, independent of the
// archive's own writers. Row lists follow the field tables of the options record; each numeric
// row holds a value derived from its row number so that a misaligned read shows at once.
#pragma once

#include <string>
#include <vector>

#include "record_builder.h"

namespace options_test {

using StreamBuilder = ::RecordBuilder;

inline float rowFloat(int row) { return static_cast<float>(row) + 0.25f; }

// CorvaneParams rows 1 to 173, by group of the table.
inline std::string paramsRowTypes(uint32_t major) {
    std::string t;
    t += "iiiiifiifiiiififiiifiifiiiiifiiififfif";  // 1-38 sampler, camera, dof, motion blur
    t += "iiifffififiii";                           // 39-51 GI and DMC GI
    t += "iiiiifffiiiiiiiiisiiis";                  // 52-73 irradiance map
    t += major >= 5 ? "iffi" : "f";                 // 74-77 detail rows, or the old single one
    t += "ifiiiifiiiisfiifs";                       // 78-94 photon map
    t += "ififiiiiisiisiiiiii";                     // 95-113 light cache
    t += "ififfiiiss";                              // 114-123 caustics
    t += "iffiiiiiiiifffif";                        // 124-139 raycaster, regions, DMC sampler
    if (major >= 2) t += "i";                       // 140 path sampler slot
    t += "iii";                                     // 141-143 colour mapping
    if (major >= 3) t += "i";                       // 144
    if (major >= 4) t += "f";                       // 145
    t += "iiiiiiiiiiiifiiifiiifiiifiii";            // 146-173 options and displacement
    return t;
}

// Appends the CorvaneParams block; rows keep their table numbers even where rows are missing.
inline void appendParams(StreamBuilder& b, uint32_t major) {
    b.u32(major << 16);
    const std::string types = paramsRowTypes(5);
    int row = 1;
    auto put = [&](int last) {
        b.rows(types.substr(row - 1, last - row + 1), row);
        row = last + 1;
    };
    put(73);
    if (major >= 5) {
        put(77);
    } else {
        b.f32(99.0f);  // the single old detail value
        row = 78;
    }
    put(139);
    if (major >= 2) put(140);
    row = 141;
    put(143);
    if (major >= 3) put(144);
    row = 145;
    if (major >= 4) put(145);
    row = 146;
    put(173);
}

inline void appendDoubleTransform(StreamBuilder& b, float base) {
    for (int i = 0; i < 12; ++i) b.f32(base + static_cast<float>(i));
}

// The single frame data version, fields in table order with simple distinct values.
inline void appendFrameData(StreamBuilder& b) {
    b.u32(0x10000);
    b.f64(0.5).f64(1.5).f64(2.5).i32(4);
    appendDoubleTransform(b, 10.0f);
    appendDoubleTransform(b, 30.0f);
    b.f32(7.0f).f32(8.0f).f32(9.0f);          // fov, nearRange, farRange
    b.f32(123.0f).f32(0.25f).f32(15.0f);      // focal_dist, aperture, rotation
    b.i32(1).f32(0.5f).f32(900.0f).i32(2);    // clipping, near, far, projType
    b.f32(1.5f).i32(1);                       // zoomFractor, infiniteProj
    b.f32(321.0f).i32(0).f32(4.5f).f32(0.75f).i32(1);  // height, auto_fit, dist, curve, ortho
    for (int i = 0; i < 6; ++i) b.color(0.1f * i, 0.2f, 0.3f);
    b.f32(0.1f).f32(0.2f).f32(0.3f).f32(0.4f);         // region
    for (int i = 0; i < 8; ++i) b.i32(40 + i);          // carried A, B, bmp and r sizes
    b.f32(1.25f).i32(2).i32(1).i32(1).f32(0.5f).f32(2.0f);
}

inline void appendStamp(StreamBuilder& b, uint32_t major, const std::string& text) {
    b.u32(major << 16).i32(1).i32(2).i32(3).text(text);
    std::string font(60, '\0');
    for (size_t i = 0; i < font.size(); ++i) font[i] = static_cast<char>('A' + i % 26);
    if (major >= 2) b.u32(60);
    b.raw(font);
}

// A version 1 physical camera: the two animated rows are plain floats.
inline void appendCameraV1(StreamBuilder& b, float focalLength, float focusDistance) {
    b.u32(0x10000).i32(1).f32(35.0f).f32(focalLength);
    b.f32(1.1f).f32(0.2f).f32(5.6f).f32(0.3f).f32(60.0f).f32(90.0f).f32(0.1f).f32(0.2f);
    b.f32(400.0f).i32(1).f32(focusDistance);
    b.i32(1).f32(150.0f).f32(0.5f).i32(0).color(0.9f, 0.8f, 0.7f).i32(0).i32(1).i32(7);
    b.f32(12.0f).f32(0.3f).f32(0.4f).i32(1).i32(1).i32(9);
}

}  // namespace options_test
