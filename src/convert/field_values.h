// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/convert.h>

#include <optional>
#include <string_view>

/// \file
/// The conversions of TvOFXHelper, for fields of objects. Each writes its result where it belongs: a
/// std::optional that is returned or copied is written in parts and then read as a whole, which processors
/// wait for as long as the conversion takes.

namespace brackwell {

/// The date of a text as the helper reads it; nothing when it is none.
void readDate(const TvOFXHelper& helper, std::string_view text, std::optional<Date>& date);

/// The same for an amount.
void readAmount(const TvOFXHelper& helper, std::string_view text, std::optional<Decimal>& amount);

}  // namespace brackwell
