// Keyed curves: a value per time, looked up with a small tolerance on the time. Lights, cameras
// and the sky keep their placement as an AnimatedTransform; some settings are an AnimatedReal.
#pragma once

#include <map>
#include <string>

#include "archive/serializable.h"
#include "archive/value_types.h"

namespace CorvaneCore {

// Two key times closer than this are the same key.
constexpr double kKeyTimeTolerance = 1e-12;

class AnimatedTransform : public CorvaneSerializable {
public:
    AnimatedTransform() { reset(); }

    bool serialize(QuickArchive& archive) override;
    // Unlike the float curve, a read drops the default key: only stored keys remain. A key
    // count beyond what the archive still holds ends at the last whole key and is no failure.
    bool deserialize(QuickArchive& archive) override;

    Transform getValue(double time) const;
    void setValue(const Transform& value, double time);
    int keyCount() const { return static_cast<int>(keys_.size()); }
    // NaN for an index outside 0 .. keyCount() - 1.
    double keyTime(int index) const;
    // One key: the identity at time 0.0.
    void reset();

    // The XML side of a transform curve writes nothing.
    std::u16string pluginType() const { return std::u16string(); }
    std::u16string pluginKind() const { return std::u16string(); }
    void writeXML(AssetXmlWriter&, std::u16string) const {}

    // Same key times and values; floats compare as sameFloat does.
    bool sameKeys(const AnimatedTransform& other) const;

private:
    std::map<double, Transform> keys_;
};

class AnimatedReal : public CorvaneSerializable, public CorvaneXMLSerializable {
public:
    explicit AnimatedReal(bool interpolate) : interpolate_(interpolate) { reset(); }

    bool serialize(QuickArchive& archive) override;
    // Keeps the default key at 0.0 unless the stored curve has a key at that time.
    bool deserialize(QuickArchive& archive) override;

    float getValue(double time) const;
    void setValue(float value, double time);
    int keyCount() const { return static_cast<int>(keys_.size()); }
    double keyTime(int index) const;
    // One key: 0.0 at time 0.0.
    void reset();

    bool interpolate() const { return interpolate_; }
    void setInterpolate(bool on) { interpolate_ = on; }
    bool sameKeys(const AnimatedReal& other) const;

    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return std::u16string(); }
    std::u16string pluginKind() override { return std::u16string(); }

private:
    std::map<double, float> keys_;
    bool interpolate_;
};

}  // namespace CorvaneCore
