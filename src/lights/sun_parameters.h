// The settings of a sun that the sun light and the sky texture both store, in the same order and
// with the same defaults. Each keeps its own `enabled` flag: a sun starts enabled, a sky not.
#pragma once

#include <cstdint>

#include "archive/value_types.h"

namespace CorvaneCore {

struct SunParameters {
    Vector up_vector;
    float shadowBias;
    float turbidity;
    float water_vapour;
    float intensity_multiplier;
    float size_multiplier;
    float photon_radius;
    float photon_emit_distance;
    float ozone;
    int32_t photonSubdivs;
    int32_t causticSubdivs;
    int32_t shadow_subdivs;
    bool shadows;

    void setSunDefaults() {
        up_vector = Vector(0.0f, 0.0f, 1.0f);
        shadowBias = 0.0f;
        turbidity = 3.0f;
        water_vapour = 2.0f;
        intensity_multiplier = 1.0f;
        size_multiplier = 1.0f;
        photon_radius = 50.0f;
        photon_emit_distance = 150.0f;
        ozone = 0.35f;
        photonSubdivs = 500;
        causticSubdivs = 1000;
        shadow_subdivs = 8;
        shadows = true;
    }

    // The fields in stored order, all present since version `since` of the holder's record.
    template <class Fn, class... S>
    static void visitSunFields(Fn& fn, uint32_t since, S&... s) {
        fn(since, s.up_vector...);
        fn(since, s.shadowBias...);
        fn(since, s.turbidity...);
        fn(since, s.water_vapour...);
        fn(since, s.intensity_multiplier...);
        fn(since, s.size_multiplier...);
        fn(since, s.photon_radius...);
        fn(since, s.photon_emit_distance...);
        fn(since, s.ozone...);
        fn(since, s.photonSubdivs...);
        fn(since, s.causticSubdivs...);
        fn(since, s.shadow_subdivs...);
        fn(since, s.shadows...);
    }
};

}  // namespace CorvaneCore
