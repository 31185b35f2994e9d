// SPDX-License-Identifier: Apache-2.0
// Runs a fuzzer's function over files, and over the files in folders, without the fuzzing engine.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file) {
        std::fprintf(stderr, "%s: cannot be read\n", path.c_str());
        return false;
    }
    std::printf("%s\n", path.c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t replayed = 0;
    bool all_read = true;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            all_read &= replay(argv[i]);
            ++replayed;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            all_read &= replay(entry.path());
            ++replayed;
        }
    }
    if (replayed == 0) std::fprintf(stderr, "no inputs\n");
    return all_read && replayed > 0 ? 0 : 1;
}
