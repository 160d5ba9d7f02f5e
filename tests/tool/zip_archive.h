// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// \file
/// Writes ZIP archives, right ones and wrong ones.

namespace brackwell::tests {

/// A file for an archive. What is set beside its name and bytes is written as it is, right or wrong.
struct ZipMember {
    std::string name;
    std::string bytes;
    std::uint16_t method = 8;  ///< 0: stored; whatever else is written is packed like 8
    std::uint16_t flags = 0;
    std::uint32_t attributes = 0;  ///< of Unix, in the upper half
    bool isLong = false;           ///< its numbers stand in the form for large archives
    std::int64_t sizeError = 0;    ///< is added to the size
    std::uint32_t checksumError = 0;
};

struct ZipEnd {
    std::string comment = {};
    std::uint16_t disk = 0;
    bool isLong = false;
    std::uint16_t countError = 0;
};

/// The bytes of an archive of these members.
std::string zipOf(const std::vector<ZipMember>& members, const ZipEnd& end = {});

/// The list of an archive whose only bytes besides are those of one member: so many members that all have it.
std::string overlappingZip(const ZipMember& member, std::size_t count);

}  // namespace brackwell::tests
