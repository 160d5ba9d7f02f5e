// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "entry.h"

/// \file
/// Hands the files that are named, and those of folders that are named, to a fuzz target. The file
/// that is being tried is printed first, so that it is known when the target ends the program.

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& place) {
    if (!fs::is_directory(place)) return {place};
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(place))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

bool replay(const fs::path& file) {
    std::cout << file.string() << std::endl;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return false;
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    // A block of just this size, so that a sanitizer sees the first byte that is read past it.
    const auto block = std::make_unique<std::uint8_t[]>(bytes.size());
    std::ranges::copy(bytes, block.get());
    LLVMFuzzerTestOneInput(block.get(), bytes.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& file : filesOf(argv[i])) {
            if (!replay(file)) return std::cerr << "cannot read " << file << '\n', 1;
            ++count;
        }
    }
    if (count == 0) return std::cerr << "no files to try\n", 2;
    std::cout << count << " files tried\n";
}
