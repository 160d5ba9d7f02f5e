// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// \file
/// Time zones as dates show them: "+0100", "+01:00", "Z", "GMT+1", "CET".

namespace brackwell {

/// A zone that a text names: by its offset east of UTC or by an abbreviation.
struct ZoneText {
    std::optional<std::chrono::seconds> offset;
    std::string_view abbreviation;  ///< where there is no offset
};

/// The longest form of each letter that may stand for a zone.
constexpr std::size_t longestZoneField(char letter) noexcept { return letter == 'z' ? 4 : 5; }

/// Takes a zone off the beginning of the text, in any of the forms that appendZone() writes, and with hours
/// of one digit too ("-5"). Abbreviations, but for those of UTC itself, are taken for the letter z only.
/// With digits after it, an offset without colons has exactly four. Nothing when there is no zone.
std::optional<ZoneText> takeZone(std::string_view& text, char letter, bool digitsFollow) noexcept;

/// Appends a zone in the form of a pattern's letters:
///
///     z zz zzz       CET, or GMT+5:30 where the abbreviation is not made of letters
///     zzzz ZZZZ      GMT+01:00, GMT
///     Z ZZ ZZZ       +0100
///     ZZZZZ          +01:00, Z
///     X              +01, +0530, Z
///     XX XXX         +0100, +01:00, Z
///     XXXX XXXXX     the same, and with seconds
///     x to xxxxx     those of X, but with +00, +0000 or +00:00 for Z
///
/// Offsets that have seconds are written with these, but by X and x as told.
void appendZone(std::string& text, char letter, std::size_t width, const TimeZone::Offset& offset);

/// "GMT+1", "GMT-3:30": the shortest name that tells the offset.
std::string shortOffsetName(std::chrono::seconds offset);

/// The offset that an abbreviation has wherever it is used: UTC and its like, those of mail dates for North
/// America, and those of Europe's three zones. Nothing for every other one.
std::optional<std::chrono::seconds> offsetOfAbbreviation(std::string_view abbreviation) noexcept;

}  // namespace brackwell
