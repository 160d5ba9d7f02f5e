// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// \file
/// How a file is written beside another one and takes its place. What fails leaves its reason in errno.

namespace tool::system {

/// What parts the names of folders.
extern const std::string_view kSeparators;

/// Makes a file and opens it for writing; -1 where that fails. Only its owner may read it; on Windows those
/// who may read what is in its folder. The six last characters of the name are replaced, so that there is no
/// such file yet.
int makeTemporary(std::string& name) noexcept;

/// Waits until a file is stored as far as the system can say; false where it could not be.
bool store(int descriptor) noexcept;

/// Gives a file the name of another one, which goes.
bool takePlace(const std::string& file, const std::string& of) noexcept;

void removeFile(const std::string& path) noexcept;

/// Opens a terminal, a pipe or a device for writing.
int openDevice(const std::string& path) noexcept;

/// What a name of an open descriptor stands for. One of this process is shared, not opened again: what others
/// write to it comes before and after, and nothing is emptied. One of another process is only added to.
int openDescriptor(const std::string& path) noexcept;

/// What a file has in common with itself alone, under whatever name.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t file = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

/// The identity of the file that a name leads to; "-" is that of standard input. Nothing for what is no file.
std::optional<FileIdentity> identityOf(const std::string& name) noexcept;

}  // namespace tool::system
