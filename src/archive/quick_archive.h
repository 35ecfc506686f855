// QuickArchive: a little-endian byte stream kept in fixed 4096-byte blocks, with independent
// read and write positions. Reads past the end are silent and leave the documented results.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "archive/value_types.h"

namespace CorvaneCore {

class ReadTrace;

class QuickArchive {
public:
    static constexpr size_t kBlockSize = 4096;
    static constexpr unsigned kBlockShift = 12;
    using Block = std::array<char, kBlockSize>;

    explicit QuickArchive(size_t blockCount = 0);
    QuickArchive(const void* bytes, size_t size);
    QuickArchive(const QuickArchive&) = default;
    QuickArchive& operator=(const QuickArchive& other);
    virtual ~QuickArchive() = default;

    void clear();
    void addBlock();
    void reserveBlocks(size_t n);
    std::shared_ptr<Block> getBlock(size_t index) const { return blocks_.at(index); }
    size_t blockCount() const { return blocks_.size(); }

    uint64_t readPos() const { return readPos_; }
    uint64_t writePos() const { return writePos_; }
    void setReadPos(uint64_t pos) { readPos_ = pos; }
    // Bytes between readPos and the end of the last block; 0 once reading has run past it.
    uint64_t remaining() const;
    uint64_t endOffset() const { return uint64_t(blocks_.size()) << kBlockShift; }

    bool saveToStream(std::ostream& out) const;
    bool loadFromStream(std::istream& in);
    bool saveToFile(const std::string& utf8Path) const;
    bool saveToFile(const std::u16string& path) const;
    bool loadFromFile(const std::string& utf8Path);
    bool loadFromFile(const std::u16string& path);

    // Writing, always at writePos.
    void write(bool v);
    void write(char v);
    void write(unsigned char v);
    void write(int32_t v);
    void write(uint32_t v);
    void write(float v);
    void write(double v);
    void write(const Color& v);
    void write(const AColor& v);
    void write(const Vector& v);
    void write(const Matrix& v);
    void write(const Transform& v);
    void write(const DoubleTransform& v);
    void write(const IntRect& v);
    void write(const std::string& narrow);
    void write(const std::u16string& wide);
    void writeSize(uint64_t n);
    void writeBytes(const void* data, size_t n);
    void writeBuffer(const void* data, size_t n);

    // Reading, always at readPos.
    void read(bool& v);
    void read(char& v);
    void read(unsigned char& v);
    void read(int32_t& v);
    void read(uint32_t& v);
    void read(float& v);
    void read(double& v);
    void read(Color& v);
    void read(AColor& v);
    void read(Vector& v);
    void read(Matrix& v);
    void read(Transform& v);
    void read(DoubleTransform& v);
    void read(IntRect& v);
    void read(std::string& narrow);
    void read(std::u16string& wide);
    void readSize(uint64_t& n);
    void readBytes(void* data, size_t n);
    uint64_t readBuffer(void* data, size_t capacity, bool restoreOnMismatch);
    bool readByte(unsigned char& out);
    bool peekByte(uint64_t offset, unsigned char& out) const;

    // Nesting depth of child objects being read; see ChildDepthGuard.
    int& readDepth() { return readDepth_; }
    // An optional observer of the read (diagnostics); null unless someone asks.
    ReadTrace* trace() const { return trace_; }
    void setTrace(ReadTrace* trace) { trace_ = trace; }

private:
    void putByte(char c);
    void getByte(char& c);
    template <class T>
    void writeRaw(const T& v);
    template <class T>
    void readRaw(T& v);
    uint32_t readCount();
    // Reads a count and then the counted bytes, never holding more than the archive can supply.
    std::string readCountedText();

    std::vector<std::shared_ptr<Block>> blocks_;
    uint64_t readPos_ = 0;
    uint64_t writePos_ = 0;
    int readDepth_ = 0;
    ReadTrace* trace_ = nullptr;
};

}  // namespace CorvaneCore
