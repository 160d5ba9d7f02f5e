// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <optional>
#include <string>
#include <string_view>

/// \file
/// How values read in the descriptions of objects.

namespace brackwell {

inline constexpr std::string_view kAbsent = "(null)";

inline std::string_view orAbsent(OptionalText text) noexcept { return text.value_or(kAbsent); }
inline std::string orAbsent(std::optional<Date> date) {
    return date ? dateDescription(*date) : std::string(kAbsent);
}

inline std::string_view yesOrNo(bool value) noexcept { return value ? "YES" : "NO"; }

/// Appends a label and a text when there is one.
inline void appendPresent(std::string& to, std::string_view label, OptionalText text) {
    if (text) to.append(label).append(*text);
}
/// Appends a label and a text when there is one that is not empty.
inline void appendFilled(std::string& to, std::string_view label, OptionalText text) {
    if (text && !text->empty()) to.append(label).append(*text);
}
inline void appendPresent(std::string& to, std::string_view label, std::optional<Date> date) {
    if (date) to.append(label).append(dateDescription(*date));
}

}  // namespace brackwell
