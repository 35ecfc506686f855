// The one declared field list of a versioned class whose layout only grows. Such a class names
// its stored fields once, in stored order and each with the version that introduced it,
// through a static `visitFields(fn, objects...)`:
//
//     template <class Fn, class... Self>
//     static void visitFields(Fn& fn, Self&... s) {
//         fn(1, s.color...);
//         fn(3, s.shadowColor...);
//     }
//
// Reading, writing, comparing and deep copying all walk that list, so they cannot drift apart.
// A plain value goes straight through the archive; a family gives its own field kinds (a
// texture slot, say) their own `readField` and `writeField` overloads beside the kind.
#pragma once

#include <cstdint>
#include <memory>

#include "archive/compare.h"
#include "archive/quick_archive.h"

namespace CorvaneCore {

template <class T>
bool readField(QuickArchive& archive, T& field) {
    archive.read(field);
    return true;
}

template <class T>
bool writeField(QuickArchive& archive, const T& field) {
    archive.write(field);
    return true;
}

// Floats and the values built of them compare so that a NaN equals anything.
inline bool sameField(float a, float b) { return sameFloat(a, b); }
inline bool sameField(const Color& a, const Color& b) { return sameColor(a, b); }
inline bool sameField(const AColor& a, const AColor& b) { return sameAColor(a, b); }
inline bool sameField(const Vector& a, const Vector& b) { return sameVector(a, b); }
inline bool sameField(const Transform& a, const Transform& b) { return sameTransform(a, b); }
inline bool sameField(const Matrix& a, const Matrix& b) { return sameMatrix(a, b); }
// Two child slots match when both are empty or the children compare equal.
template <class T>
bool sameField(const std::shared_ptr<T>& a, const std::shared_ptr<T>& b) {
    if (!a) return !b;
    return b && a->isEqual(b);
}
template <class T>
bool sameField(const T& a, const T& b) {
    return a == b;
}

// A copy shares nothing with its original: child slots are replaced by their clones.
template <class T>
void deepenField(T&) {}
template <class T>
void deepenField(std::shared_ptr<T>& slot) {
    if (slot) slot = slot->clone();
}

// Reads the fields that a record of version `major` holds; the others keep their defaults.
// Once a field fails, nothing further is read.
struct FieldReader {
    QuickArchive& archive;
    uint32_t major;
    bool ok = true;
    template <class T>
    void operator()(uint32_t since, T& field) {
        if (ok && major >= since) ok = readField(archive, field);
    }
};

// Writes every field: only the newest layout is ever written.
struct FieldWriter {
    QuickArchive& archive;
    bool ok = true;
    template <class T>
    void operator()(uint32_t, const T& field) {
        if (ok) ok = writeField(archive, field);
    }
};

struct FieldComparer {
    bool same = true;
    template <class T>
    void operator()(uint32_t, const T& a, const T& b) {
        same = same && sameField(a, b);
    }
};

struct FieldDeepener {
    template <class T>
    void operator()(uint32_t, T& field) {
        deepenField(field);
    }
};

template <class C>
bool readListedFields(QuickArchive& archive, uint32_t major, C& object) {
    FieldReader read{archive, major};
    C::visitFields(read, object);
    return read.ok;
}

template <class C>
bool writeListedFields(QuickArchive& archive, const C& object) {
    FieldWriter write{archive};
    C::visitFields(write, object);
    return write.ok;
}

template <class C>
bool sameListedFields(const C& a, const C& b) {
    FieldComparer compare;
    C::visitFields(compare, a, b);
    return compare.same;
}

template <class C>
void deepenListedFields(C& copy) {
    FieldDeepener deepen;
    C::visitFields(deepen, copy);
}

}  // namespace CorvaneCore
