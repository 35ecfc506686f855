// Sphere light (type 7). It has no XML form: converting one gives empty text. Its fields are
// carried through the archive only, so they keep neutral names.
#pragma once

#include "archive/value_types.h"
#include "lights/light_fields.h"

namespace CorvaneCore {

class SphereLight : public ListedLight<SphereLight> {
public:
    static constexpr int kType = 7;
    static constexpr uint32_t kNewestVersion = 2;

    SphereLight() { setDefaults(); }

    void setDefaults() override;

    // Stored fields in stored order, each with the version that introduced it.
    template <class Fn, class... Light>
    static void visitFields(Fn& fn, Light&... l) {
        fn(1, l.transform...);
        fn(1, l.color...);
        fn(1, l.shadowColor...);
        fn(1, l.sphereScalarA...);
        fn(1, l.sphereThreshold...);
        fn(1, l.sphereScalarB...);
        fn(1, l.sphereScalarC...);
        fn(1, l.spherePhotonCount...);
        fn(1, l.sphereCausticCount...);
        fn(1, l.sphereUnits...);
        fn(1, l.sphereSubdivs...);
        fn(1, l.sphereFlag0...);
        fn(1, l.sphereFlag1...);
        fn(1, l.sphereFlag2...);
        fn(1, l.sphereFlag3...);
        fn(1, l.sphereFlag4...);
        fn(2, l.sphereFlag5...);
        fn(2, l.sphereFlag6...);
        fn(2, l.sphereFlag7...);
    }

    Transform transform;
    Color color;
    Color shadowColor;
    float sphereScalarA;
    float sphereThreshold;
    float sphereScalarB;
    float sphereScalarC;
    uint32_t spherePhotonCount;
    uint32_t sphereCausticCount;
    uint32_t sphereUnits;
    uint32_t sphereSubdivs;
    bool sphereFlag0;
    bool sphereFlag1;
    bool sphereFlag2;
    bool sphereFlag3;
    bool sphereFlag4;
    bool sphereFlag5;
    bool sphereFlag6;
    bool sphereFlag7;
};

}  // namespace CorvaneCore
