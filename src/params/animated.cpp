#include "params/animated.h"

#include <utility>

#include "archive/compare.h"
#include "archive/quick_archive.h"

namespace CorvaneCore {

namespace {

// Blend factor between two keys, computed wide and used narrow.
float blendFactor(double before, double after, double time) {
    return static_cast<float>((time - before) / (after - before));
}

float blend(float a, float b, float f) { return a * (1.0f - f) + b * f; }

Vector blend(const Vector& a, const Vector& b, float f) {
    return Vector(blend(a.x, b.x, f), blend(a.y, b.y, f), blend(a.z, b.z, f));
}

// Element by element on purpose: the blend of two rotations need not be a rotation.
Transform blend(const Transform& a, const Transform& b, float f) {
    Transform out;
    for (size_t i = 0; i < out.m.v.size(); ++i) out.m.v[i] = blend(a.m.v[i], b.m.v[i], f);
    out.offset = blend(a.offset, b.offset, f);
    return out;
}

// Between two keys: the linear blend of their values.
template <class Value>
Value blended(const std::pair<const double, Value>& before,
              const std::pair<const double, Value>& after, double time) {
    return blend(before.second, after.second, blendFactor(before.first, after.first, time));
}

// Between two keys: the earlier key's value holds.
template <class Value>
Value stepped(const std::pair<const double, Value>& before, const std::pair<const double, Value>&,
              double) {
    return before.second;
}

}  // namespace

// ---------------------------------------------------------------- AnimatedTransform

void AnimatedTransform::reset() { keys_.reset(Transform::identity()); }

void AnimatedTransform::setValue(const Transform& value, double time) { keys_.set(value, time); }

Transform AnimatedTransform::getValue(double time) const {
    return keys_.valueAt(time, Transform::identity(), blended<Transform>);
}

bool AnimatedTransform::serialize(QuickArchive& archive) {
    keys_.write(archive, [] {});
    return true;
}

bool AnimatedTransform::deserialize(QuickArchive& archive) {
    return keys_.read(archive, Transform::identity(), true, [] {});
}

bool AnimatedTransform::sameKeys(const AnimatedTransform& other) const {
    return keys_.same(other.keys_, sameTransform);
}

// ---------------------------------------------------------------- AnimatedReal

void AnimatedReal::reset() { keys_.reset(0.0f); }

void AnimatedReal::setValue(float value, double time) { keys_.set(value, time); }

float AnimatedReal::getValue(double time) const {
    if (!interpolate_) return keys_.valueAt(time, 0.0f, stepped<float>);
    return keys_.valueAt(time, 0.0f, blended<float>);
}

bool AnimatedReal::serialize(QuickArchive& archive) {
    keys_.write(archive, [&] { archive.write(interpolate_); });
    return true;
}

bool AnimatedReal::deserialize(QuickArchive& archive) {
    return keys_.read(archive, 0.0f, false, [&] { archive.read(interpolate_); });
}

bool AnimatedReal::sameKeys(const AnimatedReal& other) const {
    return interpolate_ == other.interpolate_ && keys_.same(other.keys_, sameFloat);
}

// ---------------------------------------------------------------- AnimatedFlag

bool AnimatedFlag::getValue(double time) const { return keys_.valueAt(time, false, stepped<bool>); }

bool AnimatedFlag::serialize(QuickArchive& archive) {
    keys_.write(archive, [] {});
    return true;
}

bool AnimatedFlag::deserialize(QuickArchive& archive) {
    return keys_.read(archive, false, false, [] {});
}

}  // namespace CorvaneCore
