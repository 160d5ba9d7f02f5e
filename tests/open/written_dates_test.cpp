// SPDX-License-Identifier: Apache-2.0
#include "open/written_dates.h"

#include <brackwell/convert.h>

#include <array>
#include <chrono>
#include <string>
#include <vector>

#include "open/written_values.h"
#include "support/effort.h"
#include "support/random_text.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::opening;
using namespace brackwell::tests;

namespace written_dates {

namespace {

WrittenDates documentWith(const Texts& dates) { return documentOf<WrittenDates>(dates); }

std::optional<Date> prescribedReading(std::string_view text) {
    return TvOFXHelper::defaultHelper()->dateFromOFXDateString(text);
}

/// What an import finds that was given the document's formatter.
std::optional<Date> readingOfImport(const WrittenDates& document, std::string_view text) {
    static TvOFXHelper helper;  // making one takes longer than a reading
    helper.setDateFormatter(document.formatter());
    return helper.dateFromOFXDateString(text);
}

/// "2025-06-30", with a time when it is not midnight; or what the reading is.
std::string shownReading(const DateReading& reading) {
    if (!reading.value) return reading.how == ReadingKind::ambiguous ? "ambiguous" : "unreadable";
    constexpr std::string_view midnight = " 00:00:00.000";
    std::string text = tests::shown(reading.value);
    if (text.ends_with(midnight)) text.erase(text.size() - midnight.size());
    return text + (reading.how == ReadingKind::prescribed ? ", prescribed" : "");
}

/// Each text as the document that consists of `others` and itself reads it.
void checkReadings(const std::vector<ReadingRow>& rows, const Texts& others = {}) {
    checkReadingsOf<WrittenDates>(rows, others, shownReading, readingOfImport);
    if (!others.empty()) return;
    for (const ReadingRow& row : rows) {
        CAPTURE(row.text);
        CHECK(documentWith({row.text}).arePlain() == row.reading.ends_with(", prescribed"));
    }
}

/// The number with zeros before it up to so many digits.
std::string padded(unsigned number, std::size_t width) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

/// A way to write dates.
struct Form {
    std::string mark;
    std::array<std::size_t, 3> order;  // of year, month, day
    std::size_t width;                 // of month and day
    std::string time;                  // after it; 10:20 if any
};

std::string written(const Form& form, const std::array<unsigned, 3>& fields) {
    std::string text;
    for (const std::size_t field : form.order) {
        if (!text.empty()) text += form.mark;
        text += padded(fields[field], field == 0 ? 4 : form.width);
    }
    return text + form.time;
}

}  // namespace

TEST_CASE("OFX dates keep their prescribed reading, and a document of them needs no help") {
    const std::vector<ReadingRow> rows = {
        {"20250630", "2025-06-30, prescribed"},
        {"20250630140509", "2025-06-30 14:05:09.000, prescribed"},
        {"20250630140509.123", "2025-06-30 14:05:09.123, prescribed"},
        {"20250630140509.123[-5:EST]", "2025-06-30 14:05:09.123, prescribed"},
        {"20240131120000[-5:EST]", "2024-01-31, prescribed"},
        {"202506301405", "2025-06-30, prescribed"},
        {"20250630 ", "2025-06-30, prescribed"},
        {"20250630250000", "2025-06-30, prescribed"},
        {"20240229", "2024-02-29, prescribed"},
        {"00010101", "0001-01-01, prescribed"},
        {"19000131", "1900-01-31, prescribed"}};
    checkReadings(rows);
    Texts all;
    for (const ReadingRow& row : rows) all.push_back(row.text);
    CHECK(documentWith(all).arePlain());
    CHECK(documentWith({}).arePlain());
    for (const std::string& text : all)
        CHECK(documentWith(all).formatter()->dateFromString(text) == std::nullopt);
}

TEST_CASE("days that no calendar has are unreadable") {
    for (const std::string text :
         {"20250631", "20241301", "20230229", "20250600", "20250030", "00000101", "2025-06-31", "2025-13-01",
          "2025-30-06", "31/04/2025", "30/02/2025", "02/30/2025", "29.02.2023", "13/13/2025", "0/6/2025",
          "00/00/2025", "0000-01-01", "99/99/9999"})
        checkReadings({{text, "unreadable"}});
}

TEST_CASE("a date with its year first is year, month and day") {
    checkReadings({{"2025-06-30", "2025-06-30"},
                   {"2025/06/30", "2025-06-30"},
                   {"2025.06.30", "2025-06-30"},
                   {"2025-6-3", "2025-06-03"},
                   {"2025-03-04", "2025-03-04"},
                   {"2024-02-29", "2024-02-29"}});
}

TEST_CASE("a number above 12 is the day") {
    checkReadings({{"30/06/2025", "2025-06-30"},
                   {"06/30/2025", "2025-06-30"},
                   {"30.06.2025", "2025-06-30"},
                   {"30-06-2025", "2025-06-30"},
                   {"06-13-2025", "2025-06-13"},
                   {"13/1/2025", "2025-01-13"},
                   {"1/31/2025", "2025-01-31"}});
}

TEST_CASE("a date whose day and month are the same number cannot mean anything else") {
    checkReadings({{"05/05/2025", "2025-05-05"},
                   {"5.5.2025", "2025-05-05"},
                   {"12-12-2025 08:00", "2025-12-12 08:00:00.000"}});
}

TEST_CASE("the order of day and month is that of the document's other dates with the same mark") {
    const Texts ambiguous = {"03/04/2025", "3/4/2025"};
    for (const std::string& text : ambiguous) {
        CAPTURE(text);
        checkReadings({{text, "ambiguous"}});
        checkReadings({{text, "2025-04-03"}}, {"30/06/2025"});
        checkReadings({{text, "2025-03-04"}}, {"06/30/2025"});
        checkReadings({{text, "2025-04-03"}}, {"30/06/2025 10:00", "05/05/2025", "13/1/2024", "06/30/2025x"});
        // Dates with other marks, and such that have no order, say nothing.
        for (const std::string other : {"30.06.2025", "06-30-2025", "2025/06/30", "05/05/2025", "04/03/2025",
                                        "20250630", "30/02/2025", "30/06/25", "nonsense"})
            checkReadings({{text, "ambiguous"}}, {other});
        // Of those that contradict each other, four times as many decide.
        const Texts fourOfFive = {"30/06/2025", "29/06/2025", "06/30/2025", "28/06/2025", "27/06/2025"};
        checkReadings({{text, "2025-04-03"}}, fourOfFive);
        checkReadings({{text, "ambiguous"}}, Texts(fourOfFive.begin(), fourOfFive.end() - 1));
        checkReadings({{text, "2025-03-04"}},
                      {"06/30/2025", "06/29/2025", "06/28/2025", "06/27/2025", "30/06/2025"});
    }
    checkReadings({{"03.04.2025", "2025-04-03"}, {"03-04-2025", "2025-03-04"}}, {"30.06.2025", "06-30-2025"});
}

TEST_CASE("the two days that a date can mean are known, and what the other dates say of them") {
    const auto either = [](const Texts& others, std::string_view text) {
        return documentWith(others).eitherDay(text);
    };
    struct Row {
        Texts others;
        DateOrder order;
        std::optional<Date> day;
    };
    const Date april = utc(2025, 4, 3);
    const Date march = utc(2025, 3, 4);
    for (const Row& row :
         {Row{{}, DateOrder::unknown, std::nullopt}, Row{{"30/06/2025"}, DateOrder::dayFirst, april},
          Row{{"06/30/2025"}, DateOrder::monthFirst, march},
          Row{{"30/06/2025", "06/30/2025"}, DateOrder::contradictory, std::nullopt}}) {
        CAPTURE(row.others);
        const auto days = either(row.others, " 03/04/2025 ");
        REQUIRE(days);
        CHECK(days->dayFirst == april);
        CHECK(days->monthFirst == march);
        CHECK(days->order == row.order);
        CHECK(days->day() == row.day);
    }
    for (const char* const certain : {"20250304", "2025-03-04", "30/06/2025", "06/30/2025", "04/04/2025",
                                      "31/04/2025", "03/04/25", "x", ""}) {
        CAPTURE(certain);
        CHECK_FALSE(either({}, certain));
    }
}

TEST_CASE("the dates of other documents decide where those of a document leave the order open") {
    struct Row {
        Texts own;
        Texts others;
        bool isHelped;
        std::string reading;
    };
    const std::vector<Row> rows = {
        {{"03/04/2025"}, {"30/06/2025"}, true, "2025-04-03"},
        {{"03/04/2025"}, {"06/30/2025"}, true, "2025-03-04"},
        {{"03/04/2025", "30/06/2025", "06/30/2025"},
         {"06/30/2025", "06/30/2025", "06/30/2025", "06/30/2025"},
         true,
         "2025-03-04"},
        {{"03/04/2025"}, {}, false, "ambiguous"},
        {{"03/04/2025"}, {"04/03/2025", "30.06.2025", "20250630"}, false, "ambiguous"},
        {{"03/04/2025"}, {"30/06/2025", "06/30/2025"}, false, "ambiguous"},
        {{"03/04/2025", "30/06/2025"}, {"06/30/2025", "06/29/2025", "06/28/2025"}, false, "2025-04-03"},
        {{"30.06.2025"}, {"30/06/2025"}, false, "ambiguous"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.own);
        CAPTURE(row.others);
        WrittenDates document = documentWith(row.own);
        WrittenDates all;
        all.addOrdersOf(document);
        all.addOrdersOf(documentWith(row.others));
        CHECK(document.isHelpedBy(all) == row.isHelped);
        if (row.isHelped) document.takeOrdersFrom(all);
        CHECK(shownReading(document.read("03/04/2025")) == row.reading);
    }
}

TEST_CASE("dates in improbable years are noticed, and are plain") {
    for (const std::string text : {"19691231", "21010101", "19010101", "00010101", "99991231120000"}) {
        CAPTURE(text);
        CHECK(documentWith({"20250630", text}).areDoubtful());
        CHECK(documentWith({text}).arePlain());
    }
    for (const std::string text :
         {"19700101", "19991231", "20000101", "20991231", "21001231", "20240229", "x"}) {
        CAPTURE(text);
        CHECK_FALSE(documentWith({text}).areDoubtful());
    }
}

TEST_CASE("a date with a number above 12 is read by itself where the others contradict each other") {
    checkReadings({{"30/06/2025", "2025-06-30"}, {"06/30/2025", "2025-06-30"}}, {"30/06/2025", "06/30/2025"});
}

TEST_CASE("a time may follow the date") {
    checkReadings({{"30/06/2025 14:05", "2025-06-30 14:05:00.000"},
                   {"30/06/2025 14:05:09", "2025-06-30 14:05:09.000"},
                   {"30/06/2025  4:05", "2025-06-30 04:05:00.000"},
                   {"2025-06-30 14:05:09", "2025-06-30 14:05:09.000"},
                   {"2025-06-30T14:05:09.1", "2025-06-30 14:05:09.100"},
                   {"2025-06-30T14:05:09,25", "2025-06-30 14:05:09.250"},
                   {"2025-06-30T14:05:09.123456789z", "2025-06-30 14:05:09.123"},
                   {"2025-06-30T00:00:00", "2025-06-30"},
                   {"30.06.2025\u00A023:59:59.999", "2025-06-30 23:59:59.999"}});
}

TEST_CASE("the zone of a time is applied") {
    checkReadings({{"2025-06-30T14:05:09Z", "2025-06-30 14:05:09.000"},
                   {"2025-06-30T14:05Z", "2025-06-30 14:05:00.000"},
                   {"2025-06-30T23:30:00 GMT", "2025-06-30 23:30:00.000"},
                   {"2025-06-30T14:05:09+02:00", "2025-06-30 12:05:09.000"},
                   {"2025-06-30T14:05:09+2:00", "2025-06-30 12:05:09.000"},
                   {"2025-06-30T14:05:09-0330", "2025-06-30 17:35:09.000"},
                   {"2025-06-30 14:05:09 +2", "2025-06-30 12:05:09.000"},
                   {"2025-06-30 14:05 EST", "2025-06-30 19:05:00.000"},
                   {"2025-06-30T23:30-05:00", "2025-07-01 04:30:00.000"},
                   {"2025-07-01T00:30:00+02:00", "2025-06-30 22:30:00.000"},
                   {"30/06/2025 23:30:00 -0300", "2025-07-01 02:30:00.000"},
                   {"2025-12-31 23:30:00.000[-5:EST]", "2026-01-01 04:30:00.000"},
                   {"2025-06-30 14:05:09[-5]", "2025-06-30 19:05:09.000"},
                   {"2025-06-30 14:05:09[5:XYZ]", "2025-06-30 09:05:09.000"},
                   {"2025-06-30 14:05:09[-3.5:NST]", "2025-06-30 17:35:09.000"},
                   {"2025-06-30 14:05:09[+5.30:IST]", "2025-06-30 08:35:09.000"},
                   {"2025-06-30 14:05:09[+5.75:NPT]", "2025-06-30 08:20:09.000"},
                   {"2025-06-30 14:05:09[+0.00:GMT]", "2025-06-30 14:05:09.000"},
                   {"2025-06-30 14:05:09[EST]", "2025-06-30 19:05:09.000"},
                   {"2025-06-30 14:05:09[GMT]", "2025-06-30 14:05:09.000"}});
}

TEST_CASE("a zone is not applied when it is not known, or when midnight stands for the day") {
    checkReadings({{"2025-06-30 14:05:09[XYZ]", "2025-06-30 14:05:09.000"},
                   {"2025-06-30T00:00:00+02:00", "2025-06-30"},
                   {"2025-06-30 00:00[-5:EST]", "2025-06-30"},
                   {"2025-06-30Z", "2025-06-30"},
                   {"2025-06-30z", "2025-06-30"},
                   {"2025-06-30+02:00", "2025-06-30"},
                   {"2025-06-30-05:00", "2025-06-30"},
                   {"30/06/2025 [-5:EST]", "2025-06-30"},
                   {"2025-06-30[-5:EST]", "2025-06-30"}});
}

TEST_CASE("a date with a time that is none is unreadable as a whole") {
    for (const std::string time : {"T",
                                   "T14",
                                   "14:05",
                                   " 14",
                                   " 24:00",
                                   " 14:60",
                                   " 14:05:60",
                                   " 14:5",
                                   " 14:05:9",
                                   " 014:05",
                                   " 14:05:09.",
                                   " :05",
                                   " 14:05 PM",
                                   " 2:05 pm",
                                   " T14:05",
                                   "T 14:05",
                                   "t14:05",
                                   " 14:05:09Zx",
                                   " 14:05:09+",
                                   " 14:05:09+023",
                                   " 14:05:09+02:",
                                   " 14:05:09+02:0",
                                   " 14:05:09+02:60",
                                   " 14:05:09+02:00x",
                                   " 14:05:09+02300",
                                   " 14:05+14:01",
                                   " 14:05 -15",
                                   " 14:05 XYZ",
                                   " 14:05[",
                                   " 14:05[]",
                                   " 14:05[-:EST]",
                                   " 14:05[-123:EST]",
                                   " 14:05[+15:XYZ]",
                                   " 14:05[-5.2:XYZ]",
                                   " 14:05[--5:EST]",
                                   " 14:05[-5[:EST]",
                                   "[-5",
                                   "+02:60",
                                   " 14:05[a]b]",
                                   " 14:05[x",
                                   " 14:05]",
                                   "x",
                                   " x",
                                   "/",
                                   "-1"})
        checkReadings({{"2025-06-30" + time, "unreadable"}});
}

TEST_CASE("white space around a date is passed over") {
    checkReadings({{" 2025-06-30", "2025-06-30"},
                   {"30/06/2025\r\n", "2025-06-30"},
                   {"\t\u00A030.06.2025 14:05 ", "2025-06-30 14:05:00.000"},
                   {" 20250630", "2025-06-30"},
                   {" 20250630140509 ", "2025-06-30 14:05:09.000"}});
}

TEST_CASE("other forms are unreadable") {
    for (const std::string text : {"",
                                   " ",
                                   "30/06/25",
                                   "25-06-30",
                                   "06/2025",
                                   "2025-06",
                                   "2025-06/30",
                                   "30.06/2025",
                                   "30 06 2025",
                                   "2025_06_30",
                                   "June 30, 2025",
                                   "30062025",
                                   "/06/2025",
                                   "30//2025",
                                   "30/06/",
                                   "30/06/20255",
                                   "030/06/2025",
                                   "2025-006-30",
                                   "02025-06-30",
                                   "2025-06-030",
                                   "2025-2025-01",
                                   "2025",
                                   "-2025-06-30",
                                   "1/2/3/2025",
                                   "1.2.3",
                                   "12.50",
                                   "abc",
                                   "\xFF",
                                   "2025\u221206\u221230",
                                   "0",
                                   "00000000"})
        checkReadings({{text, "unreadable"}});
}

TEST_CASE("the formatter keeps the evidence it was made with, and writes OFX dates") {
    WrittenDates document = documentWith({"30/06/2025"});
    const auto formatter = document.formatter();
    document.add("06/30/2025");
    CHECK(formatter->dateFromString("03/04/2025") == utc(2025, 4, 3));
    CHECK(document.formatter()->dateFromString("03/04/2025") == std::nullopt);
    CHECK(formatter->stringFromDate(utc(2025, 6, 30, 14, 5, 9)) == "20250630140509");
}

TEST_CASE("dates outside the years 1970 to 2100 are doubtful") {
    CHECK(isDoubtful(utc(1969, 12, 31, 23, 59, 59, 999)));
    CHECK_FALSE(isDoubtful(utc(1970, 1, 1)));
    CHECK_FALSE(isDoubtful(utc(2025, 6, 30)));
    CHECK_FALSE(isDoubtful(utc(2100, 12, 31, 23, 59, 59, 999)));
    CHECK(isDoubtful(utc(2101, 1, 1)));
    CHECK(isDoubtful(utc(1, 1, 1)));
    CHECK(isDoubtful(utc(9999, 12, 31)));
}

TEST_CASE("random days in every form are the same day, or unreadable where another is as likely") {
    const std::vector<Form> forms = {{"-", {0, 1, 2}, 2, ""}, {"/", {0, 1, 2}, 1, ""},
                                     {"/", {2, 1, 0}, 2, ""}, {".", {2, 1, 0}, 1, " 10:20"},
                                     {"-", {1, 2, 0}, 2, ""}, {"/", {1, 2, 0}, 1, "T10:20Z"}};
    RandomText random(1970);
    const WrittenDates nothingSeen;
    for (std::size_t round = scaled(100'000); round > 0; --round) {
        const auto upTo = [&random](std::size_t most) {
            return 1 + static_cast<unsigned>(random.below(most));
        };
        const std::array fields = {upTo(9999), upTo(12), upTo(28)};
        const Form& form = random.oneOf(forms);
        const std::string text = written(form, fields);
        CAPTURE(text);
        Date day = utc(static_cast<int>(fields[0]), fields[1], fields[2]);
        if (!form.time.empty()) day += std::chrono::minutes(620);
        const bool isCertain = form.order[0] == 0 || fields[2] > 12 || fields[1] == fields[2];
        REQUIRE(nothingSeen.read(text).value == (isCertain ? std::optional<Date>(day) : std::nullopt));
        const WrittenDates document = documentWith({written(form, {2000, 1, 31})});
        REQUIRE(document.read(text).value == day);
    }
}

TEST_CASE("whatever the texts are, the prescribed reading delivers no date that the document does not say") {
    RandomText random(31);
    const Texts pieces = {"20", "25", "2025", "06", "30", "1", "12", "/", "-",      ".",    "/",
                          "-",  ":",  " ",    "T",  "Z",  "[", "]",  "+", "\u00A0", "\xFF", "20250630"};
    for (std::size_t round = scaled(200'000); round > 0; --round) {
        const Texts texts = {random.soup(pieces, random.below(12)), random.soup(pieces, 6)};
        const WrittenDates document = documentWith(texts);
        for (const std::string& text : texts) {
            CAPTURE(text);
            const DateReading reading = document.read(text);
            const auto prescribed = prescribedReading(text);
            const bool isRead =
                reading.how != ReadingKind::unreadable && reading.how != ReadingKind::ambiguous;
            REQUIRE(reading.value.has_value() == isRead);
            REQUIRE((reading.how == ReadingKind::prescribed) == prescribed.has_value());
            if (prescribed) REQUIRE(reading.value == prescribed);
            REQUIRE(readingOfImport(document, text) == reading.value);
            if (document.arePlain()) REQUIRE(prescribed);
        }
    }
}

TEST_CASE("every text of eight digits is plain exactly when it is read") {
    for (unsigned month = 0; month < 100; ++month) {
        for (unsigned day = 0; day < 100; ++day) {
            for (const unsigned year : {0U, 1U, 99U, 100U, 1900U, 2000U, 2023U, 2024U, 9999U}) {
                const std::string text = padded(year, 4) + padded(month, 2) + padded(day, 2);
                CAPTURE(text);
                REQUIRE(documentWith({text}).arePlain() == prescribedReading(text).has_value());
            }
        }
    }
}

TEST_CASE("no byte at any place is taken for a part of a plain date that it is not") {
    for (const std::string form : {"20250615", "20250228120000"}) {
        for (std::size_t place = 0; place < form.size(); ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = form;
                text[place] = static_cast<char>(byte);
                CAPTURE(text);
                REQUIRE(documentWith({text}).arePlain() == prescribedReading(text).has_value());
            }
        }
    }
}

TEST_CASE("a date of ten megabytes costs no more than some looks at each byte") {
    // What took the square of that would not end before the test's time limit.
    const std::size_t size = scaled(10'000'000);
    struct Long {
        std::string before;
        std::string piece;
        bool isDate;
    };
    const std::vector<Long> rows = {{"", "1", true},  // 1111-11-11
                                    {"", " ", false},
                                    {"", "30/", false},
                                    {"2025-06-", "0", false},
                                    {"2025-06-30", " ", true},
                                    {"2025-06-30", "\u00A0", true},
                                    {"2025-06-30 14:05:09.", "1", true},
                                    {"2025-06-30 14:05:09[", "[", false},
                                    {"2025-06-30 14:05:09+", "0", false},
                                    {"2025-06-30 ", "\xC2", false}};
    for (const Long& row : rows) {
        CAPTURE(row.before);
        CAPTURE(row.piece);
        std::string text = row.before;
        text.reserve(size + 8);
        while (text.size() < size) text += row.piece;
        CHECK(documentWith({text}).read(text).value.has_value() == row.isDate);
    }
}

}  // namespace written_dates
