// The row kinds of the options records beyond plain values, and the reader that knows them.
// Each record declares its rows once (archive/field_list.h form); these kinds let that one
// list also say how a row is stored when it is more than one value.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archive/field_list.h"
#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "params/animated.h"
#include "util/utf8.h"

namespace CorvaneCore {

class BaseTexture;

// A nested versioned block that reads and writes itself; a refusal ends the record's read.
struct BlockRow {
    CorvaneSerializable& block;
};
inline bool readField(QuickArchive& archive, BlockRow& row) {
    return row.block.deserialize(archive);
}
inline bool writeField(QuickArchive& archive, const BlockRow& row) {
    return row.block.serialize(archive);
}

// An optional texture child; an unknown id or a refused child ends the record's read.
struct TextureRow {
    std::shared_ptr<BaseTexture>& slot;
};
bool readField(QuickArchive& archive, TextureRow& row);
bool writeField(QuickArchive& archive, const TextureRow& row);

// A wide path cut to `limit` characters on reading; the stream moves past all of it.
struct CutPathRow {
    std::u16string& path;
    size_t limit;
};
inline bool readField(QuickArchive& archive, CutPathRow& row) {
    archive.read(row.path);
    if (row.path.size() > row.limit) row.path.resize(row.limit);
    return true;
}
inline bool writeField(QuickArchive& archive, const CutPathRow& row) {
    archive.write(row.path);
    return true;
}

// A cache path is narrow in the record and wide in the stream. A null path writes as the empty
// string; reading an empty string leaves the path as it was.
struct CachePathRow {
    std::optional<std::string>& path;
};
inline bool readField(QuickArchive& archive, CachePathRow& row) {
    std::u16string wide;
    archive.read(wide);
    if (!wide.empty()) row.path = wideToUtf8(wide);
    return true;
}
inline bool writeField(QuickArchive& archive, const CachePathRow& row) {
    archive.write(row.path ? utf8ToWide(*row.path) : std::u16string());
    return true;
}

// Read and thrown away; written as `written`.
template <class T>
struct IgnoredRow {
    T written;
};
template <class T>
bool readField(QuickArchive& archive, IgnoredRow<T>&) {
    T value{};
    archive.read(value);
    return true;
}
template <class T>
bool writeField(QuickArchive& archive, const IgnoredRow<T>& row) {
    archive.write(row.written);
    return true;
}

// Written from `field`; on reading the stored value is ignored and `field` set to `forced`.
struct ForcedRow {
    int32_t& field;
    int32_t forced;
};
inline bool readField(QuickArchive& archive, ForcedRow& row) {
    int32_t ignored = 0;
    archive.read(ignored);
    row.field = row.forced;
    return true;
}
inline bool writeField(QuickArchive& archive, const ForcedRow& row) {
    archive.write(row.field);
    return true;
}

// A row that the versions before `until` hold and later ones dropped: read and thrown away by
// those versions, never written.
template <class T>
struct RetiredRow {
    uint32_t until;
};
template <class T>
bool writeField(QuickArchive&, const RetiredRow<T>&) {
    return true;
}

// A list of ids: the count, then the ids. From `replaceSince` on the stored ids replace the
// list; before, they are appended behind what it holds.
struct IdListRow {
    std::vector<int32_t>& ids;
    uint32_t replaceSince;
};
inline bool writeField(QuickArchive& archive, const IdListRow& row) {
    archive.writeSize(row.ids.size());
    for (int32_t id : row.ids) archive.write(id);
    return true;
}

// An animated value stored as one float: its value at time 0.0.
inline void readStartValue(QuickArchive& archive, AnimatedReal& curve) {
    float value = 0.0f;
    archive.read(value);
    curve.setValue(value, 0.0);
}

// An animated value that versions before `since` stored as its value at time 0.0.
struct StartValueCurveRow {
    AnimatedReal& curve;
    uint32_t since;
};
inline bool writeField(QuickArchive& archive, const StartValueCurveRow& row) {
    return row.curve.serialize(archive);
}

// The field reader that also knows the row kinds whose form depends on the stored version.
struct OptionRowReader : FieldReader {
    using FieldReader::operator();

    template <class T>
    void operator()(uint32_t since, RetiredRow<T>& row) {
        if (!ok || major < since || major >= row.until) return;
        T value{};
        archive.read(value);
    }

    void operator()(uint32_t since, IdListRow& row) {
        if (ok && major >= since) readIds(row.ids, major >= row.replaceSince);
    }

    void operator()(uint32_t since, StartValueCurveRow& row) {
        if (!ok || major < since) return;
        if (major >= row.since) {
            ok = row.curve.deserialize(archive);
        } else {
            readStartValue(archive, row.curve);
        }
    }

private:
    void readIds(std::vector<int32_t>& ids, bool replace) {
        uint64_t count = 0;
        archive.readSize(count);
        if (replace) ids.clear();
        // Never trust the count beyond what the remaining bytes can hold.
        const uint64_t fits = archive.remaining() / sizeof(int32_t);
        ids.reserve(ids.size() + static_cast<size_t>(std::min(count, fits)));
        for (uint64_t i = 0; i < count && archive.remaining() > 0; ++i) {
            int32_t id = 0;
            archive.read(id);
            ids.push_back(id);
        }
    }
};

// Reads the rows that a record of version `major` holds through `Rows::visitFields`.
template <class Rows, class Record>
bool readRows(QuickArchive& archive, uint32_t major, Record& record) {
    OptionRowReader read{{archive, major}};
    Rows::visitFields(read, record);
    return read.ok;
}

// Writes every row: only the newest layout is ever written.
template <class Rows, class Record>
bool writeRows(QuickArchive& archive, Record& record) {
    FieldWriter write{archive};
    Rows::visitFields(write, record);
    return write.ok;
}

// A versioned block of rows: its version word, then the rows of that version.
template <class Rows, class Record>
bool readVersionedRows(QuickArchive& archive, uint32_t oldest, uint32_t newest, Record& record) {
    uint32_t major = 0;
    return readVersionIn(archive, oldest, newest, major) && readRows<Rows>(archive, major, record);
}

template <class Rows, class Record>
bool writeVersionedRows(QuickArchive& archive, uint32_t major, Record& record) {
    writeVersion(archive, major);
    return writeRows<Rows>(archive, record);
}

}  // namespace CorvaneCore
