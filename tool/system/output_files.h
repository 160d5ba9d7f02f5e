// SPDX-License-Identifier: Apache-2.0
#pragma once

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

/// True for two names of one file; "-" is that of standard input.
bool isSameFile(const std::string& input, const std::string& output) noexcept;

}  // namespace tool::system
