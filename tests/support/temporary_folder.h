// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace brackwell::tests {

/// A folder for the files of one test; it goes when the test ends.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "brackwell-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    /// The path of a file in it, which need not be there.
    std::string path(std::string_view name = "") const { return (path_ / name).string(); }

    /// Writes a file, in folders that are made where they are missing, and returns its path.
    std::string file(std::string_view name, std::string_view bytes) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return path(name);
    }

    /// The bytes of a file in it; "" when there is none.
    std::string read(std::string_view name) const {
        std::ifstream stream(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::filesystem::path path_;
};

}  // namespace brackwell::tests
