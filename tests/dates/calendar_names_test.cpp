// SPDX-License-Identifier: Apache-2.0
#include "dates/calendar_names.h"

#include <doctest/doctest.h>

#include <clocale>

#include "dates/locale_folder.h"

using namespace brackwell;
using namespace brackwell::tests;
using Names = std::vector<std::string>;

namespace {

const std::string kUnknownLocale = "xx_NOWHERE";

Names namesIn(const std::string& locale, NameList list) {
    return loadCalendarNames(locale, NameLists().set(static_cast<std::size_t>(list)))[list];
}

/// The texts of all lists in English.
const std::vector<std::pair<NameList, Names>> kEnglish = {
    {NameList::months,
     {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
      "November", "December"}},
    {NameList::shortMonths,
     {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}},
    {NameList::narrowMonths, {"J", "F", "M", "A", "M", "J", "J", "A", "S", "O", "N", "D"}},
    {NameList::aloneMonths,
     {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
      "November", "December"}},
    {NameList::shortAloneMonths,
     {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}},
    {NameList::narrowAloneMonths, {"J", "F", "M", "A", "M", "J", "J", "A", "S", "O", "N", "D"}},
    {NameList::weekdays, {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"}},
    {NameList::shortWeekdays, {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}},
    {NameList::narrowWeekdays, {"S", "M", "T", "W", "T", "F", "S"}},
    {NameList::twoLetterWeekdays, {"Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"}},
    {NameList::dayHalves, {"AM", "PM"}},
};

void checkEnglish(const std::string& locale) {
    CAPTURE(locale);
    for (const auto& row : kEnglish) {
        CAPTURE(row.second.front());
        CHECK(namesIn(locale, row.first) == row.second);
    }
}

constexpr const char* kNotReached = "No locale could be made on this machine; only English is tested.";

}  // namespace

TEST_CASE("names are English in the C locale and where the system has no such locale") {
    checkEnglish("C");
    checkEnglish("POSIX");
    checkEnglish(kUnknownLocale);
    checkEnglish("../../../etc");
    checkEnglish(std::string(5000, 'x'));
    checkEnglish("@");
    checkEnglish(".");
}

TEST_CASE("only the lists that are wanted are loaded") {
    const CalendarNames none = loadCalendarNames(kUnknownLocale, {});
    for (const Names& list : none.lists) CHECK(list.empty());
    const CalendarNames some =
        loadCalendarNames("C", NameLists().set(static_cast<std::size_t>(NameList::weekdays)));
    CHECK(some[NameList::weekdays].size() == 7);
    CHECK(some[NameList::months].empty());
}

TEST_CASE("names are those of the locale, found by its plain name") {
    LocaleFolder folder;
    if (!folder.add("de_DE", "UTF-8", "de_DE.UTF-8")) {
        MESSAGE(kNotReached);
        checkEnglish("de_DE");
        return;
    }
    for (const std::string locale : {"de_DE", "de_DE.UTF-8"}) {
        CAPTURE(locale);
        CHECK(namesIn(locale, NameList::months)[2] == "M\xC3\xA4rz");
        CHECK(namesIn(locale, NameList::aloneMonths)[11] == "Dezember");
        CHECK(namesIn(locale, NameList::shortMonths)[2] == "M\xC3\xA4r");
        CHECK(namesIn(locale, NameList::shortAloneMonths)[4] == "Mai");
        CHECK(namesIn(locale, NameList::narrowMonths)[9] == "O");
        CHECK(namesIn(locale, NameList::weekdays)[6] == "Samstag");
        CHECK(namesIn(locale, NameList::shortWeekdays)[3] == "Mi");
        CHECK(namesIn(locale, NameList::twoLetterWeekdays)[4] == "Do");
        CHECK(namesIn(locale, NameList::narrowWeekdays)[0] == "S");
        // German has no names for the halves of the day.
        CHECK(namesIn(locale, NameList::dayHalves) == Names{"AM", "PM"});
    }
}

TEST_CASE("a locale in another encoding than UTF-8 gives way to its form in UTF-8") {
    {
        LocaleFolder folder;
        if (!folder.add("de_DE", "ISO-8859-15", "de_DE@euro")) {
            MESSAGE(kNotReached);
            return;
        }
        CHECK(namesIn("de_DE@euro", NameList::months)[2] == "March");
        CHECK(namesIn("de_DE@euro", NameList::weekdays)[6] == "Samstag");  // these are ASCII
    }
    // In another folder, because the C library remembers what it did not find in one.
    LocaleFolder folder;
    REQUIRE(folder.add("de_DE", "ISO-8859-15", "de_DE@euro"));
    REQUIRE(folder.add("de_DE", "UTF-8", "de_DE.UTF-8@euro"));
    CHECK(namesIn("de_DE@euro", NameList::months)[2] == "M\xC3\xA4rz");
}

TEST_CASE("months in a date and months alone differ where the language tells them apart") {
    LocaleFolder folder;
    if (!folder.add("ru_RU", "UTF-8", "ru_RU.UTF-8")) {
        MESSAGE(kNotReached);
        return;
    }
    const std::string stem = "\xD1\x8F\xD0\xBD\xD0\xB2\xD0\xB0\xD1\x80";  // yanvar
    CHECK(namesIn("ru_RU", NameList::months)[0] == stem + "\xD1\x8F");
    const std::string alone = namesIn("ru_RU", NameList::aloneMonths)[0];
    CHECK(alone != namesIn("ru_RU", NameList::months)[0]);
    CHECK(alone.size() == stem.size() + 2);
    CHECK(namesIn("ru_RU", NameList::narrowMonths)[0] == "\xD1\x8F");  // one character of two bytes
    CHECK(namesIn("ru_RU", NameList::twoLetterWeekdays)[0].size() == 4);
}

TEST_CASE("the empty locale is the one of the process's environment") {
    LocaleFolder folder;
    const bool made = folder.add("de_DE", "UTF-8", "de_DE.UTF-8");
    if (!made) MESSAGE(kNotReached);
    const std::string german = made ? "Montag" : "Monday";
    struct Row {
        std::optional<std::string> all, time, language;
        std::string monday;
    };
    const std::vector<Row> rows = {
        {{}, {}, {}, "Monday"},
        {{}, {}, "de_DE.UTF-8", german},
        {{}, {}, "de_DE", german},
        {{}, "de_DE.UTF-8", "C", german},
        {{}, "C", "de_DE.UTF-8", "Monday"},
        {"de_DE.UTF-8", "C", "C", german},
        {"C", "de_DE.UTF-8", "de_DE.UTF-8", "Monday"},
        {"", "", "de_DE.UTF-8", german},
        {kUnknownLocale, {}, {}, "Monday"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.all.value_or("unset"));
        CAPTURE(row.time.value_or("unset"));
        CAPTURE(row.language.value_or("unset"));
        const EnvironmentGuard all("LC_ALL", row.all);
        const EnvironmentGuard time("LC_TIME", row.time);
        const EnvironmentGuard language("LANG", row.language);
        CHECK(namesIn("", NameList::weekdays)[1] == row.monday);
    }
}

TEST_CASE("loading names leaves the process's locale alone") {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    namesIn("de_DE", NameList::months);
    namesIn("", NameList::months);
    CHECK(std::setlocale(LC_ALL, nullptr) == before);
}

TEST_CASE("the longest name that a text begins with is found") {
    const Names names = {"M\xC6\xB0\xE1\xBB\x9Di", "M\xC6\xB0\xE1\xBB\x9Di hai", "May", "Mayor", "May"};
    CHECK(findName("M\xC6\xB0\xE1\xBB\x9Di hai 3", names).index == 1);
    CHECK(findName("M\xC6\xB0\xE1\xBB\x9Di ha", names).index == 0);
    CHECK(findName("Mayor", names).index == 3);
    CHECK(findName("Mayo", names).size == 3);
    CHECK(findName("Ma", names).size == 0);
    CHECK(findName("", names).size == 0);
}

TEST_CASE("the case of ASCII letters does not matter to a name") {
    const Names names = {"M\xC3\xA4rz", "Mai"};
    CHECK(findName("m\xC3\xA4RZ", names).size == 5);
    CHECK(findName("MAI", names).index == 1);
    CHECK(findName("[ai", names).size == 0);
    CHECK(findName("-ai", names).size == 0);  // "-" and "M" differ in the bit that tells cases apart
}

TEST_CASE("a name of several entries is ambiguous, unless a longer one decides") {
    CHECK(findName("J", {"J", "F", "J"}).isAmbiguous);
    CHECK(findName("j", {"J", "F", "J"}).isAmbiguous);
    CHECK_FALSE(findName("F", {"J", "F", "J"}).isAmbiguous);
    CHECK_FALSE(findName("Ju", {"J", "J", "Ju"}).isAmbiguous);
}
