// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace brackwell::system {

/// A file that is open for reading, without a buffer; closed on every way out. Paths are UTF-8 where the
/// system's are not bytes.
class InputFile {
public:
    /// A name with a NUL is that of no file: the system's calls would take it for the shorter name before it.
    explicit InputFile(const std::string& path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    bool isOpen() const noexcept { return descriptor_ >= 0; }
    /// Why it is not, as a value of errno.
    int error() const noexcept { return error_; }

    /// The size that the file says it has. Only a hint: pipes and the files of /proc say 0, and any
    /// file may change while it is read.
    std::size_t expectedSize() const noexcept;

    /// How many bytes were put at `place`, 0 at the end of the file; nothing when it cannot be read.
    std::optional<std::size_t> read(char* place, std::size_t room) const noexcept;

private:
    int descriptor_ = -1;
    int error_ = 0;
};

/// The path that the path of a "file:" URL stands for, which begins with a slash.
std::string pathOfURL(std::string path);

/// What the system says of a file without opening it.
struct FileStatus {
    bool isFolder = false;
    std::uint64_t size = 0;  ///< of a file in a file system; 0 for all else
};
FileStatus statusOf(const std::string& path);

}  // namespace brackwell::system
