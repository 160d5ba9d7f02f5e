// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "support/decimals.h"

using brackwell::Decimal;
using brackwell::DecimalNumberFormatter;
using brackwell::NumberFormat;
using brackwell::tests::zeros;

namespace {

const std::string kMinusSign = "\xE2\x88\x92";
const std::string kNoBreakSpace = "\xC2\xA0";
const std::string kNarrowSpace = "\xE2\x80\xAF";
const std::string kQuotationMark = "\xE2\x80\x99";

struct Reading {
    std::string text;
    std::optional<std::string> plain;
};

void checkReadings(const std::vector<Reading>& rows, const NumberFormat& format = {}) {
    const DecimalNumberFormatter formatter(format);
    for (const Reading& row : rows) {
        CAPTURE(row.text);
        const auto number = formatter.numberFromString(row.text);
        REQUIRE(number.has_value() == row.plain.has_value());
        if (number) CHECK(number->toString() == *row.plain);
    }
}

void checkNothing(const std::vector<std::string>& texts, const NumberFormat& format = {}) {
    for (const std::string& text : texts) checkReadings({{text, std::nullopt}}, format);
}

struct Writing {
    std::string number;
    std::string text;
};

void checkWritings(const std::vector<Writing>& rows, const NumberFormat& format = {}) {
    const DecimalNumberFormatter formatter(format);
    for (const Writing& row : rows) {
        CAPTURE(row.number);
        const auto number = Decimal::fromString(row.number);
        REQUIRE(number);
        CHECK(formatter.stringFromNumber(*number).value_or("nothing") == row.text);
    }
}

NumberFormat separators(std::string decimal, std::string grouping) {
    NumberFormat format;
    format.decimalSeparator = std::move(decimal);
    format.groupingSeparator = std::move(grouping);
    return format;
}

NumberFormat fractionDigits(int minimum, int maximum) {
    NumberFormat format;
    format.minimumFractionDigits = minimum;
    format.maximumFractionDigits = maximum;
    return format;
}

NumberFormat integerDigits(int minimum, int maximum) {
    NumberFormat format = fractionDigits(0, 2);
    format.minimumIntegerDigits = minimum;
    format.maximumIntegerDigits = maximum;
    return format;
}

}  // namespace

TEST_CASE("the standard formatter keeps the format that it was given") {
    CHECK(DecimalNumberFormatter().format().decimalSeparator == ".");
    CHECK(DecimalNumberFormatter().format().maximumIntegerDigits == 309);
    CHECK(DecimalNumberFormatter(separators(",", ".")).format().groupingSeparator == ".");
}

TEST_CASE("the standard formatter serves behind its interface") {
    const std::unique_ptr<brackwell::NumberFormatter> formatter = std::make_unique<DecimalNumberFormatter>();
    CHECK(formatter->numberFromString("1,5") == std::nullopt);
    CHECK(formatter->numberFromString("1.5") == Decimal::fromString("1.5"));
    CHECK(formatter->stringFromNumber(Decimal::fromInteger(1234)) == "1,234.00");
}

TEST_CASE("amounts are read with any number of fraction digits") {
    checkReadings({{"-12.50", "-12.5"},
                   {"0", "0"},
                   {"1234.56", "1234.56"},
                   {"1234.567891", "1234.567891"},
                   {"007.10", "7.1"},
                   {".5", "0.5"},
                   {"5.", "5"},
                   {"-.5", "-0.5"},
                   {"-0.00", "0"},
                   {"12345678901234567890123456789012345678", "12345678901234567890123456789012345678"},
                   {"0.12345678901234567890123456789012345678", "0.12345678901234567890123456789012345678"}});
}

TEST_CASE("at most one sign is read, in front, with white space after it") {
    checkReadings({{"+5", "5"},
                   {"-5", "-5"},
                   {kMinusSign + "5", "-5"},
                   {"- 5", "-5"},
                   {"+ \t5", "5"},
                   {kMinusSign + kNoBreakSpace + "5", "-5"},
                   {"-\xE3\x80\x80"
                    "5",
                    "-5"}});
    checkNothing({"--5", "+-5", "-+5", "- -5", kMinusSign + kMinusSign + "5", "-" + kMinusSign + "5", "5-",
                  "5+", "5" + kMinusSign, "1-5", "1 -5", "-", "+", kMinusSign, "- ",
                  "\xE2\x88"
                  "5",
                  "\xE2\x88\x93"
                  "5"});
}

TEST_CASE("white space is read around a number") {
    checkReadings({{" 5", "5"},
                   {"5 ", "5"},
                   {"\r\n\t 12.5 \v\f\n", "12.5"},
                   {" - 5 ", "-5"},
                   {kNoBreakSpace + "5" + kNarrowSpace, "5"},
                   {"\xE2\x80\xA8"
                    "5\xC2\x85",
                    "5"}});
    checkNothing({"", " ", "\t\n", kNoBreakSpace, "1 .5", "1. 5", "1.5 e3", "1.5e 3", "1.5e+ 3", "1\t000",
                  "1\n234",
                  "\xE2\x80\x8B"
                  "5"});  // U+200B, zero width space, is not white space
}

TEST_CASE("a grouping mark needs two digits after it") {
    checkReadings({{"1,234.56", "1234.56"},
                   {"-12,50", "-1250"},
                   {"1,23", "123"},
                   {"1,234,567", "1234567"},
                   {"12,34,567.8", "1234567.8"},
                   {"1,2345678", "12345678"},
                   {"0,01", "1"},
                   {"1,00e2", "10000"},
                   {"1,00.", "100"}});
    checkNothing({"12,5",     "1,2,34", "1,234,5", "1,",    ",12",   ",",      "-,12",
                  "1,,234",   "1,234,", "1,2.34",  "1,.34", "1,5e3", "1.5,00", "1.234,56",
                  "1.23,456", "1e1,00", "1,-23",   "1,+23", "1, 23", "1 ,23"});
}

TEST_CASE("spaces and apostrophes group digits as the format's own mark does, and may be mixed with it") {
    checkReadings(
        {{"1 234.56", "1234.56"},
         {"1" + kNoBreakSpace + "234.56", "1234.56"},
         {"1" + kNarrowSpace + "234.56", "1234.56"},
         {"1'234.56", "1234.56"},
         {"1" + kQuotationMark + "234.56", "1234.56"},
         {"1 234'567,890" + kNoBreakSpace + "123" + kNarrowSpace + "456" + kQuotationMark + "789.01",
          "1234567890123456789.01"},
         {"1 23", "123"}});
    checkNothing({"1 2", "1'2", "1" + kNoBreakSpace + "2", "1  234", "1' 234", "1''234", "'12", "1'",
                  "1" + kNoBreakSpace + " 23", "1_234", "1.234.567",
                  "1\xE2\x80\x98"
                  "234",
                  "1\xE2\x80\x89"
                  "234",
                  "1\xC2"
                  "234",
                  "1\xE2\x80"
                  "234",
                  "1`234"});
}

TEST_CASE("an exponent is read after the digits") {
    checkReadings({{"1e3", "1000"},
                   {"1E3", "1000"},
                   {"1.5e+3", "1500"},
                   {"1,500.5e-1", "150.05"},
                   {"15e" + kMinusSign + "1", "1.5"},
                   {"-1e0", "-1"},
                   {"0e99999999999999999999", "0"},
                   {"5.e1", "50"},
                   {".5e1", "5"},
                   {" 1e3 ", "1000"}});
    checkNothing({"e", "e3", "-e3", ".e3", "1e", "1e+", "1e-", "1e+-3", "1e3.5", "1e3e3", "1ee3", "1d3"});
}

TEST_CASE("what is not a number through and through is nothing to the standard formatter") {
    checkNothing({"abc",
                  "12x",
                  "x12",
                  "(5.00)",
                  "$5",
                  "5$",
                  "5%",
                  "1.2.3",
                  "1..2",
                  ".",
                  "-.",
                  "0x10",
                  "inf",
                  "NaN",
                  "EUR 5",
                  "5 EUR",
                  "5/2",
                  "\xD9\xA3",
                  "\xEF\xBC\x95",
                  "\xFF",
                  std::string("5\0", 2),
                  std::string("\0"
                              "5",
                              2)});
}

TEST_CASE("a number that does not fit a decimal number exactly is nothing to the standard formatter") {
    checkReadings({{"1" + zeros(60), "1" + zeros(60)},
                   {"1e127", "1" + zeros(127)},
                   {"1e-128", "0." + zeros(127) + "1"}});
    checkNothing({"1e128", "1e-129", "123456789012345678901234567890123456789", "1" + zeros(38) + ".5",
                  "1e9999999999999999999999", std::string(100, '9')});
}

TEST_CASE("whatever is a decimal number as it stands is the same number to the standard formatter") {
    const DecimalNumberFormatter formatter;
    std::mt19937_64 random(20240131);
    int numbers = 0;
    for (int round = 0; round < 100'000; ++round) {
        std::string text;
        for (std::uint64_t length = random() % 9; length > 0; --length)
            text += "0123456789..e+-"[random() % 15];
        const auto number = Decimal::fromString(text);
        CAPTURE(text);
        if (!number) continue;
        ++numbers;
        REQUIRE(formatter.numberFromString(text) == number);
    }
    CHECK(numbers > 10'000);
}

TEST_CASE("formatting limits on digits do not limit what is read") {
    NumberFormat format = fractionDigits(0, 0);
    format.maximumIntegerDigits = 1;
    checkReadings({{"1234.5678", "1234.5678"}, {".5", "0.5"}}, format);
    format.minimumFractionDigits = 4;
    format.minimumIntegerDigits = 4;
    checkReadings({{"1", "1"}}, format);
    format.usesGroupingSeparator = false;
    checkReadings({{"1,234", "1234"}}, format);
}

TEST_CASE("a format's own separators are read, of whatever length they are") {
    checkReadings({{"1.234,56", "1234.56"},
                   {"12,5", "12.5"},
                   {"12.50", "1250"},
                   {"12.5", std::nullopt},
                   {"1 234,5", "1234.5"},
                   {"1,234.56", std::nullopt}},
                  separators(",", "."));
    checkReadings({{"1\xD9\xAC"
                    "234\xD9\xAB"
                    "56",
                    "1234.56"},
                   {"1\xD9\xAC"
                    "2",
                    std::nullopt},
                   {"1\xD9"
                    "5",
                    std::nullopt},
                   {"1.5", std::nullopt},
                   {"1 234\xD9\xAB", "1234"}},
                  separators("\xD9\xAB", "\xD9\xAC"));  // the Arabic separators share their first byte
    checkReadings(
        {{"1<>234::5", "1234.5"}, {"1<>2", std::nullopt}, {"1<234", std::nullopt}, {"1:5", std::nullopt}},
        separators("::", "<>"));
    checkReadings({{"1" + kNarrowSpace + "234,5", "1234.5"}}, separators(",", kNarrowSpace));
}

TEST_CASE("a decimal separator wins over a grouping mark that looks the same") {
    checkReadings(
        {{"1'234", "1.234"}, {"1,234'56", "1234.56"}, {"1 234'5", "1234.5"}, {"1'234'567", std::nullopt}},
        separators("'", ","));
    checkReadings({{"1 234", "1.234"}, {"1'234 5", "1234.5"}, {" 5 ", "5"}}, separators(" ", ","));
    checkReadings({{"1" + kNoBreakSpace + "50", "1.5"}}, separators(kNoBreakSpace, ","));
    checkReadings({{"1.234", "1.234"}, {"1.2", "1.2"}, {"1.234.56", std::nullopt}, {"1 234.5", "1234.5"}},
                  separators(".", "."));
}

TEST_CASE("an empty separator stands nowhere") {
    checkReadings({{"1234.5", "1234.5"}, {"1,234", std::nullopt}, {"1 234", "1234"}}, separators(".", ""));
    checkReadings({{"1,234", "1234"}, {"1234", "1234"}, {"1.5", std::nullopt}, {".5", std::nullopt}},
                  separators("", ","));
    checkReadings({{"1 234", "1234"}, {"12", "12"}}, separators("", ""));
}

TEST_CASE("texts of megabytes are read by the standard formatter as exactly as short ones") {
    const std::size_t million = 1'000'000;
    std::string grouped = "1";
    for (std::size_t i = 0; i < million; ++i) grouped += ",000";
    std::string groupedZeros = "0";
    for (std::size_t i = 0; i < million; ++i) groupedZeros += kQuotationMark + "00";
    checkReadings(
        {{grouped + "e-2999998", "100"},
         {grouped, std::nullopt},
         {groupedZeros + ".5", "0.5"},
         {std::string(million, ' ') + "-" + std::string(million, ' ') + "5" + std::string(million, ' '),
          "-5"},
         {std::string(million, '-'), std::nullopt},
         {std::string(million, ','), std::nullopt},
         {"1e-" + std::string(million, '9'), std::nullopt}});
}

TEST_CASE("an amount is written with two fraction digits and groups of three integer digits") {
    checkWritings({{"0", "0.00"},
                   {"5", "5.00"},
                   {"-12.5", "-12.50"},
                   {"0.07", "0.07"},
                   {"-0.5", "-0.50"},
                   {"999", "999.00"},
                   {"1234.5", "1,234.50"},
                   {"-1234.56", "-1,234.56"},
                   {"-100000", "-100,000.00"},
                   {"1234567.891", "1,234,567.89"},
                   {"1e12", "1,000,000,000,000.00"},
                   {"12345678901234567890123456789012345678",
                    "12,345,678,901,234,567,890,123,456,789,012,345,678.00"}});
}

TEST_CASE("further fraction digits are rounded half to even") {
    checkWritings(
        {{"0.004", "0.00"},
         {"0.005", "0.00"},
         {"0.0050000000001", "0.01"},
         {"0.006", "0.01"},
         {"0.015", "0.02"},
         {"0.025", "0.02"},
         {"0.035", "0.04"},
         {"2.675", "2.68"},
         {"2.665", "2.66"},
         {"-2.675", "-2.68"},
         {"-2.665", "-2.66"},
         {"0.995", "1.00"},
         {"9.995", "10.00"},
         {"999.995", "1,000.00"},
         {"999.985", "999.98"},
         {"-999999.999", "-1,000,000.00"},
         {"1e-128", "0.00"},
         {"0.00499999999999999999999999999999999999", "0.00"},
         {"0.005" + zeros(36) + "1", "0.01"},
         {"0.99999999999999999999999999999999999999", "1.00"},
         {"99999999999999999999999999999999999.995", "100,000,000,000,000,000,000,000,000,000,000,000.00"},
         {"99999999999999999999999999999999999999e-39", "0.10"},
         {"99999999999999999999999999999999999999e-40", "0.01"},
         {"99999999999999999999999999999999999999e-41", "0.00"}});
    checkWritings({{"0.5", "0"},
                   {"1.5", "2"},
                   {"2.5", "2"},
                   {"2.51", "3"},
                   {"-0.5", "0"},
                   {"-1.5", "-2"},
                   {"0.9", "1"}},
                  fractionDigits(0, 0));
    checkWritings({{"0.00005", "0.0000"}, {"0.00015", "0.0002"}, {"1", "1.0000"}}, fractionDigits(4, 4));
}

TEST_CASE("a number that is written as zero carries no sign") {
    checkWritings({{"-0.005", "0.00"}, {"-0.001", "0.00"}, {"-1e-128", "0.00"}, {"-0.0051", "-0.01"}});
    checkWritings({{"-1000", "0"}, {"-1001", "-1"}}, integerDigits(1, 3));
}

TEST_CASE("fraction digits are written from the smallest number of them to the largest") {
    checkWritings({{"1", "1"}, {"1.5", "1.5"}, {"1.25", "1.25"}, {"1.12345", "1.123"}}, fractionDigits(0, 3));
    checkWritings({{"1", "1.0"}, {"1.25", "1.25"}, {"1.296", "1.296"}, {"1.2996", "1.3"}},
                  fractionDigits(1, 3));
    checkWritings({{"1e-128", "0." + zeros(127) + "1"}, {"-1.5", "-1.5"}}, fractionDigits(0, 1000));
    checkWritings({{"1.5", "1.5" + zeros(199)}}, fractionDigits(200, 200));
}

TEST_CASE("where the numbers of digits contradict each other, the smallest holds") {
    checkWritings({{"1.23456", "1.2346"}, {"1", "1.0000"}}, fractionDigits(4, 2));
    checkWritings({{"1.5", "2"}, {"0", "0"}}, fractionDigits(-3, -1));
    checkWritings({{"12345", "2,345"}}, integerDigits(4, 2));
    checkWritings({{"12.5", ".5"}, {"12", "0"}}, integerDigits(-4, -2));
}

TEST_CASE("integer digits are filled up with zeros, and those above the largest number are left out") {
    checkWritings({{"5", "005"}, {"-5.25", "-005.25"}, {"0", "000"}, {"1234", "1,234"}},
                  integerDigits(3, 309));
    checkWritings({{"5", "0,000,005"}}, integerDigits(7, 309));
    checkWritings({{"12345", "345"}, {"12045", "45"}, {"-12345.5", "-345.5"}, {"999.999", "0"}},
                  integerDigits(1, 3));
    checkWritings({{"0.25", ".25"}, {"-0.25", "-.25"}, {"3.25", "3.25"}, {"0", "0"}}, integerDigits(0, 309));
    NumberFormat ungrouped = integerDigits(1, 129);
    ungrouped.usesGroupingSeparator = false;
    checkWritings({{"99999999999999999999999999999999999999e127", "99" + zeros(127)}}, ungrouped);
}

TEST_CASE("a format's own separators are written") {
    checkWritings({{"-1234567.5", "-1.234.567,50"}}, separators(",", "."));
    checkWritings({{"1234567.5", "1" + kNarrowSpace + "234" + kNarrowSpace + "567,50"}},
                  separators(",", kNarrowSpace));
    checkWritings({{"1234.5", "1234.50"}}, separators(".", ""));
    NumberFormat ungrouped;
    ungrouped.usesGroupingSeparator = false;
    checkWritings({{"1234567.5", "1234567.50"}}, ungrouped);
}

TEST_CASE("a grouping separator that is the decimal separator too is not written") {
    checkWritings({{"1234.5", "1234.50"}}, separators(".", "."));
}

TEST_CASE("without a decimal separator only numbers without fraction digits are written") {
    checkWritings({{"1234", "nothing"}}, separators("", ","));
    NumberFormat whole = fractionDigits(0, 2);
    whole.decimalSeparator = "";
    checkWritings({{"1234", "1,234"}, {"1234.001", "1,234"}, {"0.5", "nothing"}}, whole);
}

TEST_CASE("what the standard formatter writes it reads as the same number") {
    std::vector<NumberFormat> formats = {{},
                                         separators(",", "."),
                                         separators(",", kNarrowSpace),
                                         separators("\xD9\xAB", "\xD9\xAC"),
                                         separators("'", "'"),
                                         separators(" ", "")};
    for (NumberFormat& format : formats) format.maximumFractionDigits = 40;
    std::mt19937_64 random(20240131);
    const auto between = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (int round = 0; round < 5'000; ++round) {
        std::string text = between(0, 1) == 0 ? "-" : "";
        for (int digits = between(1, 38); digits > 0; --digits)
            text += static_cast<char>('0' + between(0, 9));
        text += 'e';
        text += std::to_string(between(-40, 40));
        const auto number = Decimal::fromString(text);
        CAPTURE(text);
        REQUIRE(number);
        for (const NumberFormat& format : formats) {
            const DecimalNumberFormatter formatter(format);
            const auto written = formatter.stringFromNumber(*number);
            REQUIRE(written);
            CAPTURE(*written);
            REQUIRE(formatter.numberFromString(*written) == number);
        }
    }
}
