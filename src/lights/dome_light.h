// Dome light (type 8): a class without fields or output. No stored type id reaches it through
// createLight, which is to stay so.
#pragma once

#include "lights/base_light.h"

namespace CorvaneCore {

class DomeLight : public BaseLight {
public:
    static constexpr int kType = 8;
    static constexpr uint32_t kNewestVersion = 1;

    // Writes the version word alone.
    bool serialize(QuickArchive& archive) override;
    // Reads nothing, not even a version word.
    bool deserialize(QuickArchive&) override { return true; }
    int getType() override { return kType; }
    std::shared_ptr<BaseLight> clone() override { return std::make_shared<DomeLight>(); }
    bool isEqual(const std::shared_ptr<BaseLight>& other) override {
        return other && other->getType() == kType;
    }
    void setDefaults() override {}
};

}  // namespace CorvaneCore
