// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// The names of months, weekdays and halves of the day in a language.

namespace brackwell {

enum class NameList : std::uint8_t {
    months,        ///< as they are in a date ("5. января")
    shortMonths,   ///< "Jan"
    narrowMonths,  ///< "J": the first character of the name
    aloneMonths,   ///< as they are by themselves ("январь"), where the language distinguishes them
    shortAloneMonths,
    narrowAloneMonths,
    weekdays,           ///< from Sunday on
    shortWeekdays,      ///< "Sun"
    narrowWeekdays,     ///< "S": the first character of the name
    twoLetterWeekdays,  ///< "Su": the first two characters of the short name
    dayHalves,          ///< "AM" and "PM"
};
inline constexpr std::size_t kNameListCount = 11;

/// Which lists to load.
using NameLists = std::bitset<kNameListCount>;

struct CalendarNames {
    std::array<std::vector<std::string>, kNameListCount> lists;  ///< empty where not loaded

    const std::vector<std::string>& operator[](NameList list) const noexcept {
        return lists[static_cast<std::size_t>(list)];
    }
};

/// Loads the lists from the C library's locale of this name, or from its form in UTF-8; an empty name is
/// that of the process's own. English names take the place of all when there is no such locale or its
/// names are not UTF-8, and of a single list that the locale leaves empty. Other threads and the locale of
/// the process are not touched.
CalendarNames loadCalendarNames(const std::string& locale, NameLists wanted);

/// The place of a name in its list, and how many bytes of a text it takes.
struct NameMatch {
    std::size_t index = 0;
    std::size_t size = 0;      ///< 0: the text begins with no name of the list
    bool isAmbiguous = false;  ///< several entries of the list have this name
};

/// The longest name that the text begins with. The case of ASCII letters does not matter.
NameMatch findName(std::string_view text, const std::vector<std::string>& names) noexcept;

}  // namespace brackwell
