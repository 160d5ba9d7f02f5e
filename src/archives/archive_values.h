// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <optional>
#include <string>
#include <string_view>

/// \file
/// How dates and decimal numbers stand in an archive: as integers, so that they are exact. Each value has one
/// form only. The functions that take a value also take some of its other forms; who must know compares
/// with what is appended for the value.

namespace brackwell {

/// Whole seconds since 1970 as tag 1; with milliseconds as tag 1001, {1: seconds, -3: milliseconds}, because
/// tag 1 would need binary floating point for them.
void appendDate(std::string& bytes, const Date& date);

/// Takes a date off the beginning of the bytes; nothing when none stands there.
std::optional<Date> takeDate(std::string_view& bytes) noexcept;

/// Tag 4, [exponent, coefficient with sign]; a coefficient beyond 64 bits is a bignum.
void appendDecimal(std::string& bytes, const Decimal& number);

/// Takes a number off the beginning of the bytes; nothing when none stands there.
std::optional<Decimal> takeDecimal(std::string_view& bytes) noexcept;

}  // namespace brackwell
