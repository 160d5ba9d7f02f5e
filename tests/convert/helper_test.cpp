// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>
#include <doctest/doctest.h>

#include "support/formatters.h"
#include "support/random_text.h"
#include "support/shown.h"
#include "support/time_zone_guard.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace std::string_literals;

namespace {

std::string dateOf(OptionalText text) { return shown(TvOFXHelper().dateFromOFXDateString(text)); }

std::string amountOf(OptionalText text) {
    return shown(TvOFXHelper().decimalNumberFromOFXAmountString(text));
}

/// How an amount is written.
std::string written(const char* number) {
    const std::optional<Decimal> decimal = Decimal::fromString(number);
    REQUIRE(decimal);
    return TvOFXHelper().ofxAmountStringFromDecimalNumber(decimal).value_or("nothing");
}

/// Writes every number as "many", and 13 not at all.
class WordFormatter final : public NumberFormatter {
public:
    std::optional<Decimal> numberFromString(std::string_view text) const override {
        if (text == "many") return Decimal::fromInteger(1000);
        return std::nullopt;
    }
    std::optional<std::string> stringFromNumber(const Decimal& number) const override {
        if (number == Decimal::fromInteger(13)) return std::nullopt;
        return "many";
    }
};

}  // namespace

TEST_CASE("there is one shared helper, without formatters of a caller") {
    const std::shared_ptr<TvOFXHelper>& helper = TvOFXHelper::defaultHelper();
    REQUIRE(helper);
    CHECK(&helper == &TvOFXHelper::defaultHelper());
    CHECK(helper->dateFormatter() == nullptr);
    CHECK(helper->amountNumberFormatter() == nullptr);
}

TEST_CASE("the built-in date formatters have their patterns, in UTC and the process's locale") {
    const TvOFXHelper helper;
    const std::vector<const PatternDateFormatter*> formatters{
        &helper.ofxDateFormatter(), &helper.ofxDateFormatter2(), &helper.ofxDateFormatter3(),
        &helper.ofxDateFormatter4(), &helper.ofxDateFormatter5()};
    const std::vector<std::string> patterns{"yyyyMMddHHmmss.SSS[ZZZ:zz]", "yyyyMMddHHmmss[ZZZ:zz]",
                                            "yyyyMMddHHmmss.SSS", "yyyyMMddHHmmss", "yyyyMMdd"};
    const TimeZoneGuard guard("America/New_York");
    for (std::size_t i = 0; i < formatters.size(); ++i) {
        CHECK(formatters[i]->pattern() == patterns[i]);
        CHECK(formatters[i]->locale().empty());
        CHECK(formatters[i]->timeZone().offsetAt(utc(2024, 7, 1)).fromUTC.count() == 0);
    }
    CHECK(helper.ofxDateFormatter3().stringFromDate(utc(2024, 1, 31, 12, 0, 0, 5)) == "20240131120000.005");
    CHECK(helper.ofxDateFormatter5().stringFromDate(utc(2024, 1, 31, 23)) == "20240131");
}

TEST_CASE("the built-in amount formatter groups by commas and has two decimals") {
    const TvOFXHelper helper;
    const NumberFormat& format = helper.ofxAmountFormatter().format();
    CHECK(format.decimalSeparator == ".");
    CHECK(format.groupingSeparator == ",");
    CHECK(format.usesGroupingSeparator);
    CHECK(format.minimumFractionDigits == 2);
    CHECK(format.maximumFractionDigits == 2);
    CHECK(format.minimumIntegerDigits == 1);
    CHECK(format.maximumIntegerDigits == 309);
}

TEST_CASE("a date is read by the first of three formats that fits") {
    struct Row {
        OptionalText text;
        std::string_view date;
    };
    for (const Row& row : std::initializer_list<Row>{
             {std::nullopt, "nothing"},
             {"", "nothing"},
             // Milliseconds, with whatever follows.
             {"20240131120000.123", "2024-01-31 12:00:00.123"},
             {"20240131120000.123[-5:EST]", "2024-01-31 12:00:00.123"},
             {"20240131120000.123[+5.30:IST]", "2024-01-31 12:00:00.123"},
             {"20240131120000.123 and more", "2024-01-31 12:00:00.123"},
             {"20240131120000.1234", "2024-01-31 12:00:00.123"},
             {"20240131120000.123\u20AC", "2024-01-31 12:00:00.123"},
             {"20240131235959.999", "2024-01-31 23:59:59.999"},
             // Seconds.
             {"20240131120000", "2024-01-31 12:00:00.000"},
             {"20240131000000", "2024-01-31 00:00:00.000"},
             {"20240131235959", "2024-01-31 23:59:59.000"},
             // A day, also when what follows is no time.
             {"20240131", "2024-01-31 00:00:00.000"},
             {"2024013112", "2024-01-31 00:00:00.000"},
             {"202401311200", "2024-01-31 00:00:00.000"},
             {"20240131120000[-5:EST]", "2024-01-31 00:00:00.000"},
             {"20240131240000", "2024-01-31 00:00:00.000"},
             {"20240131126000", "2024-01-31 00:00:00.000"},
             {"20240131120060", "2024-01-31 00:00:00.000"},
             {"20240131120000.", "2024-01-31 00:00:00.000"},
             {"20240131120000.1", "2024-01-31 00:00:00.000"},
             {"20240131120000.12", "2024-01-31 00:00:00.000"},
             {"20240131120000.12x", "2024-01-31 00:00:00.000"},
             {"20240131120000,123", "2024-01-31 00:00:00.000"},
             {"20240131T120000", "2024-01-31 00:00:00.000"},
             {"20240131 ", "2024-01-31 00:00:00.000"},
             {"20240131\u20AC\u20AC\u20AC\u20AC", "2024-01-31 00:00:00.000"},
             {"202401311234567\u20AC\u20AC\u20AC\u20AC", "2024-01-31 00:00:00.000"},
             // No date.
             {"2024013", "nothing"},
             {"20240132", "nothing"},
             {"20241301", "nothing"},
             {"20230229", "nothing"},
             {"20240229", "2024-02-29 00:00:00.000"},
             {"20230229120000", "nothing"},
             {"00000101", "nothing"},
             {"00010101", "0001-01-01 00:00:00.000"},
             {"99991231235959.999", "9999-12-31 23:59:59.999"},
             {"2024-01-31", "nothing"},
             {" 20240131", "nothing"},
             {"\u00A0"
              "20240131",
              "nothing"},
             {"+2024131", "nothing"},
             {"2024 1 1", "nothing"},
             {"2024010-", "nothing"},
             {"2024*131", "nothing"},
             {"\u0662\u0660\u0662\u0664\u0660\u0661\u0663\u0661", "nothing"},
             {"abc", "nothing"},
         }) {
        CAPTURE(shown(row.text));
        CHECK(dateOf(row.text) == row.date);
    }
}

TEST_CASE("dates are UTC whatever the process's time zone") {
    for (const char* zone : {"UTC", "America/New_York", "Asia/Kolkata"}) {
        const TimeZoneGuard guard(zone);
        CHECK(dateOf("20240701120000") == "2024-07-01 12:00:00.000");
        CHECK(dateOf("20240701") == "2024-07-01 00:00:00.000");
    }
}

TEST_CASE("a caller's date formatter is asked first, with the whole text") {
    const auto formatter = std::make_shared<ScriptedDateFormatter>([](std::string_view text) {
        return text.ends_with("mine") ? std::optional(utc(1999, 1, 2)) : std::nullopt;
    });
    TvOFXHelper helper;
    helper.setDateFormatter(formatter);
    CHECK(helper.dateFormatter() == formatter);
    CHECK(shown(helper.dateFromOFXDateString("20240131120000.123[-5:EST]mine")) == "1999-01-02 00:00:00.000");
    CHECK(shown(helper.dateFromOFXDateString("20240131120000.123[-5:EST]")) == "2024-01-31 12:00:00.123");
    CHECK(shown(helper.dateFromOFXDateString("no date")) == "nothing");
    CHECK(shown(helper.dateFromOFXDateString("")) == "nothing");
    CHECK(formatter->asked() ==
          std::vector{"20240131120000.123[-5:EST]mine"s, "20240131120000.123[-5:EST]"s, "no date"s, ""s});
    CHECK(shown(helper.dateFromOFXDateString(std::nullopt)) == "nothing");
    CHECK(formatter->asked().size() == 4);
    helper.setDateFormatter(nullptr);
    CHECK(shown(helper.dateFromOFXDateString("mine")) == "nothing");
}

TEST_CASE("a caller's pattern reads dates that the built-in formats do not") {
    TvOFXHelper helper;
    helper.setDateFormatter(std::make_shared<PatternDateFormatter>("dd.MM.yyyy"));
    CHECK(shown(helper.dateFromOFXDateString("31.12.2024")) == "2024-12-31 00:00:00.000");
    CHECK(shown(helper.dateFromOFXDateString("20241231")) == "2024-12-31 00:00:00.000");
}

TEST_CASE("a date is written with the hour of the 12-hour clock, in the process's time zone") {
    struct Row {
        const char* zone;
        Date date;
        const char* text;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"UTC", utc(2024, 1, 31, 9, 5, 7), "20240131090507"},
             {"UTC", utc(2024, 1, 31, 15, 0, 0), "20240131030000"},
             {"UTC", utc(2024, 1, 31, 0, 30, 0), "20240131123000"},
             {"UTC", utc(2024, 1, 31, 12, 30, 0), "20240131123000"},
             {"UTC", utc(2024, 1, 31, 23, 59, 59, 999), "20240131115959"},
             {"America/New_York", utc(2024, 1, 31, 3, 0, 0), "20240130100000"},
             {"Europe/Berlin", utc(2024, 7, 1, 22, 0, 0), "20240702120000"},
             {"Asia/Kolkata", utc(2024, 7, 1, 0, 0, 0), "20240701053000"},
         }) {
        const TimeZoneGuard guard(row.zone);
        CAPTURE(row.zone);
        CHECK(TvOFXHelper::ofxDateTimeStringFromDate(row.date) == row.text);
    }
}

TEST_CASE("an amount is read exactly, with commas between groups of digits") {
    struct Row {
        OptionalText text;
        std::string_view number;
    };
    for (const Row& row : std::initializer_list<Row>{
             {std::nullopt, "nothing"},
             {"", "nothing"},
             {"-12.50", "-12.5"},
             {"+5", "5"},
             {"0", "0"},
             {"-0.00", "0"},
             {"1,234.56", "1234.56"},
             {"1,234,567", "1234567"},
             {"-1,234.56", "-1234.56"},
             {"12,50", "1250"},
             {"12,5", "nothing"},
             {".5", "0.5"},
             {"5.", "5"},
             {" 12.50 ", "12.5"},
             {"- 12.50", "-12.5"},
             {"\u2212"
              "12.50",
              "-12.5"},
             {"1 234.56", "1234.56"},
             {"1'234,567.8", "1234567.8"},
             {"1e3", "1000"},
             {"1E-2", "0.01"},
             {"abc", "nothing"},
             {"12abc", "nothing"},
             {"$5", "nothing"},
             {"(5.00)", "nothing"},
             {"1.2.3", "nothing"},
             {"--5", "nothing"},
             {".", "nothing"},
             {"-", "nothing"},
             {"NaN", "nothing"},
             {"0.1", "0.1"},
             {"12345678901234567890123456789012345678", "12345678901234567890123456789012345678"},
             {"123456789012345678901234567890123456789", "nothing"},
             {"1e128", "nothing"},
         }) {
        CAPTURE(shown(row.text));
        CHECK(amountOf(row.text) == row.number);
    }
}

TEST_CASE("the short way to read an amount gives what the formatter gives") {
    const std::vector<std::string> pieces{
        "0",  "1",  "9", "12", "345", ".",      ",",      "-",  "+",    "e",     "E",
        "e3", "-2", " ", "'",  "x",   "\u00A0", "\u2212", "00", "e127", "e-128", "99999999999999999999"};
    const TvOFXHelper helper;
    RandomText random(10);
    std::size_t read = 0;
    for (int i = 0; i < 50000; ++i) {
        const std::string text = random.soup(pieces, 1 + random.below(6));
        CAPTURE(text);
        const std::optional<Decimal> wanted = helper.ofxAmountFormatter().numberFromString(text);
        if (wanted) ++read;
        REQUIRE(shown(helper.decimalNumberFromOFXAmountString(text)) == shown(wanted));
    }
    CHECK(read > 5000);
}

TEST_CASE("an amount is written with two decimals and grouped thousands") {
    CHECK(written("1234.5") == "1,234.50");
    CHECK(written("0") == "0.00");
    CHECK(written("-12.5") == "-12.50");
    CHECK(written("1234567.891") == "1,234,567.89");
    CHECK(written("0.005") == "0.00");
    CHECK(written("0.015") == "0.02");
    CHECK(written("999.995") == "1,000.00");
    CHECK_FALSE(TvOFXHelper().ofxAmountStringFromDecimalNumber(std::nullopt));
}

TEST_CASE("a caller's number formatter is asked first, to read and to write") {
    TvOFXHelper helper;
    const auto formatter = std::make_shared<WordFormatter>();
    helper.setAmountNumberFormatter(formatter);
    CHECK(helper.amountNumberFormatter() == formatter);
    CHECK(shown(helper.decimalNumberFromOFXAmountString("many")) == "1000");
    CHECK(shown(helper.decimalNumberFromOFXAmountString("12.5")) == "12.5");
    CHECK(shown(helper.decimalNumberFromOFXAmountString("few")) == "nothing");
    CHECK(shown(helper.decimalNumberFromOFXAmountString(std::nullopt)) == "nothing");
    CHECK(helper.ofxAmountStringFromDecimalNumber(Decimal::fromInteger(12)) == "many");
    CHECK(helper.ofxAmountStringFromDecimalNumber(Decimal::fromInteger(13)) == "13.00");
    CHECK_FALSE(helper.ofxAmountStringFromDecimalNumber(std::nullopt));
    helper.setAmountNumberFormatter(nullptr);
    CHECK(helper.ofxAmountStringFromDecimalNumber(Decimal::fromInteger(12)) == "12.00");
}

TEST_CASE("a caller's formatters are not asked about nothing") {
    const auto numbers = std::make_shared<ScriptedNumberFormatter>(
        [](std::string_view) { return std::optional(Decimal::fromInteger(7)); });
    const auto dates = std::make_shared<ScriptedDateFormatter>(
        [](std::string_view) { return std::optional(utc(1999, 1, 2)); });
    TvOFXHelper helper;
    helper.setAmountNumberFormatter(numbers);
    helper.setDateFormatter(dates);
    CHECK(shown(helper.decimalNumberFromOFXAmountString(std::nullopt)) == "nothing");
    CHECK(shown(helper.dateFromOFXDateString(std::nullopt)) == "nothing");
    CHECK(numbers->asked().empty());
    CHECK(dates->asked().empty());
    CHECK(shown(helper.decimalNumberFromOFXAmountString("")) == "7");
    CHECK(shown(helper.dateFromOFXDateString("")) == "1999-01-02 00:00:00.000");
}

TEST_CASE("a caller's number formatter decides about a text that the built-in one reads otherwise") {
    TvOFXHelper helper;
    NumberFormat german;
    german.decimalSeparator = ",";
    german.groupingSeparator = ".";
    helper.setAmountNumberFormatter(std::make_shared<DecimalNumberFormatter>(german));
    CHECK(shown(helper.decimalNumberFromOFXAmountString("1.234,50")) == "1234.5");
    CHECK(shown(helper.decimalNumberFromOFXAmountString("12.50")) == "1250");
    CHECK(helper.ofxAmountStringFromDecimalNumber(Decimal::fromString("1234.5")) == "1.234,50");
}

TEST_CASE("formatters set on one helper are not those of another") {
    TvOFXHelper helper;
    helper.setAmountNumberFormatter(std::make_shared<WordFormatter>());
    CHECK(shown(TvOFXHelper().decimalNumberFromOFXAmountString("many")) == "nothing");
    CHECK(shown(TvOFXHelper::defaultHelper()->decimalNumberFromOFXAmountString("many")) == "nothing");
}
