// The key list under every keyed curve: values by time, sorted, with two times closer than
// kKeyTimeTolerance naming the same key. The curves differ only in their value type, their
// default key and what lies between two keys.
#pragma once

#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>

#include "archive/quick_archive.h"
#include "archive/read_helpers.h"

namespace CorvaneCore {

// Two key times closer than this are the same key.
constexpr double kKeyTimeTolerance = 1e-12;

// The stored form of every curve: version 1, then the key count and the key size (the width of
// the stored time). Any other key size means a layout this reader lacks.
constexpr uint32_t kCurveMajor = 1;
constexpr uint32_t kCurveKeySize = 8;

inline bool sameKeyTime(double a, double b) { return std::abs(a - b) < kKeyTimeTolerance; }

// Reads the curve's version word; true for the one version there is.
inline bool readCurveVersion(QuickArchive& archive) {
    uint32_t major = 0;
    return readVersion(archive, major) && major == kCurveMajor;
}

// Reads the key count and the key size; false for a key size this reader lacks.
inline bool readCurveHeader(QuickArchive& archive, uint32_t& count) {
    uint32_t keySize = 0;
    archive.read(count);
    archive.read(keySize);
    return keySize == kCurveKeySize;
}

template <class Value>
class CurveKeys {
public:
    using Map = std::map<double, Value>;

    void reset(const Value& value) {
        keys_.clear();
        keys_.emplace(0.0, value);
    }
    void clear() { keys_.clear(); }
    int count() const { return static_cast<int>(keys_.size()); }

    void set(const Value& value, double time) {
        // A NaN time names no key and would break the ordering of the keys.
        if (std::isnan(time)) return;
        auto it = firstNotBefore(time);
        if (it != keys_.end() && sameKeyTime(it->first, time)) {
            it->second = value;
        } else {
            keys_.emplace_hint(it, time, value);
        }
    }

    // NaN for an index outside 0 .. count() - 1.
    double timeAt(int index) const {
        if (index < 0 || index >= count()) return std::numeric_limits<double>::quiet_NaN();
        return std::next(keys_.begin(), index)->first;
    }

    // A key's own value at its time; past the last key its value, ahead of the first key the
    // first value, and between two keys `between(before, after, time)`. `empty` when no key.
    template <class Between>
    Value valueAt(double time, const Value& empty, Between between) const {
        if (keys_.empty()) return empty;
        auto same = firstNotBefore(time);
        if (same != keys_.end() && sameKeyTime(same->first, time)) return same->second;
        auto after = keys_.upper_bound(time);
        if (after == keys_.end()) return std::prev(after)->second;
        if (after == keys_.begin()) return after->second;
        return between(*std::prev(after), *after, time);
    }

    // The stored curve: version word, key count, key size, what `writeExtra` adds, the keys.
    template <class WriteExtra>
    void write(QuickArchive& archive, WriteExtra writeExtra) const {
        writeVersion(archive, kCurveMajor);
        archive.write(static_cast<uint32_t>(keys_.size()));
        archive.write(kCurveKeySize);
        writeExtra();
        for (const auto& key : keys_) {
            archive.write(key.first);
            archive.write(key.second);
        }
    }

    // Reads what `write` wrote. The keys go back to the single `defaultKey` once the version
    // word is read, and a version or key size this reader lacks refuses the read. The stored
    // keys then join the default key, or replace it when `dropDefault` is set.
    template <class ReadExtra>
    bool read(QuickArchive& archive, const Value& defaultKey, bool dropDefault,
              ReadExtra readExtra) {
        const bool known = readCurveVersion(archive);
        reset(defaultKey);
        if (!known) return false;
        if (dropDefault) clear();
        uint32_t count = 0;
        if (!readCurveHeader(archive, count)) return false;
        readExtra();
        readKeys(archive, count);
        return true;
    }

    // Reads up to `count` keys through `set`, so a stored duplicate within the tolerance
    // overwrites its predecessor. A key cut by the end of the data is still read, its missing
    // bytes reading as zero; a declared count beyond the data stops once no bytes remain, so the
    // loop stays linear in the record's size.
    void readKeys(QuickArchive& archive, uint32_t count) {
        for (uint32_t i = 0; i < count && archive.remaining() > 0; ++i) {
            double time = 0.0;
            Value value{};
            archive.read(time);
            archive.read(value);
            set(value, time);
        }
    }

    // Same times, bit for bit apart from signed zeros, and values that `sameValue` accepts.
    template <class SameValue>
    bool same(const CurveKeys& other, SameValue sameValue) const {
        if (keys_.size() != other.keys_.size()) return false;
        for (auto i = keys_.begin(), j = other.keys_.begin(); i != keys_.end(); ++i, ++j) {
            const bool sameTime = !(i->first < j->first) && !(i->first > j->first);
            if (!sameTime || !sameValue(i->second, j->second)) return false;
        }
        return true;
    }

private:
    typename Map::const_iterator firstNotBefore(double time) const { return firstIn(keys_, time); }
    typename Map::iterator firstNotBefore(double time) { return firstIn(keys_, time); }

    // The first key whose time is not before `time`, a key within the tolerance counting as at it.
    template <class Keys>
    static auto firstIn(Keys& keys, double time) {
        auto it = keys.lower_bound(time);
        if (it != keys.begin() && sameKeyTime(std::prev(it)->first, time)) --it;
        return it;
    }

    Map keys_;
};

}  // namespace CorvaneCore
