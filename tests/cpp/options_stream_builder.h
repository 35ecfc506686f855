// Test-side assembly of option streams, byte by byte in little-endian order, independent of the
// archive's own writers. Row lists follow the field tables of the options record; each numeric
// row holds a value derived from its row number so that a misaligned read shows at once.
#pragma once

#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "record_builder.h"

namespace options_test {

using StreamBuilder = ::RecordBuilder;

inline float rowFloat(int row) { return static_cast<float>(row) + 0.25f; }

// CorvaneParams rows 1 to 173 of the newest layout, by group of the table.
inline const std::string kParamsRows =
    "iiiiifiifiiiififiiifiifiiiiifiiififfif"  // 1-38 sampler, camera, dof, motion blur
    "iiifffififiii"                           // 39-51 GI and DMC GI
    "iiiiifffiiiiiiiiisiiis"                  // 52-73 irradiance map
    "iffi"                                    // 74-77 detail rows (one float before major 5)
    "ifiiiifiiiisfiifs"                       // 78-94 photon map
    "ififiiiiisiisiiiiii"                     // 95-113 light cache
    "ififfiiiss"                              // 114-123 caustics
    "iffiiiiiiiifffif"                        // 124-139 raycaster, regions, DMC sampler
    "iiiiif"                                  // 140 path sampler, 141-145 colour mapping
    "iiiiiiiiiiiifiiifiiifiiifiii";           // 146-173 options and displacement

// Appends the CorvaneParams block of `major`; rows keep their table numbers where rows are missing.
inline void appendParams(StreamBuilder& b, uint32_t major) {
    const auto put = [&](int first, int last) {
        b.rows(kParamsRows.substr(first - 1, last - first + 1), first);
    };
    b.u32(major << 16);
    put(1, 73);
    if (major >= 5) {
        put(74, 77);
    } else {
        b.f32(99.0f);  // the single old detail value
    }
    put(78, 139);
    if (major >= 2) put(140, 140);
    put(141, 143);
    if (major >= 3) put(144, 144);
    if (major >= 4) put(145, 145);
    put(146, 173);
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
    b.f32(7.0f).f32(8.0f).f32(9.0f);                   // fov, nearRange, farRange
    b.f32(123.0f).f32(0.25f).f32(15.0f);               // focal_dist, aperture, rotation
    b.i32(1).f32(0.5f).f32(900.0f).i32(2);             // clipping, near, far, projType
    b.f32(1.5f).i32(1);                                // zoomFractor, infiniteProj
    b.f32(321.0f).i32(0).f32(4.5f).f32(0.75f).i32(1);  // height, auto_fit, dist, curve, ortho
    for (int i = 0; i < 6; ++i) b.color(0.1f * i, 0.2f, 0.3f);
    b.f32(0.1f).f32(0.2f).f32(0.3f).f32(0.4f);  // region
    for (int i = 0; i < 8; ++i) b.i32(40 + i);  // carried A, B, bmp and r sizes
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

struct OptionsStream {
    OptionsStream(uint32_t streamMajor = 0x17) : major(streamMajor) {}  // {major}: that major

    uint32_t major;
    std::vector<int32_t> channels{1, 2};
    std::string firstPath = "p36";
    bool bgTexturePresent = false;
    std::optional<uint32_t> channelCount =
        std::nullopt;  // a forged count: the stream ends after the ids
    std::optional<StreamBuilder> refractChild =
        std::nullopt;  // type id and stream; the stream ends behind it
};

// AllOptions rows of any major in table order; numeric rows hold their row number.
inline StreamBuilder buildOptions(const OptionsStream& s) {
    StreamBuilder b;
    const auto has = [&](uint32_t since) { return s.major >= since; };
    b.u32((s.major << 16) | 1);
    appendParams(b, 5);
    appendFrameData(b);
    appendStamp(b, 2, "stamp");
    if (has(5)) appendCameraV1(b, 50.0f, 300.0f);
    b.boolean(s.bgTexturePresent);
    if (s.bgTexturePresent) b.i32(9999);  // a type id no texture class has
    b.boolean(false);
    b.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    b.rows("iiiiiiiiiii", 9);
    if (has(2)) b.rows("i", 20);
    if (has(3)) b.rows("i", 21);
    if (has(5)) b.rows("i", 22);
    if (has(6)) b.rows("i", 23);
    b.rows("ffffffff", 24);
    if (has(4)) b.rows("ffi", 32);
    b.u32(s.channelCount.value_or(static_cast<uint32_t>(s.channels.size())));
    for (int32_t id : s.channels) b.i32(id);
    if (s.channelCount) return b;
    b.text(s.firstPath);
    b.rows("sssssssss", 37);
    if (has(1)) b.color(0.7f, 0.7f, 0.7f).rows("i", 47);
    if (has(7)) b.rows("ii", 48);
    if (has(8)) b.rows("iif", 50);
    if (has(9)) {
        b.color(1, 0, 0).color(0, 1, 0).rows("ffffii", 55).boolean(false);
        b.boolean(s.refractChild.has_value());
        if (s.refractChild) return b.append(*s.refractChild);
    }
    if (has(0x10)) b.rows("i", 63);
    if (has(0x11)) b.rows("ff", 64);
    if (has(0x12)) b.rows("f", 66);
    if (has(0x13)) b.rows("i", 67);
    if (has(0x14)) b.rows("iis", 68);
    if (has(0x16)) b.rows("i", 71);
    if (has(0x17)) b.rows("i", 72);
    return b;
}

// ---------------------------------------------------------------- reading options documents

inline std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) out.push_back(line);
    return out;
}

inline std::string trimmed(const std::string& line) {
    return line.substr(line.find_first_not_of(' '));
}

// The inline value of a settings block's parameter, or the joined lines of a block value.
inline std::string valueOf(const std::string& doc, const std::string& block,
                           const std::string& name) {
    const std::vector<std::string> all = lines(doc);
    bool inBlock = false;
    for (size_t i = 0; i < all.size(); ++i) {
        const std::string line = trimmed(all[i]);
        if (line.rfind("<ombraplugin name=\"", 0) == 0) {
            inBlock = line == "<ombraplugin name=\"" + block + "\" type=\"settings\">";
        }
        if (!inBlock || line.find("\" name=\"" + name + "\" ") == std::string::npos) continue;
        const std::string next = trimmed(all[i + 1]);
        if (next != "<value>") return next.substr(7, next.size() - 15);
        std::string joined;
        for (size_t j = i + 2; trimmed(all[j]) != "</value>"; ++j) joined += trimmed(all[j]);
        return joined;
    }
    return "<missing>";
}

}  // namespace options_test
