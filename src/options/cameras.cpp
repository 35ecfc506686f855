#include "options/cameras.h"

#include <cmath>
#include <iterator>

#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {

constexpr double kStartTime = 0.0;

// Before version 2 an animated camera value was stored as its value at the start time.
bool readAnimatedReal(QuickArchive& archive, AnimatedReal& real, bool asPlainFloat) {
    if (!asPlainFloat) return real.deserialize(archive);
    float value = 0.0f;
    archive.read(value);
    real.setValue(value, kStartTime);
    return true;
}

}  // namespace

// ---------------------------------------------------------------- PhysicalCamera

void PhysicalCamera::setDefaults() {
    type = 0;
    film_width = 36.0f;
    focal_length.reset();
    focal_length.setValue(40.0f, kStartTime);
    zoom_factor = 1.0f;
    distortion = 0.0f;
    f_number = 8.0f;
    lens_shift = 0.0f;
    shutter_speed = 30.0f;
    shutter_angle = 180.0f;
    shutter_offset = 0.0f;
    latency = 0.0f;
    ISO = 200.0f;
    specify_focus = 0;
    focus_distance.reset();
    focus_distance.setValue(200.0f, kStartTime);
    targeted = 0;
    target_distance = 200.0f;
    dof_display_threshold = 0.0f;
    exposure = 1;
    white_balance = Color(1.0f, 1.0f, 1.0f);
    vignetting = 1;
    blades_enable = 0;
    blades_num = 5;
    blades_rotation = 0.0f;
    center_bias = 0.0f;
    anisotropy = 0.0f;
    use_dof = 0;
    use_moblur = 0;
    subdivs = 6;
}

std::shared_ptr<BaseCamera> PhysicalCamera::clone() {
    return std::make_shared<PhysicalCamera>(*this);
}

bool PhysicalCamera::serialize(QuickArchive& archive) {
    writeVersion(archive, kMajor);
    archive.write(type);
    archive.write(film_width);
    focal_length.serialize(archive);
    archive.write(zoom_factor);
    archive.write(distortion);
    archive.write(f_number);
    archive.write(lens_shift);
    archive.write(shutter_speed);
    archive.write(shutter_angle);
    archive.write(shutter_offset);
    archive.write(latency);
    archive.write(ISO);
    archive.write(specify_focus);
    focus_distance.serialize(archive);
    archive.write(targeted);
    archive.write(target_distance);
    archive.write(dof_display_threshold);
    archive.write(exposure);
    archive.write(white_balance);
    archive.write(vignetting);
    archive.write(blades_enable);
    archive.write(blades_num);
    archive.write(blades_rotation);
    archive.write(center_bias);
    archive.write(anisotropy);
    archive.write(use_dof);
    archive.write(use_moblur);
    archive.write(subdivs);
    return true;
}

bool PhysicalCamera::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > kMajor) return false;
    const bool plainFloats = major == 1;
    archive.read(type);
    archive.read(film_width);
    if (!readAnimatedReal(archive, focal_length, plainFloats)) return false;
    archive.read(zoom_factor);
    archive.read(distortion);
    archive.read(f_number);
    archive.read(lens_shift);
    archive.read(shutter_speed);
    archive.read(shutter_angle);
    archive.read(shutter_offset);
    archive.read(latency);
    archive.read(ISO);
    archive.read(specify_focus);
    if (!readAnimatedReal(archive, focus_distance, plainFloats)) return false;
    archive.read(targeted);
    archive.read(target_distance);
    archive.read(dof_display_threshold);
    archive.read(exposure);
    archive.read(white_balance);
    archive.read(vignetting);
    archive.read(blades_enable);
    archive.read(blades_num);
    archive.read(blades_rotation);
    archive.read(center_bias);
    archive.read(anisotropy);
    archive.read(use_dof);
    archive.read(use_moblur);
    archive.read(subdivs);
    return true;
}

// ---------------------------------------------------------------- AnimatedFlag

namespace {
constexpr uint32_t kFlagCurveWord = 0x10000;
constexpr uint32_t kFlagKeySize = 8;  // the width of the stored time
constexpr double kFlagTimeTolerance = 1e-12;
}  // namespace

void AnimatedFlag::reset() {
    keys_.clear();
    keys_[kStartTime] = false;
}

void AnimatedFlag::setValue(bool value, double time) {
    if (std::isnan(time)) return;
    auto it = keys_.lower_bound(time - kFlagTimeTolerance);
    if (it != keys_.end() && std::abs(it->first - time) < kFlagTimeTolerance) {
        it->second = value;
    } else {
        keys_.emplace_hint(it, time, value);
    }
}

bool AnimatedFlag::getValue(double time) const {
    if (keys_.empty()) return false;
    auto it = keys_.upper_bound(time + kFlagTimeTolerance);
    if (it == keys_.begin()) return it->second;
    return std::prev(it)->second;
}

bool AnimatedFlag::serialize(QuickArchive& archive) {
    archive.write(kFlagCurveWord);
    archive.write(static_cast<uint32_t>(keys_.size()));
    archive.write(kFlagKeySize);
    for (const auto& [time, value] : keys_) {
        archive.write(time);
        archive.write(value);
    }
    return true;
}

bool AnimatedFlag::deserialize(QuickArchive& archive) {
    uint32_t word = 0;
    archive.read(word);
    reset();
    if (word != kFlagCurveWord) return false;
    uint32_t count = 0, keySize = 0;
    archive.read(count);
    archive.read(keySize);
    if (keySize != kFlagKeySize) return false;
    // A key cut by the end of the data still counts, its missing bytes reading as zero.
    for (uint32_t i = 0; i < count && archive.remaining() > 0; ++i) {
        double time = 0.0;
        bool value = false;
        archive.read(time);
        archive.read(value);
        setValue(value, time);
    }
    return true;
}

// ---------------------------------------------------------------- RenderView

void RenderView::setDefaults() {
    IntRect unset;
    unset.left = unset.top = unset.right = unset.bottom = -1;
    renderRegion = unset;
    cropRegion = unset;
    img_width = 0;
    img_height = 0;
    fov.reset();
    fov.setValue(0.7853982f, kStartTime);
    realB.reset();
    realB.setValue(1.0f, kStartTime);
    realC.reset();
    realC.setValue(1.0f, kStartTime);
    flagD.reset();
    transform.reset();
}

bool RenderView::serialize(QuickArchive& archive) {
    writeVersion(archive, kMajor);
    archive.write(renderRegion);
    archive.write(cropRegion);
    archive.write(img_width);
    archive.write(img_height);
    return fov.serialize(archive) && realB.serialize(archive) && realC.serialize(archive) &&
           flagD.serialize(archive) && transform.serialize(archive);
}

bool RenderView::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major)) return false;
    switch (major) {
        case 1:
            return readVersion1(archive);
        case 2:
            return readVersion2(archive);
        case 3:
            return readVersion3(archive);
        default:
            return false;
    }
}

// Versions 1 and 2 share the middle: rectangles, three reals as floats, size, and the flag
// stored in the opposite sense.
namespace {
void readFlatView(QuickArchive& archive, RenderView& view) {
    archive.read(view.renderRegion);
    archive.read(view.cropRegion);
    for (AnimatedReal* real : {&view.fov, &view.realB, &view.realC}) {
        readAnimatedReal(archive, *real, true);
    }
    archive.read(view.img_width);
    archive.read(view.img_height);
    bool stored = false;
    archive.read(stored);
    view.flagD.setValue(!stored, kStartTime);
}
}  // namespace

bool RenderView::readVersion1(QuickArchive& archive) {
    Transform placement;
    archive.read(placement);
    transform.setValue(placement, kStartTime);
    readFlatView(archive, *this);
    return true;
}

bool RenderView::readVersion2(QuickArchive& archive) {
    readFlatView(archive, *this);
    return transform.deserialize(archive);
}

bool RenderView::readVersion3(QuickArchive& archive) {
    archive.read(renderRegion);
    archive.read(cropRegion);
    archive.read(img_width);
    archive.read(img_height);
    return fov.deserialize(archive) && realB.deserialize(archive) && realC.deserialize(archive) &&
           flagD.deserialize(archive) && transform.deserialize(archive);
}

int RenderView::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    // The animated members write nothing of their own, but they keep their turn.
    fov.writeXML(writer, name);
    realB.writeXML(writer, name);
    realC.writeXML(writer, name);
    transform.writeXML(writer, name);
    writer.beginAsset(name, pluginKind(), u"");
    writer.beginPlugin(pluginType(), pluginKind());
    writer.beginParameters();
    writer.writeInteger("img_width", img_width);
    writer.writeInteger("img_height", img_height);
    writer.endParameters();
    writer.endPlugin();
    writer.endAsset();
    return 0;
}

}  // namespace CorvaneCore
