// Runs a fuzz target over stored inputs, as an ordinary test: every file of
// the folders (or the files) named on the command line, in name order. A
// broken property or a crash fails the test like it failed the fuzzer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int *argc, char ***argv);

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s CORPUS_FOLDER_OR_FILE...\n", argv[0]);
        return 2;
    }
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    std::vector<std::filesystem::path> inputs;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (std::filesystem::is_directory(path)) {
            for (const auto &entry : std::filesystem::directory_iterator(path))
                if (entry.is_regular_file())
                    inputs.push_back(entry.path());
        } else {
            inputs.push_back(path);
        }
    }
    std::sort(inputs.begin(), inputs.end());
    // An empty or misnamed corpus would pass while guarding nothing.
    if (inputs.empty()) {
        std::fprintf(stderr, "no inputs found\n");
        return 1;
    }
    for (const auto &path : inputs) {
        std::ifstream file(path, std::ios::binary);
        if (!file) {
            std::fprintf(stderr, "cannot read %s\n", path.c_str());
            return 1;
        }
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        // Printed first, so a crash names its input.
        std::fprintf(stderr, "%s\n", path.c_str());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    }
    std::fprintf(stderr, "%zu inputs replayed\n", inputs.size());
    return 0;
}
