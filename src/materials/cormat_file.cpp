// The .cormat material file: version word, material count, then an archive that holds each
// material as its type id and its own stream. Only version 3 (the archive in whole blocks) is
// written; versions 1 and 2 held the archive's bytes as they stand, version 1 after a pass
// through a text stream that turned every line feed into "\r\n".
#include <fstream>
#include <iterator>
#include <sstream>

#include "archive/read_helpers.h"
#include "materials/material_file.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {

constexpr uint32_t kCorMatVersion = 3;

void putU32(std::ostream& out, uint32_t value) {
    const char bytes[4] = {static_cast<char>(value), static_cast<char>(value >> 8),
                           static_cast<char>(value >> 16), static_cast<char>(value >> 24)};
    out.write(bytes, 4);
}

uint32_t u32At(const unsigned char* bytes) {
    return uint32_t(bytes[0]) | uint32_t(bytes[1]) << 8 | uint32_t(bytes[2]) << 16 |
           uint32_t(bytes[3]) << 24;
}

// The rest of the stream, as much as it holds.
std::string restOf(std::istream& in) {
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string withLineFeedsRestored(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        out.push_back(text[i]);
    }
    return out;
}

// The archive that the payload of a known version describes.
bool payloadArchive(std::istream& in, uint32_t major, QuickArchive& archive) {
    switch (major) {
        case 1: {
            const std::string bytes = withLineFeedsRestored(restOf(in));
            archive = QuickArchive(bytes.data(), bytes.size());
            return true;
        }
        case 2: {
            const std::string bytes = restOf(in);
            archive = QuickArchive(bytes.data(), bytes.size());
            return true;
        }
        case 3:
            // Blocks are added only while the stream still delivers them.
            return archive.loadFromStream(in);
        default:
            return false;
    }
}

}  // namespace

bool CorMatFile::write(std::ostream& stream) {
    if (materials.empty()) return false;
    QuickArchive archive(1);
    for (const MaterialPtr& material : materials) {
        if (!material) return false;
        archive.write(static_cast<int32_t>(material->getType()));
        if (!material->serialize(archive)) {
            // Composed and dropped on purpose: the false result is the only report.
            const std::u16string message =
                u"An error has occurred while attempting to serialize \"" + material->name +
                u"\" - aborting cormat creation";
            (void)message;
            return false;
        }
    }
    putU32(stream, versionWord(kCorMatVersion));
    putU32(stream, static_cast<uint32_t>(materials.size()));
    archive.saveToStream(stream);
    return true;
}

bool CorMatFile::read(std::istream& stream) {
    unsigned char header[8] = {0, 0, 0, 0, 0, 0, 0, 0};
    stream.read(reinterpret_cast<char*>(header), sizeof header);
    const uint32_t word = u32At(header);
    const uint32_t count = u32At(header + 4);
    if (count == 0) return false;
    if (versionMinor(word) != 0) return false;
    QuickArchive archive;
    if (!payloadArchive(stream, versionMajor(word), archive)) return false;

    // The count is a claim: the list ends with the data, not with it.
    std::vector<MaterialPtr> read;
    for (uint32_t i = 0; i < count; ++i) {
        if (archive.remaining() == 0) return false;
        MaterialPtr material;
        if (!readRequiredChild<BaseMaterial>(archive, material, &createMaterial)) return false;
        read.push_back(material);
    }
    materials = std::move(read);
    return true;
}

bool CorMatFile::save(const std::u16string& path) {
    std::ostringstream buffer;
    if (!write(buffer)) return false;
    std::ofstream out(wideToUtf8(path), std::ios::binary | std::ios::trunc);
    if (!out) return false;
    const std::string bytes = buffer.str();
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

bool CorMatFile::load(const std::u16string& path) {
    std::ifstream in(wideToUtf8(path), std::ios::binary);
    if (!in) return false;
    return read(in);
}

}  // namespace CorvaneCore
