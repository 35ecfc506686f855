// The simple material description that the plug-in's Ruby side hands over for a host material
// (the record of Quillon::Material), and the pair of layered materials made from it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/value_types.h"
#include "materials/material.h"

struct BasicMaterialRecord {
    enum Type : int32_t { kColorOnly = 0, kBitmapOnly = 1, kBitmapBlendedWithColor = 2 };

    CorvaneCore::Color color;
    std::u16string texture;  // the bitmap file
    std::u16string name;
    float alpha = 1.0f;
    int32_t type = kColorOnly;
    bool use_alpha = false;
    bool flagB = false;  // no setter reaches it; it becomes the diffuse layers' layerFlagB
};

struct LayeredPair {
    std::shared_ptr<CorvaneCore::MaterialLayeredBRDF> front;
    std::shared_ptr<CorvaneCore::MaterialLayeredBRDF> back;
};

// Front and back materials: a diffuse layer each, with a reflection layer before it and a
// refraction layer behind it when alpha is in use.
LayeredPair materialToLayered(const BasicMaterialRecord& record);
