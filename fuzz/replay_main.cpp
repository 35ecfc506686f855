// Runs a fuzz target over files given on the command line (seeds and past findings), so that
// they replay as ordinary tests in every build, sanitizers included.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fs = std::filesystem;

static void replayFile(const fs::path& path, int& count) {
    std::ifstream in(path, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    ++count;
}

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const fs::path path(argv[i]);
        if (fs::is_directory(path)) {
            for (const auto& entry : fs::directory_iterator(path)) {
                if (entry.is_regular_file()) replayFile(entry.path(), count);
            }
        } else if (fs::is_regular_file(path)) {
            replayFile(path, count);
        }
    }
    std::printf("replayed %d inputs\n", count);
    return 0;
}
