// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// \file
/// The part of CBOR (RFC 8949) that archives need, in its deterministic form: every length is definite and
/// every head as short as possible. Floating point and simple values are not part of it.
///
/// The functions that take something off the beginning of bytes give nothing when it does not stand there
/// in whole and in that form; then the bytes are in no particular state.

namespace brackwell::cbor {

/// The kinds of items. The number of each is what stands in the upper three bits of a head.
enum class Major : std::uint8_t { unsignedInteger, negativeInteger, bytes, text, array, map, tag };

/// What every item begins with. The argument is the value, the length, the number of entries or the tag;
/// of a negative integer it is -1 - value.
struct Head {
    Major major;
    std::uint64_t argument;
};

inline constexpr std::uint64_t kTagUnixTime = 1;
inline constexpr std::uint64_t kTagUnsignedBignum = 2;
inline constexpr std::uint64_t kTagNegativeBignum = 3;
inline constexpr std::uint64_t kTagDecimalFraction = 4;
inline constexpr std::uint64_t kTagExtendedTime = 1001;  // RFC 9581

void appendHead(std::string& bytes, Major major, std::uint64_t argument);
void appendInteger(std::string& bytes, std::int64_t value);
void appendText(std::string& bytes, std::string_view text);

std::optional<Head> takeHead(std::string_view& bytes) noexcept;

/// The argument of a head of this kind.
std::optional<std::uint64_t> takeArgument(std::string_view& bytes, Major major) noexcept;

/// A positive or negative integer; nothing as well when it does not fit.
std::optional<std::int64_t> takeInteger(std::string_view& bytes) noexcept;

/// The content of a text or of bytes. It is not checked for UTF-8.
std::optional<std::string_view> takeString(std::string_view& bytes, Major major) noexcept;

/// Steps over one item with all that is in it, however deep that is; false when there is none in whole.
bool skipItem(std::string_view& bytes) noexcept;

}  // namespace brackwell::cbor
