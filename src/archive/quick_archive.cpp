#include "archive/quick_archive.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <istream>
#include <ostream>

#include "util/utf8.h"

namespace CorvaneCore {

static_assert(sizeof(float) == 4 && sizeof(double) == 8, "IEEE 754 binary32/binary64 expected");

QuickArchive::QuickArchive(size_t blockCount) {
    for (size_t i = 0; i < blockCount; ++i) addBlock();
}

QuickArchive::QuickArchive(const void* bytes, size_t size) {
    writeBytes(bytes, size);
    readPos_ = 0;
}

QuickArchive& QuickArchive::operator=(const QuickArchive& other) {
    if (this == &other) return *this;
    blocks_ = other.blocks_;
    readPos_ = other.readPos_;
    writePos_ = other.writePos_;
    readDepth_ = other.readDepth_;
    trace_ = other.trace_;
    return *this;
}

void QuickArchive::clear() {
    blocks_.clear();
    readPos_ = 0;
    writePos_ = 0;
}

void QuickArchive::addBlock() {
    // New blocks are cleared so that output is reproducible.
    blocks_.push_back(std::make_shared<Block>());
    blocks_.back()->fill(0);
}

void QuickArchive::reserveBlocks(size_t n) {
    blocks_.reserve(n);
    while (blocks_.size() < n) addBlock();
}

uint64_t QuickArchive::remaining() const {
    const uint64_t end = endOffset();
    return readPos_ < end ? end - readPos_ : 0;
}

// ---------------------------------------------------------------- byte level

void QuickArchive::putByte(char c) {
    const uint64_t p = writePos_++;
    if ((p >> kBlockShift) >= blocks_.size()) addBlock();
    (*blocks_[p >> kBlockShift])[p & (kBlockSize - 1)] = c;
}

void QuickArchive::getByte(char& c) {
    const uint64_t p = readPos_++;
    if ((p >> kBlockShift) < blocks_.size()) c = (*blocks_[p >> kBlockShift])[p & (kBlockSize - 1)];
}

template <class T>
void QuickArchive::writeRaw(const T& v) {
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, &v, sizeof(T));  // the host is little-endian, like the format
    for (unsigned char b : bytes) putByte(static_cast<char>(b));
}

template <class T>
void QuickArchive::readRaw(T& v) {
    // Byte by byte into the destination: bytes past the end keep their earlier content.
    char bytes[sizeof(T)];
    std::memcpy(bytes, &v, sizeof(T));
    for (char& b : bytes) getByte(b);
    std::memcpy(&v, bytes, sizeof(T));
}

// ---------------------------------------------------------------- writing

void QuickArchive::write(bool v) { putByte(v ? 1 : 0); }
void QuickArchive::write(char v) { putByte(v); }
void QuickArchive::write(unsigned char v) { putByte(static_cast<char>(v)); }
void QuickArchive::write(int32_t v) { writeRaw(v); }
void QuickArchive::write(uint32_t v) { writeRaw(v); }
void QuickArchive::write(float v) { writeRaw(v); }
void QuickArchive::write(double v) { writeRaw(v); }

void QuickArchive::write(const Color& v) {
    write(v.r);
    write(v.g);
    write(v.b);
}

void QuickArchive::write(const AColor& v) {
    write(v.r);
    write(v.g);
    write(v.b);
    write(v.a);
}

void QuickArchive::write(const Vector& v) {
    write(v.x);
    write(v.y);
    write(v.z);
}

void QuickArchive::write(const Matrix& v) {
    for (const Vector& col : v.v) write(col);
}

void QuickArchive::write(const Transform& v) {
    write(v.m);
    write(v.offset);
}

void QuickArchive::write(const DoubleTransform& v) {
    write(v.m);
    write(Vector(static_cast<float>(v.offset[0]), static_cast<float>(v.offset[1]),
                 static_cast<float>(v.offset[2])));
}

void QuickArchive::write(const IntRect& v) {
    write(v.left);
    write(v.top);
    write(v.right);
    write(v.bottom);
}

void QuickArchive::writeSize(uint64_t n) { write(static_cast<uint32_t>(n)); }

void QuickArchive::write(const std::string& narrow) {
    writeSize(narrow.size());
    writeBytes(narrow.data(), narrow.size());
}

void QuickArchive::write(const std::u16string& wide) { write(wideToUtf8(wide)); }

void QuickArchive::writeBytes(const void* data, size_t n) {
    // Block by block: the same bytes as one putByte per byte, without the per-byte cost.
    const char* p = static_cast<const char*>(data);
    while (n > 0) {
        const uint64_t block = writePos_ >> kBlockShift;
        while (block >= blocks_.size()) addBlock();
        const size_t offset = static_cast<size_t>(writePos_ & (kBlockSize - 1));
        const size_t run = std::min(n, kBlockSize - offset);
        std::memcpy(blocks_[block]->data() + offset, p, run);
        writePos_ += run;
        p += run;
        n -= run;
    }
}

void QuickArchive::writeBuffer(const void* data, size_t n) {
    writeSize(n);
    writeBytes(data, n);
}

// ---------------------------------------------------------------- reading

void QuickArchive::read(bool& v) {
    char c = v ? 1 : 0;
    getByte(c);
    v = c != 0;
}

void QuickArchive::read(char& v) { getByte(v); }

void QuickArchive::read(unsigned char& v) {
    char c = static_cast<char>(v);
    getByte(c);
    v = static_cast<unsigned char>(c);
}

void QuickArchive::read(int32_t& v) { readRaw(v); }
void QuickArchive::read(uint32_t& v) { readRaw(v); }
void QuickArchive::read(float& v) { readRaw(v); }
void QuickArchive::read(double& v) { readRaw(v); }

// Compound values are assembled in cleared temporaries: missing bytes read as zero.
void QuickArchive::read(Color& v) {
    float c[3] = {0, 0, 0};
    for (float& f : c) readRaw(f);
    v = Color(c[0], c[1], c[2]);
}

void QuickArchive::read(AColor& v) {
    float c[4] = {0, 0, 0, 0};
    for (float& f : c) readRaw(f);
    v = AColor(c[0], c[1], c[2], c[3]);
}

void QuickArchive::read(Vector& v) {
    float c[3] = {0, 0, 0};
    for (float& f : c) readRaw(f);
    v = Vector(c[0], c[1], c[2]);
}

void QuickArchive::read(Matrix& v) {
    for (Vector& col : v.v) read(col);
}

void QuickArchive::read(Transform& v) {
    read(v.m);
    read(v.offset);
}

void QuickArchive::read(DoubleTransform& v) {
    read(v.m);
    Vector o;
    read(o);
    v.offset[0] = o.x;
    v.offset[1] = o.y;
    v.offset[2] = o.z;
}

void QuickArchive::read(IntRect& v) {
    // Missing integers are undefined by the format; here they read as zero.
    IntRect r;
    readRaw(r.left);
    readRaw(r.top);
    readRaw(r.right);
    readRaw(r.bottom);
    r.width = static_cast<int32_t>(static_cast<uint32_t>(r.right) - static_cast<uint32_t>(r.left));
    r.height = static_cast<int32_t>(static_cast<uint32_t>(r.bottom) - static_cast<uint32_t>(r.top));
    v = r;
}

uint32_t QuickArchive::readCount() {
    uint32_t n = 0;
    readRaw(n);
    return n;
}

void QuickArchive::readSize(uint64_t& n) { n = readCount(); }

std::string QuickArchive::readCountedText() {
    const uint32_t count = readCount();
    if (count == 0) return std::string();
    // Only the bytes the archive holds are copied; the rest read as zero, which ends the text.
    const uint64_t available = std::min<uint64_t>(count, remaining());
    std::string bytes(static_cast<size_t>(available), '\0');
    for (char& c : bytes) getByte(c);
    readPos_ += count - available;
    const size_t nul = bytes.find('\0');
    if (nul != std::string::npos) bytes.resize(nul);
    return bytes;
}

void QuickArchive::read(std::string& narrow) { narrow = readCountedText(); }

void QuickArchive::read(std::u16string& wide) { wide = utf8ToWide(readCountedText()); }

void QuickArchive::readBytes(void* data, size_t n) {
    // Block by block; bytes past the last block keep the destination's content.
    char* p = static_cast<char*>(data);
    while (n > 0) {
        const uint64_t block = readPos_ >> kBlockShift;
        const size_t offset = static_cast<size_t>(readPos_ & (kBlockSize - 1));
        const size_t run = std::min(n, kBlockSize - offset);
        if (block < blocks_.size()) std::memcpy(p, blocks_[block]->data() + offset, run);
        readPos_ += run;
        p += run;
        n -= run;
    }
}

uint64_t QuickArchive::readBuffer(void* data, size_t capacity, bool restoreOnMismatch) {
    const uint64_t start = readPos_;
    const uint64_t count = readCount();
    readBytes(data, static_cast<size_t>(std::min<uint64_t>(capacity, count)));
    if (count == capacity) return count;
    if (restoreOnMismatch) {
        readPos_ = start;
    } else if (count > capacity) {
        readPos_ += count - capacity;
    }
    return count;
}

bool QuickArchive::readByte(unsigned char& out) {
    const bool inside = remaining() > 0;
    read(out);
    return inside;
}

bool QuickArchive::peekByte(uint64_t offset, unsigned char& out) const {
    if ((offset >> kBlockShift) >= blocks_.size()) return false;
    out = static_cast<unsigned char>((*blocks_[offset >> kBlockShift])[offset & (kBlockSize - 1)]);
    return true;
}

// ---------------------------------------------------------------- whole-archive form

bool QuickArchive::saveToStream(std::ostream& out) const {
    const uint32_t count = static_cast<uint32_t>(blocks_.size());
    unsigned char header[4] = {
        static_cast<unsigned char>(count), static_cast<unsigned char>(count >> 8),
        static_cast<unsigned char>(count >> 16), static_cast<unsigned char>(count >> 24)};
    out.write(reinterpret_cast<const char*>(header), 4);
    for (const auto& block : blocks_) out.write(block->data(), kBlockSize);
    return true;
}

bool QuickArchive::loadFromStream(std::istream& in) {
    clear();
    unsigned char header[4] = {0, 0, 0, 0};
    in.read(reinterpret_cast<char*>(header), 4);
    const uint32_t count = uint32_t(header[0]) | uint32_t(header[1]) << 8 |
                           uint32_t(header[2]) << 16 | uint32_t(header[3]) << 24;
    if (count == 0) return false;
    // A truncated stream leaves its tail blocks cleared; blocks are only added while the
    // stream still delivers data, so a false count cannot make us allocate without bound.
    for (uint32_t i = 0; i < count; ++i) {
        addBlock();
        if (!in.read(blocks_.back()->data(), kBlockSize)) {
            break;
        }
    }
    return true;
}

bool QuickArchive::saveToFile(const std::string& utf8Path) const {
    std::ofstream out(utf8Path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    return saveToStream(out);
}

bool QuickArchive::saveToFile(const std::u16string& path) const {
    return saveToFile(wideToUtf8(path));
}

bool QuickArchive::loadFromFile(const std::string& utf8Path) {
    std::ifstream in(utf8Path, std::ios::binary);
    if (!in) return false;
    return loadFromStream(in);
}

bool QuickArchive::loadFromFile(const std::u16string& path) {
    return loadFromFile(wideToUtf8(path));
}

}  // namespace CorvaneCore
