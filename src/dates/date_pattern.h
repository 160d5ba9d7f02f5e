// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dates/calendar_names.h"

/// \file
/// A date pattern of Unicode Technical Standard 35, taken apart.

namespace brackwell {

/// One letter of a pattern, as often as it stands there in a row, or what stands between letters.
struct PatternPart {
    enum class Kind : std::uint8_t {
        text,     ///< stands for itself
        number,   ///< digits
        name,     ///< a name from a list
        zone,     ///< a time zone
        unknown,  ///< a letter without meaning, or too many of one that has
    };
    Kind kind = Kind::text;
    char letter = 0;                    ///< of all kinds but text
    std::size_t width = 0;              ///< how many letters
    bool isExact = false;               ///< of numbers: as many digits as letters; of zones: digits follow
    NameList names = NameList::months;  ///< of names
    std::string text;                   ///< of text
};

struct DatePattern {
    std::vector<PatternPart> parts;
    NameLists names;  ///< those that the parts need
};

/// Takes a pattern apart. A quote that is not closed reaches to the end.
DatePattern parseDatePattern(std::string_view pattern);

}  // namespace brackwell
