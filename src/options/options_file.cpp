#include "options/options_file.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

#include "archive/quick_archive.h"
#include "options/all_options.h"
#include "xml/text.h"

namespace CorvaneCore {

bool CorOptFile::write(AllOptions& options, const std::u16string& path) {
    QuickArchive archive(1);
    if (!options.serialize(archive)) return false;
    std::ofstream out(wideToUtf8(path), std::ios::binary | std::ios::trunc);
    if (!out) return false;
    for (size_t i = 0; i < archive.blockCount(); ++i) {
        const std::streamoff before = out.tellp();
        out.write(archive.getBlock(i)->data(), QuickArchive::kBlockSize);
        if (!out || out.tellp() - before != std::streamoff(QuickArchive::kBlockSize)) return false;
    }
    out.close();  // a failed close only marks the stream; the blocks are written
    return true;
}

bool CorOptFile::read(AllOptions& options, const std::u16string& path) {
    // A directory, pipe or device opens as a stream too but has no size to read by.
    const std::filesystem::path file = std::filesystem::u8path(wideToUtf8(path));
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return false;
    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size <= 0) return false;
    in.seekg(0, std::ios::beg);
    std::vector<char> bytes(static_cast<size_t>(size));
    if (!in.read(bytes.data(), size)) return false;
    QuickArchive archive(bytes.data(), bytes.size());
    return options.deserialize(archive);
}

}  // namespace CorvaneCore
