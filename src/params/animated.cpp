#include "params/animated.h"

#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

#include "archive/compare.h"
#include "archive/quick_archive.h"

namespace CorvaneCore {

namespace {

constexpr uint32_t kCurveVersionWord = 0x10000;
// Stored key size: the width of the time. Any other value means a layout this reader lacks.
constexpr uint32_t kStoredKeySize = 8;

bool sameTime(double a, double b) { return std::abs(a - b) < kKeyTimeTolerance; }

// The first key whose time is not before `time`, a key within the tolerance counting as at it.
template <class Keys>
auto firstNotBefore(Keys& keys, double time) {
    auto it = keys.lower_bound(time);
    if (it != keys.begin() && sameTime(std::prev(it)->first, time)) --it;
    return it;
}

template <class Keys, class Value>
void setKey(Keys& keys, const Value& value, double time) {
    // A NaN time names no key and would break the ordering of the keys.
    if (std::isnan(time)) return;
    auto it = firstNotBefore(keys, time);
    if (it != keys.end() && sameTime(it->first, time)) {
        it->second = value;
    } else {
        keys.emplace_hint(it, time, value);
    }
}

template <class Keys>
double timeAt(const Keys& keys, int index) {
    if (index < 0 || index >= static_cast<int>(keys.size())) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return std::next(keys.begin(), index)->first;
}

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

bool sameDouble(double a, double b) { return !(a < b) && !(a > b); }

template <class Keys, class SameValue>
bool sameKeyMaps(const Keys& a, const Keys& b, SameValue sameValue) {
    if (a.size() != b.size()) return false;
    for (auto i = a.begin(), j = b.begin(); i != a.end(); ++i, ++j) {
        if (!sameDouble(i->first, j->first) || !sameValue(i->second, j->second)) return false;
    }
    return true;
}

// Reads up to `count` keys. A key cut by the end of the data is still read, its missing bytes
// reading as zero; a declared count beyond the data stops once no bytes remain, so the loop
// stays linear in the record's size.
template <class Curve, class Value>
void readKeys(QuickArchive& archive, Curve& curve, uint32_t count) {
    for (uint32_t i = 0; i < count && archive.remaining() > 0; ++i) {
        double time = 0.0;
        Value value{};
        archive.read(time);
        archive.read(value);
        curve.setValue(value, time);
    }
}

}  // namespace

// ---------------------------------------------------------------- AnimatedTransform

void AnimatedTransform::reset() {
    keys_.clear();
    keys_.emplace(0.0, Transform::identity());
}

void AnimatedTransform::setValue(const Transform& value, double time) {
    setKey(keys_, value, time);
}

double AnimatedTransform::keyTime(int index) const { return timeAt(keys_, index); }

Transform AnimatedTransform::getValue(double time) const {
    if (keys_.empty()) return Transform::identity();
    auto same = firstNotBefore(keys_, time);
    if (same != keys_.end() && sameTime(same->first, time)) return same->second;
    auto after = keys_.upper_bound(time);
    if (after == keys_.end()) return std::prev(after)->second;
    // Ahead of the first key the first value holds.
    if (after == keys_.begin()) return after->second;
    auto before = std::prev(after);
    return blend(before->second, after->second, blendFactor(before->first, after->first, time));
}

bool AnimatedTransform::serialize(QuickArchive& archive) {
    archive.write(kCurveVersionWord);
    archive.write(static_cast<uint32_t>(keys_.size()));
    archive.write(kStoredKeySize);
    for (const auto& key : keys_) {
        archive.write(key.first);
        archive.write(key.second);
    }
    return true;
}

bool AnimatedTransform::deserialize(QuickArchive& archive) {
    uint32_t word = 0;
    archive.read(word);
    reset();
    if (word != kCurveVersionWord) return false;
    keys_.clear();
    uint32_t count = 0, keySize = 0;
    archive.read(count);
    archive.read(keySize);
    if (keySize != kStoredKeySize) return false;
    readKeys<AnimatedTransform, Transform>(archive, *this, count);
    return true;
}

bool AnimatedTransform::sameKeys(const AnimatedTransform& other) const {
    return sameKeyMaps(keys_, other.keys_, sameTransform);
}

// ---------------------------------------------------------------- AnimatedReal

void AnimatedReal::reset() {
    keys_.clear();
    keys_.emplace(0.0, 0.0f);
}

void AnimatedReal::setValue(float value, double time) { setKey(keys_, value, time); }

double AnimatedReal::keyTime(int index) const { return timeAt(keys_, index); }

float AnimatedReal::getValue(double time) const {
    if (keys_.empty()) return 0.0f;
    auto same = firstNotBefore(keys_, time);
    if (same != keys_.end() && sameTime(same->first, time)) return same->second;
    auto after = keys_.upper_bound(time);
    if (after == keys_.end()) return std::prev(after)->second;
    if (after == keys_.begin()) return after->second;
    auto before = std::prev(after);
    if (!interpolate_) return before->second;
    return blend(before->second, after->second, blendFactor(before->first, after->first, time));
}

bool AnimatedReal::serialize(QuickArchive& archive) {
    archive.write(kCurveVersionWord);
    archive.write(static_cast<uint32_t>(keys_.size()));
    archive.write(kStoredKeySize);
    archive.write(interpolate_);
    for (const auto& key : keys_) {
        archive.write(key.first);
        archive.write(key.second);
    }
    return true;
}

bool AnimatedReal::deserialize(QuickArchive& archive) {
    uint32_t word = 0;
    archive.read(word);
    reset();
    if (word != kCurveVersionWord) return false;
    uint32_t count = 0, keySize = 0;
    archive.read(count);
    archive.read(keySize);
    if (keySize != kStoredKeySize) return false;
    archive.read(interpolate_);
    readKeys<AnimatedReal, float>(archive, *this, count);
    return true;
}

bool AnimatedReal::sameKeys(const AnimatedReal& other) const {
    return interpolate_ == other.interpolate_ && sameKeyMaps(keys_, other.keys_, sameFloat);
}

}  // namespace CorvaneCore
