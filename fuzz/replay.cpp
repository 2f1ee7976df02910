// Runs a fuzz target over files: the seeds as a test, or an input that a fuzzer found.
// usage: PROGRAM FILE-OR-FOLDER...
#include "fuzz/invariant.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

int run_file(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    fuzz::require(!stream.bad(), "the file can be read");
    std::fprintf(stderr, "%s\n", file.c_str());
    std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    return LLVMFuzzerTestOneInput(data.data(), data.size());
}

} // namespace

int main(int argc, char** argv) {
    unsigned files = 0;
    for (int index = 1; index < argc; ++index) {
        if (!std::filesystem::is_directory(argv[index])) {
            run_file(argv[index]);
            ++files;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(argv[index])) {
            run_file(entry.path());
            ++files;
        }
    }
    fuzz::require(files > 0, "there is a file to run");
    return 0;
}
