// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// \file
/// Open files, pipes and terminals by their numbers. What fails leaves its reason in errno.

namespace tool::system {

inline constexpr int kStandardInput = 0;
inline constexpr int kStandardOutput = 1;
inline constexpr int kStandardError = 2;

bool isTerminal(int descriptor) noexcept;
bool isPipe(int descriptor) noexcept;

/// How many columns a terminal has; 0 where that cannot be told.
std::size_t terminalColumns(int descriptor) noexcept;

/// A file for reading, in UTF-8; -1 where it cannot be opened. Nothing is waited for.
int openForReading(const std::string& path) noexcept;

/// How many bytes were read, 0 at the end, -1 when that fails.
std::ptrdiff_t readFrom(int descriptor, char* place, std::size_t room) noexcept;

/// Goes to a place of a file, from which is read next; false where that fails.
bool seekTo(int descriptor, std::uint64_t place) noexcept;

/// How many bytes were written, or -1. Waits as long as nothing can be written.
std::ptrdiff_t writeTo(int descriptor, std::string_view text) noexcept;

/// False where the system says only now that something could not be written.
bool closeDescriptor(int descriptor) noexcept;

}  // namespace tool::system
