// Row transfer for the options records: one field list drives both reading and writing, so the
// two directions cannot drift apart. A reader knows the stored major version and answers which
// rows the stream holds; a writer always writes the newest layout, so it holds every row.
#pragma once

#include <cstdint>

#include "archive/quick_archive.h"

namespace CorvaneCore {

class RowReader {
public:
    static constexpr bool kReading = true;
    RowReader(QuickArchive& archive, uint32_t major) : archive_(archive), major_(major) {}
    bool has(uint32_t since) const { return major_ >= since; }
    uint32_t major() const { return major_; }
    QuickArchive& archive() { return archive_; }
    template <class T>
    void operator()(T& value) {
        archive_.read(value);
    }

private:
    QuickArchive& archive_;
    uint32_t major_;
};

class RowWriter {
public:
    static constexpr bool kReading = false;
    explicit RowWriter(QuickArchive& archive) : archive_(archive) {}
    bool has(uint32_t) const { return true; }
    QuickArchive& archive() { return archive_; }
    template <class T>
    void operator()(const T& value) {
        archive_.write(value);
    }

private:
    QuickArchive& archive_;
};

}  // namespace CorvaneCore
