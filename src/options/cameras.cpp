#include "options/cameras.h"

#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "options/options_rows.h"
#include "xml/asset_frame.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {

constexpr double kStartTime = 0.0;
// From this version on an animated camera value is stored as its own curve.
constexpr uint32_t kCurvesSince = 2;

// The physical camera's rows: every version holds all of them.
struct CameraRows {
    template <class Fn>
    static void visitFields(Fn& fn, PhysicalCamera& c) {
        StartValueCurveRow focalLength{c.focal_length, kCurvesSince};
        StartValueCurveRow focusDistance{c.focus_distance, kCurvesSince};
        fn(1, c.type);
        fn(1, c.film_width);
        fn(1, focalLength);
        fn(1, c.zoom_factor);
        fn(1, c.distortion);
        fn(1, c.f_number);
        fn(1, c.lens_shift);
        fn(1, c.shutter_speed);
        fn(1, c.shutter_angle);
        fn(1, c.shutter_offset);
        fn(1, c.latency);
        fn(1, c.ISO);
        fn(1, c.specify_focus);
        fn(1, focusDistance);
        fn(1, c.targeted);
        fn(1, c.target_distance);
        fn(1, c.dof_display_threshold);
        fn(1, c.exposure);
        fn(1, c.white_balance);
        fn(1, c.vignetting);
        fn(1, c.blades_enable);
        fn(1, c.blades_num);
        fn(1, c.blades_rotation);
        fn(1, c.center_bias);
        fn(1, c.anisotropy);
        fn(1, c.use_dof);
        fn(1, c.use_moblur);
        fn(1, c.subdivs);
    }
};

// The newest view layout, which only appends the curves' own blocks to the plain rows.
struct ViewRows {
    template <class Fn>
    static void visitFields(Fn& fn, RenderView& v) {
        BlockRow fov{v.fov}, realB{v.realB}, realC{v.realC}, flagD{v.flagD};
        BlockRow transform{v.transform};
        fn(3, v.renderRegion);
        fn(3, v.cropRegion);
        fn(3, v.img_width);
        fn(3, v.img_height);
        fn(3, fov);
        fn(3, realB);
        fn(3, realC);
        fn(3, flagD);
        fn(3, transform);
    }
};

}  // namespace

// ---------------------------------------------------------------- PhysicalCamera

void PhysicalCamera::setDefaults() {
    type = 0;
    film_width = 36.0f;
    focal_length.resetTo(40.0f);
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
    focus_distance.resetTo(200.0f);
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
    return writeVersionedRows<CameraRows>(archive, kMajor, *this);
}

bool PhysicalCamera::deserialize(QuickArchive& archive) {
    setDefaults();
    return readVersionedRows<CameraRows>(archive, 1, kMajor, *this);
}

// ---------------------------------------------------------------- RenderView

void RenderView::setDefaults() {
    IntRect unset;
    unset.left = unset.top = unset.right = unset.bottom = -1;
    renderRegion = unset;
    cropRegion = unset;
    img_width = 0;
    img_height = 0;
    fov.resetTo(0.7853982f);
    realB.resetTo(1.0f);
    realC.resetTo(1.0f);
    flagD.reset();
    transform.reset();
}

bool RenderView::serialize(QuickArchive& archive) {
    return writeVersionedRows<ViewRows>(archive, kMajor, *this);
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
        readStartValue(archive, *real);
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
    return readRows<ViewRows>(archive, 3, *this);
}

int RenderView::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    // The animated members write nothing of their own, but they keep their turn.
    fov.writeXML(writer, name);
    realB.writeXML(writer, name);
    realC.writeXML(writer, name);
    transform.writeXML(writer, name);
    beginAssetFrame(writer, name, *this);
    writer.writeInteger("img_width", img_width);
    writer.writeInteger("img_height", img_height);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
