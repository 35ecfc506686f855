// Every light's newest record assembled from its field table with each field distinct from its
// neighbours and from its default, so that two reads or writes exchanged show. The same records,
// cut by the end of the archive at every byte, must leave each missing field as a read past the
// end leaves it: scalars at their table defaults, colours, vectors and matrices at zero, text
// empty.
#include <gtest/gtest.h>

#include <memory>

#include "cut_records.h"
#include "lights/ies_light.h"
#include "lights/maya_direct_light.h"
#include "lights/omni_light.h"
#include "lights/rectangle_light.h"
#include "lights/sphere_light.h"
#include "lights/spot_light.h"
#include "lights/sun_light.h"

using namespace CorvaneCore;
using namespace cut_records;

namespace {

// Values: colours 0.1 apart, floats and counts unlike their neighbours and their defaults,
// flags alternating.
Fields omniFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    s.f(0.25f, 0.005f).f(0.125f, 0).f(2.5f, 0).f(42, 30).f(3, 1);  // cutoff .. carriedScale
    s.i(2, 0).i(111, 500).i(222, 1000).i(5, 3);  // units, photon, caustic, carriedMode
    s.b(false, true).b(true, true).i(33, 8).f(1.5f, 0).transform(1);
    return s.b(false, true).b(true, true);
}

Fields spotFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(0.25f, 0.005f);
    s.f(11, 20).f(12, 20).f(13, 20).f(14, 20);       // barn doors
    s.f(0.125f, 0).f(2.5f, 0).f(42, 50).f(3, 1);     // bias, decay, intensity, carriedScale
    s.i(2, 0).i(111, 500).i(222, 1000).i(5, 3);      // units .. carriedMode
    s.b(false, true).b(true, false).b(false, true);  // enabled, barnDoor, shadows
    s.i(33, 8).f(1.5f, 0).transform(1).f(0.75f, 1).f(0.2f, 0);
    return s.b(false, true).b(true, true);
}

Fields rectangleFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(0.25f, 0.005f);
    s.f(0.125f, 0).f(42, 30).f(3, 1).i(2, 0);         // bias, intensity, scale, units
    s.i(44, 8).i(222, 1000).i(111, 500).i(5, 3);      // subdivs .. carriedMode
    s.b(true, false).b(false, false).b(true, false);  // doubleSided, invisible, lightPortal
    s.b(false, false).b(true, true).b(false, false);  // noDecay, enabled, storeWith..
    s.b(true, true).b(false, true).transform(1).f(2.5f, 1).f(3.5f, 1);
    return s.b(true, true).b(false, true).b(true, true);
}

Fields iesFields() {
    Fields s(3);
    s.transform(1).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).color(0.7f, 0.8f, 0.9f);
    s.f(0.125f, 0).f(0.25f, 0.005f).i(111, 8).i(222, 1000).i(33, 8);
    s.b(false, true).b(true, true).b(false, false).text("C:\\ies\\lamp.ies");
    return s.b(false, true).b(true, true).f(7, 1);
}

Fields sphereFields() {
    Fields s(2);
    s.transform(1).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    s.f(0.5f, 0).f(0.25f, 0.005f).f(2, 1).f(3, 1).i(111, 500).i(222, 1000).i(1, 0).i(33, 8);
    s.b(false, true).b(true, true).b(false, false).b(true, false).b(false, false);
    return s.b(true, true).b(false, true).b(true, true);
}

// The two lights whose transform curve ends their record: a curve of one key at time 0.
void appendCurve(Fields& s) { s.i(0x10000, 0).i(1, 0).i(8, 0).f(0, 0).f(0, 0).transform(1); }

Fields mayaFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    s.f(0.125f, 0).f(42, 1).f(3, 1).i(222, 1000).i(111, 500).i(5, 3);
    s.b(false, true).b(true, true).i(33, 8).f(1.5f, 0);
    appendCurve(s);
    return s;
}

Fields sunFields() {
    Fields s(4);
    s.vec(0.1f, 0.2f, 0.9f).f(0.125f, 0).f(4, 3).f(2.5f, 2).f(1.25f, 1).f(2, 1).f(60, 50);
    s.f(170, 150).f(0.5f, 0.35f).i(111, 500).i(222, 1000).i(33, 8).b(false, true);
    s.text("{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}").text("Noon").b(false, true).b(true, false);
    appendCurve(s);
    return s;
}

}  // namespace

TEST(LightFields, DistinctNewestRecordsAreWrittenBackInPlace) {
    expectWritesBackDistinctRecord(maker<BaseLight, OmniLight>(), omniFields());
    expectWritesBackDistinctRecord(maker<BaseLight, SpotLight>(), spotFields());
    expectWritesBackDistinctRecord(maker<BaseLight, RectangleLight>(), rectangleFields());
    expectWritesBackDistinctRecord(maker<BaseLight, IESLight>(), iesFields());
    expectWritesBackDistinctRecord(maker<BaseLight, SphereLight>(), sphereFields());
    expectWritesBackDistinctRecord(maker<BaseLight, MayaDirectLight>(), mayaFields());
    expectWritesBackDistinctRecord(maker<BaseLight, SunLight>(), sunFields());
}

TEST(LightFields, RecordsCutAtEveryByteLeaveWhatAReadPastTheEndGives) {
    expectEveryCutLeavesPastEndValues(maker<BaseLight, OmniLight>(), omniFields());
    expectEveryCutLeavesPastEndValues(maker<BaseLight, SpotLight>(), spotFields());
    expectEveryCutLeavesPastEndValues(maker<BaseLight, RectangleLight>(), rectangleFields());
    expectEveryCutLeavesPastEndValues(maker<BaseLight, IESLight>(), iesFields());
    expectEveryCutLeavesPastEndValues(maker<BaseLight, SphereLight>(), sphereFields());
}
