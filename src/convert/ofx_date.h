// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <optional>
#include <string_view>

namespace brackwell {

/// The date of an OFX text by the built-in formats, always as UTC. It gives what the formatters of
/// TvOFXHelper with these patterns give, in a tenth of their time: a document has a date or two in
/// every transaction.
void readOFXDate(std::string_view text, std::optional<Date>& date) noexcept;

/// The same, as a result.
inline std::optional<Date> dateFromOFXText(std::string_view text) noexcept {
    std::optional<Date> date;
    readOFXDate(text, date);
    return date;
}

}  // namespace brackwell
