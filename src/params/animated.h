// Keyed curves: a value per time, looked up with a small tolerance on the time. Lights, cameras
// and the sky keep their placement as an AnimatedTransform; some settings are an AnimatedReal.
#pragma once

#include <string>

#include "archive/serializable.h"
#include "archive/value_types.h"
#include "params/curve_keys.h"

namespace CorvaneCore {

class AnimatedTransform : public CorvaneSerializable {
public:
    AnimatedTransform() { reset(); }

    bool serialize(QuickArchive& archive) override;
    // Unlike the float curve, a read drops the default key: only stored keys remain. A key
    // count beyond what the archive still holds ends at the last whole key and is no failure.
    bool deserialize(QuickArchive& archive) override;

    Transform getValue(double time) const;
    void setValue(const Transform& value, double time);
    int keyCount() const { return keys_.count(); }
    // NaN for an index outside 0 .. keyCount() - 1.
    double keyTime(int index) const { return keys_.timeAt(index); }
    // One key: the identity at time 0.0.
    void reset();

    // The XML side of a transform curve writes nothing.
    std::u16string pluginType() const { return std::u16string(); }
    std::u16string pluginKind() const { return std::u16string(); }
    void writeXML(AssetXmlWriter&, std::u16string) const {}

    // Same key times and values; floats compare as sameFloat does.
    bool sameKeys(const AnimatedTransform& other) const;

private:
    CurveKeys<Transform> keys_;
};

class AnimatedReal : public CorvaneSerializable, public CorvaneXMLSerializable {
public:
    explicit AnimatedReal(bool interpolate) : interpolate_(interpolate) { reset(); }

    bool serialize(QuickArchive& archive) override;
    // Keeps the default key at 0.0 unless the stored curve has a key at that time.
    bool deserialize(QuickArchive& archive) override;

    float getValue(double time) const;
    void setValue(float value, double time);
    int keyCount() const { return keys_.count(); }
    double keyTime(int index) const { return keys_.timeAt(index); }
    // One key: 0.0 at time 0.0.
    void reset();
    // One key: `value` at time 0.0.
    void resetTo(float value) { keys_.reset(value); }

    bool interpolate() const { return interpolate_; }
    void setInterpolate(bool on) { interpolate_ = on; }
    bool sameKeys(const AnimatedReal& other) const;

    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return std::u16string(); }
    std::u16string pluginKind() override { return std::u16string(); }

private:
    CurveKeys<float> keys_;
    bool interpolate_;
};

// A flag keyed by time; the value of the last key at or before a time holds. Stored as the other
// curves, with a bool per key.
class AnimatedFlag : public CorvaneSerializable {
public:
    AnimatedFlag() { reset(); }
    bool serialize(QuickArchive& archive) override;
    // Keeps the default key at 0.0 unless the stored curve has a key at that time.
    bool deserialize(QuickArchive& archive) override;
    bool getValue(double time) const;
    void setValue(bool value, double time) { keys_.set(value, time); }
    int keyCount() const { return keys_.count(); }
    // One key: false at time 0.0.
    void reset() { keys_.reset(false); }

private:
    CurveKeys<bool> keys_;
};

}  // namespace CorvaneCore
