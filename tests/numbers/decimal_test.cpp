// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "support/decimals.h"

using brackwell::Decimal;
using brackwell::tests::decimal;
using brackwell::tests::zeros;

namespace {

const std::string nines38(38, '9');

/// For comparisons whose failure shows both numbers.
std::string plain(const std::optional<Decimal>& number) { return number ? number->toString() : "nothing"; }

struct DecimalReading {
    std::string text;
    std::string plain;
};

void checkDecimals(const std::vector<DecimalReading>& rows) {
    for (const DecimalReading& row : rows) {
        CAPTURE(row.text);
        const auto number = Decimal::fromString(row.text);
        REQUIRE(number);
        CHECK(number->toString() == row.plain);
    }
}

void checkNoDecimals(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        CAPTURE(text);
        CHECK(plain(Decimal::fromString(text)) == "nothing");
    }
}

}  // namespace

TEST_CASE("a decimal number without a value is zero") {
    constexpr Decimal zero;
    CHECK(zero.isZero());
    CHECK_FALSE(zero.isNegative());
    CHECK(zero.exponent() == 0);
    CHECK(zero.toString() == "0");
    CHECK(zero == Decimal::fromInteger(0));
}

TEST_CASE("a decimal number is a value that needs no care") {
    static_assert(std::is_trivially_copyable_v<Decimal>);
    static_assert(std::is_nothrow_default_constructible_v<Decimal>);
}

TEST_CASE("a whole number becomes the decimal number of the same value") {
    struct {
        std::int64_t value;
        std::string plain;
    } const rows[] = {{0, "0"},
                      {1, "1"},
                      {-1, "-1"},
                      {10, "10"},
                      {-1200, "-1200"},
                      {std::numeric_limits<std::int64_t>::max(), "9223372036854775807"},
                      {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
                      {1'000'000'000'000'000'000, "1000000000000000000"}};
    for (const auto& row : rows) {
        CAPTURE(row.plain);
        CHECK(Decimal::fromInteger(row.value).toString() == row.plain);
        CHECK(Decimal::fromInteger(row.value) == decimal(row.plain));
    }
}

TEST_CASE("a decimal number is read exactly from plain notation") {
    checkDecimals({{"-12.50", "-12.5"},
                   {"1234.56", "1234.56"},
                   {"+5", "5"},
                   {"0.1", "0.1"},
                   {".5", "0.5"},
                   {"5.", "5"},
                   {"-.25", "-0.25"},
                   {"007", "7"},
                   {"00.700", "0.7"},
                   {"100", "100"},
                   {"10.01", "10.01"},
                   {"1000000.000001", "1000000.000001"},
                   {"9999999999999999999", "9999999999999999999"},
                   {"12345678901234567890", "12345678901234567890"},
                   {"18446744073709551615", "18446744073709551615"},
                   {"18446744073709551616", "18446744073709551616"},
                   {"10000000000000000001", "10000000000000000001"},
                   {"-1234567890123456789.000000000000000001", "-1234567890123456789.000000000000000001"}});
}

TEST_CASE("a decimal number is read exactly from scientific notation") {
    checkDecimals({{"1e3", "1000"},
                   {"1E3", "1000"},
                   {"1e+3", "1000"},
                   {"1e-3", "0.001"},
                   {"-12.5e1", "-125"},
                   {"12.5e-1", "1.25"},
                   {".5e1", "5"},
                   {"5.e1", "50"},
                   {"1e0", "1"},
                   {"1e-0", "1"},
                   {"1e0000000000000000000000000000002", "100"},
                   {"1200e-2", "12"}});
}

TEST_CASE("what is not a number through and through is no decimal number") {
    checkNoDecimals({"",
                     "+",
                     "-",
                     ".",
                     "-.",
                     "e",
                     "e5",
                     ".e5",
                     "--5",
                     "+-5",
                     "5-",
                     " 5",
                     "5 ",
                     "- 5",
                     "1,000",
                     "1 000",
                     "1.2.3",
                     "1..2",
                     "12x",
                     "x12",
                     "1e",
                     "1e+",
                     "1e-",
                     "1e+-",
                     "1e+-5",
                     "1ee5",
                     "1e5.0",
                     "1e5e",
                     "1e 5",
                     "0x10",
                     "abc",
                     "inf",
                     "nan",
                     "NaN",
                     "1_000",
                     "1'000",
                     "(5)",
                     "$5",
                     "5%",
                     "1e5 ",
                     "\xE2\x88\x92"
                     "5",         // U+2212 is no sign here
                     "\xD9\xA3",  // U+0663, an Arabic digit
                     std::string("5\0", 2),
                     std::string("\0"
                                 "5",
                                 2),
                     "\xFF",
                     "5\n"});
}

TEST_CASE("there is one zero, without sign or exponent") {
    for (const char* text : {"0", "-0", "+0", "0.00", "-0.0", ".0", "0.", "0e5", "0e-5", "000",
                             "0e999999999999999999999", "-0e-999999999999999999999", "0.000e128"}) {
        CAPTURE(text);
        const Decimal number = decimal(text);
        CHECK(number == Decimal());
        CHECK(number.toString() == "0");
        CHECK_FALSE(number.isNegative());
        CHECK(number.exponent() == 0);
    }
    CHECK(Decimal::fromParts(true, 0, 0, 5) == Decimal());
    CHECK(Decimal::fromParts(true, 0, 0, std::numeric_limits<std::int64_t>::max()) == Decimal());
    CHECK(Decimal::fromParts(false, 0, 0, std::numeric_limits<std::int64_t>::min()) == Decimal());
}

TEST_CASE("up to 38 digits fit, counted without the zeros at both ends") {
    checkDecimals({{nines38, nines38},
                   {"-" + nines38, "-" + nines38},
                   {"1" + zeros(36) + "1", "1" + zeros(36) + "1"},
                   {"0." + nines38, "0." + nines38},
                   {zeros(50) + nines38, nines38},
                   {nines38 + zeros(50), nines38 + zeros(50)},
                   {"1" + zeros(60), "1" + zeros(60)},
                   {"1" + zeros(37) + "." + zeros(60), "1" + zeros(37)},
                   {"0." + zeros(60) + "1", "0." + zeros(60) + "1"},
                   {nines38.substr(1) + "." + "9" + zeros(10), nines38.substr(1) + ".9"}});
    checkNoDecimals({nines38 + "9", "1" + nines38, nines38 + ".1", "0.1" + nines38, "1" + zeros(37) + "1",
                     "1" + zeros(60) + "1", "1." + zeros(60) + "1", nines38 + zeros(50) + "1",
                     "340282366920938463463374607431768211455", "340282366920938463463374607431768211456"});
}

TEST_CASE("the exponent reaches from -128 to 127, counted without the zeros at the end") {
    checkDecimals({{"1e127", "1" + zeros(127)},
                   {"-1e-128", "-0." + zeros(127) + "1"},
                   {"10e126", "1" + zeros(127)},
                   {"10e-129", "0." + zeros(127) + "1"},
                   {"1000e-131", "0." + zeros(127) + "1"},
                   {"0.1e128", "1" + zeros(127)},
                   {"0.001e130", "1" + zeros(127)},
                   {nines38 + "e127", nines38 + zeros(127)},
                   {nines38 + "e-128", "0." + zeros(90) + nines38},
                   {"1" + zeros(127), "1" + zeros(127)},
                   {"0." + zeros(127) + "1", "0." + zeros(127) + "1"},
                   {"1.5e128", "15" + zeros(127)}});
    checkNoDecimals({"1e128", "10e127", "1e-129", "0.1e-128", "1.5e-128", nines38 + "e128", nines38 + "e-129",
                     "1" + zeros(128), "0." + zeros(128) + "1", "1e2147483648", "1e-2147483649",
                     "1e9223372036854775807", "1e9223372036854775808", "1e-9223372036854775808",
                     "1e18446744073709551616", "1e18446744073709551743",
                     "1e99999999999999999999999999999999"});
}

TEST_CASE("texts of megabytes are read as exactly as short ones") {
    const std::size_t million = 1'000'000;
    checkDecimals({{zeros(4 * million) + "1.5", "1.5"},
                   {"1.5" + zeros(4 * million), "1.5"},
                   {"0." + zeros(million - 1) + "1e1000000", "1"},
                   {"1" + zeros(million) + "e-1000000", "1"},
                   {"-12" + zeros(million) + "." + zeros(million) + "e-999999", "-120"},
                   {"2e" + zeros(million) + "2", "200"},
                   {zeros(million) + "." + zeros(million), "0"}});
    CHECK(Decimal::fromString(std::string(4 * million, '9')) == std::nullopt);
    CHECK(Decimal::fromString("0." + std::string(4 * million, '1')) == std::nullopt);
    CHECK(Decimal::fromString("1e" + std::string(4 * million, '9')) == std::nullopt);
    CHECK(Decimal::fromString("1e-" + std::string(4 * million, '9')) == std::nullopt);
    CHECK(Decimal::fromString("1" + zeros(million)) == std::nullopt);
    CHECK(Decimal::fromString("0." + zeros(million) + "1") == std::nullopt);
}

TEST_CASE("a decimal number is made of a sign, a coefficient of two words and an exponent") {
    constexpr std::uint64_t all = std::numeric_limits<std::uint64_t>::max();
    constexpr std::int64_t furthest = std::numeric_limits<std::int64_t>::max();
    struct {
        bool negative;
        std::uint64_t high;
        std::uint64_t low;
        std::int64_t exponent;
        std::optional<std::string> text;
    } const rows[] = {
        {false, 0, 1234, -2, "12.34"},
        {true, 0, 1234, 2, "-123400"},
        {false, 0, 1000, -131, "1e-128"},
        {false, 0, 1000, -132, std::nullopt},
        {false, 0, 1, 127, "1e127"},
        {false, 0, 10, 127, std::nullopt},
        {false, 0, 1, 128, std::nullopt},
        {false, 1, 0, 0, "18446744073709551616"},
        {false, 0, all, 0, "18446744073709551615"},
        {false, 5421010862427522170U, 687399551400673279U, 0, nines38},      // 10^38 - 1
        {false, 5421010862427522170U, 687399551400673280U, 0, "1e38"},       // 10^38
        {true, 5421010862427522170U, 687399551400673280U, -166, "-1e-128"},  // all zeros stripped
        {true, 5421010862427522170U, 687399551400673280U, -167, std::nullopt},
        {false, 5421010862427522170U, 687399551400673281U, 0, std::nullopt},
        {false, all, all, 0, std::nullopt},  // 2^128 - 1
        {false, all, all - 5, 0, "340282366920938463463374607431768211450"},
        {false, 0, 1, furthest, std::nullopt},
        {false, 0, 10, furthest, std::nullopt},
        {false, 0, 1, -furthest - 1, std::nullopt},
        {false, all, all, -furthest - 1, std::nullopt}};
    for (const auto& row : rows) {
        CAPTURE(row.high);
        CAPTURE(row.low);
        CAPTURE(row.exponent);
        const auto expected = row.text ? Decimal::fromString(*row.text) : std::nullopt;
        REQUIRE(expected.has_value() == row.text.has_value());
        CHECK(plain(Decimal::fromParts(row.negative, row.high, row.low, row.exponent)) == plain(expected));
    }
}

TEST_CASE("the parts of a decimal number are those without zeros at the end") {
    struct {
        std::string text;
        bool negative;
        std::uint64_t high;
        std::uint64_t low;
        int exponent;
    } const rows[] = {{"-12.50", true, 0, 125, -1},
                      {"1000", false, 0, 1, 3},
                      {"18446744073709551616", false, 1, 0, 0},
                      {"-184467440737095516160000.00", true, 1, 0, 4},
                      {nines38, false, 5421010862427522170U, 687399551400673279U, 0},
                      {"1e127", false, 0, 1, 127},
                      {"1e-128", false, 0, 1, -128}};
    for (const auto& row : rows) {
        CAPTURE(row.text);
        const Decimal number = decimal(row.text);
        CHECK(number.isNegative() == row.negative);
        CHECK(number.coefficientHigh() == row.high);
        CHECK(number.coefficientLow() == row.low);
        CHECK(number.exponent() == row.exponent);
        CHECK_FALSE(number.isZero());
    }
}

TEST_CASE("equality goes by value, not by notation") {
    const std::vector<std::vector<std::string>> groups = {
        {"12.5", "12.50", "+12.5", "125e-1", "0.125e2", "0012.5000"},
        {"1000", "1e3", "0.001e6", "1000.000"},
        {"0", "-0", "0e9"},
        {"-7", "-7.0", "-70e-1"},
        {"7"}};
    for (std::size_t i = 0; i < groups.size(); ++i) {
        for (std::size_t j = 0; j < groups.size(); ++j) {
            for (const std::string& a : groups[i]) {
                for (const std::string& b : groups[j]) {
                    CAPTURE(a);
                    CAPTURE(b);
                    CHECK((decimal(a) == decimal(b)) == (i == j));
                    CHECK(std::is_eq(decimal(a) <=> decimal(b)) == (i == j));
                }
            }
        }
    }
}

TEST_CASE("order goes by value across all lengths and exponents") {
    const std::vector<std::string> ascending = {"-" + nines38 + "e127",
                                                "-1e127",
                                                "-1e38",
                                                "-" + nines38,
                                                "-1000",
                                                "-999.9999",
                                                "-10",
                                                "-9.5",
                                                "-9",
                                                "-1",
                                                "-0." + nines38,
                                                "-0.1",
                                                "-0.09",
                                                "-1.1e-127",
                                                "-1e-127",
                                                "-1e-128",
                                                "0",
                                                "1e-128",
                                                "1e-127",
                                                "1.1e-127",
                                                "0.0999",
                                                "0.1",
                                                "0.11",
                                                "0." + nines38,
                                                "1",
                                                "1.0000001",
                                                "2",
                                                "9.999",
                                                "10",
                                                "99",
                                                "100",
                                                "12345678901234567889",
                                                "12345678901234567890",
                                                "12345678901234567890.5",
                                                nines38.substr(1) + "8",
                                                nines38,
                                                "1e38",
                                                "1.1e38",
                                                "1e39",
                                                "9e126",
                                                nines38 + "e89",
                                                "1e127",
                                                "1.1e127",
                                                nines38 + "e127"};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            CAPTURE(ascending[i]);
            CAPTURE(ascending[j]);
            CHECK((decimal(ascending[i]) <=> decimal(ascending[j])) == (i <=> j));
        }
    }
}

TEST_CASE("plain notation has no exponent, no zeros after the last fraction digit and no bare point") {
    checkDecimals(
        {{"-12.50", "-12.5"},
         {"1234.56", "1234.56"},
         {"0", "0"},
         {"5.00", "5"},
         {"5e0", "5"},
         {"1e2", "100"},
         {"1e-1", "0.1"},
         {"-12e-2", "-0.12"},
         {"123e-2", "1.23"},
         {"10000000000000000000000000000000000001e-20", "100000000000000000.00000000000000000001"}});
}

TEST_CASE("a sum is exact or nothing") {
    struct {
        std::string a;
        std::string b;
        std::string sum;  // empty for nothing
    } const rows[] = {
        {"1", "2", "3"},
        {"0.1", "0.2", "0.3"},
        {"-12.5", "12.5", "0"},
        {"12.34", "-0.34", "12"},
        {"5", "-7", "-2"},
        {"-5", "7", "2"},
        {"0", "-3.5", "-3.5"},
        {"-3.5", "0", "-3.5"},
        {"0", "0", "0"},
        {"99.99", "0.01", "100"},
        {"1e30", "-1e30", "0"},
        {"1e100", "1e100", "2e100"},
        {"1e100", "-1e100", "0"},
        {"1e100", "1e63", "10000000000000000000000000000000000001e63"},
        {"1e100", "1e62", ""},
        {"1e100", "1e-100", ""},
        {"1e127", "-1e-128", ""},
        {"9223372036854775807", "9223372036854775807", "18446744073709551614"},
        {"18446744073709551615", "1", "18446744073709551616"},
        // the limit on digits
        {nines38, "1", "1e38"},
        {nines38, "2", ""},
        {nines38, nines38, ""},
        {nines38, "-" + nines38, "0"},
        {nines38, "-" + nines38.substr(1) + "8", "1"},
        {nines38, "0.1", ""},
        {"5" + zeros(36) + "5", "5" + zeros(36) + "5", "10" + zeros(35) + "10"},
        // terms that have more digits beside each other than their sum
        {"1e38", "-1", nines38},
        {"-1", "1e38", nines38},
        {"-1e38", "1", "-" + nines38},
        {"1e38", "1", ""},
        {"1e38", "-" + nines38, "1"},
        {"1.5e38", "-" + nines38, "50000000000000000000000000000000000001"},
        {"1.9e38", "-" + nines38, "90000000000000000000000000000000000001"},
        {"199999999999999999999999999999999999990", "-" + nines38, "99999999999999999999999999999999999991"},
        {"2e38", "-" + nines38, ""},
        {"1e39", "-" + nines38, ""},
        {"3e38", "-1", ""},
        {"4e38", "1", ""},
        {"9e127", "-9e89", ""},
        // terms whose sum is beyond 128 bits, and there would begin anew
        {"2.9e38", "9" + zeros(36) + "1", ""},
        {"-2.9e38", "-9" + zeros(36) + "1", ""},
        {"2.9e38", nines38, ""},
        {"2.9e118", "9" + zeros(36) + "1e80", ""},
        // the limits on the exponent
        {"5e127", "5e127", ""},
        {"4e127", "5e127", "9e127"},
        {nines38 + "e127", "1e127", ""},
        {"5e-128", "5e-128", "1e-127"},
        {"1e-128", "1e-128", "2e-128"},
        {"1e-127", "-1e-128", "9e-128"}};
    for (const auto& row : rows) {
        CAPTURE(row.a);
        CAPTURE(row.b);
        const auto expected = row.sum.empty() ? std::nullopt : std::optional(decimal(row.sum));
        CHECK(plain(decimal(row.a).plus(decimal(row.b))) == plain(expected));
        CHECK(plain(decimal(row.b).plus(decimal(row.a))) == plain(expected));
    }
}

TEST_CASE("a product is exact or nothing") {
    struct {
        std::string a;
        std::string b;
        std::string product;  // empty for nothing
    } const rows[] = {
        {"0", "12.5", "0"},
        {"3", "4", "12"},
        {"-3", "4", "-12"},
        {"-0.5", "-0.5", "0.25"},
        {"45.10", "100", "4510"},
        {"0.001", "1000", "1"},
        {"1e100", "1e-100", "1"},
        // as many digits as fit, and one more
        {"9999999999999999999", "9999999999999999999", "99999999999999999980000000000000000001"},
        {"11111111111111111111", "9999999999999999999", ""},
        {nines38, "1", nines38},
        {nines38, "3", ""},
        // digits that are zeros at the end of the product do not count
        {"5" + zeros(36) + "4", "25", "125" + zeros(34) + "1e2"},
        {"1125899906842624", "88817841970012523233890533447265625", "1e50"},
        // the limits on the exponent
        {"1e64", "1e63", "1e127"},
        {"1e64", "1e64", ""},
        {"1e-64", "1e-64", "1e-128"},
        {"1e-65", "1e-64", ""},
        {"2e-65", "5e-64", "1e-128"}};
    for (const auto& row : rows) {
        CAPTURE(row.a);
        CAPTURE(row.b);
        const auto expected = row.product.empty() ? std::nullopt : std::optional(decimal(row.product));
        CHECK(plain(decimal(row.a).times(decimal(row.b))) == plain(expected));
        CHECK(plain(decimal(row.b).times(decimal(row.a))) == plain(expected));
    }
}

TEST_CASE("a negated decimal number has the other sign, and zero has none") {
    CHECK(decimal("12.5").negated() == decimal("-12.5"));
    CHECK(decimal("-12.5").negated() == decimal("12.5"));
    CHECK(decimal("-" + nines38 + "e127").negated() == decimal(nines38 + "e127"));
    CHECK(Decimal().negated() == Decimal());
    CHECK_FALSE(Decimal().negated().isNegative());
}

TEST_CASE("a difference is exact or nothing") {
    CHECK(plain(decimal("12.5").minus(decimal("0.75"))) == "11.75");
    CHECK(plain(decimal("0.1").minus(decimal("0.3"))) == "-0.2");
    CHECK(plain(decimal("5").minus(decimal("5"))) == "0");
    CHECK(plain(Decimal().minus(decimal("-7"))) == "7");
    CHECK(decimal(nines38).minus(decimal(nines38)) == Decimal());
    CHECK_FALSE(decimal(nines38).minus(decimal("0.1")));
    CHECK_FALSE(decimal("-" + nines38 + "e127").minus(decimal(nines38 + "e127")));
}

TEST_CASE("rounding goes to the nearest number, and from the middle to the even one") {
    struct Row {
        std::string number;
        int fractionDigits;
        std::string rounded;
    };
    const std::vector<Row> rows = {
        {"0.125", 2, "0.12"},
        {"0.135", 2, "0.14"},
        {"0.1350001", 2, "0.14"},
        {"0.1250001", 2, "0.13"},
        {"0.1249999", 2, "0.12"},
        {"-0.125", 2, "-0.12"},
        {"-0.135", 2, "-0.14"},
        {"0.5", 0, "0"},
        {"1.5", 0, "2"},
        {"2.5", 0, "2"},
        {"-0.5", 0, "0"},
        {"9.99", 1, "10"},
        {"99.5", 0, "100"},
        {"12.3", 2, "12.3"},
        {"1200", 2, "1200"},
        {"1e127", 2, "1e127"},
        {"0", 2, "0"},
        {"0.05", 0, "0"},
        {"5e-128", 127, "0"},
        {"15e-128", 127, "2e-127"},
        {"6e-128", 127, "1e-127"},
        {"1e-128", 128, "1e-128"},
        {"1e-128", 1000, "1e-128"},
        {"9e-128", 0, "0"},
        {"12.5", -3, "12"},
        {"0." + nines38, 37, "1"},
        {"0." + nines38, 38, "0." + nines38},
        {"-0." + nines38, 0, "-1"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.number);
        CAPTURE(row.fractionDigits);
        CHECK(decimal(row.number).rounded(row.fractionDigits) == decimal(row.rounded));
    }
    CHECK_FALSE(decimal("-0.5").rounded(0).isNegative());
}

TEST_CASE("an amount becomes a number of smallest units exactly or not at all, and back") {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
    struct Row {
        std::string number;
        int fractionDigits;
        std::optional<std::int64_t> units;
    };
    const std::vector<Row> rows = {
        {"12.5", 2, 1250},
        {"-12.5", 2, -1250},
        {"-12.05", 2, -1205},
        {"0", 2, 0},
        {"845", 0, 845},
        {"1.234", 3, 1234},
        {"1200", -2, 12},
        {"9223372036854775807", 0, largest},
        {"-9223372036854775808", 0, smallest},
        {"92233720368547758.07", 2, largest},
        {"-92233720368547758.08", 2, smallest},
        {"1e18", 0, 1'000'000'000'000'000'000},
        {"0.000000000000000001", 18, 1},
        {"0.005", 2, std::nullopt},
        {"12.5", 0, std::nullopt},
        {"1250", -2, std::nullopt},
        {"9223372036854775808", 0, std::nullopt},
        {"-9223372036854775809", 0, std::nullopt},
        {"92233720368547758.08", 2, std::nullopt},
        {"1e19", 0, std::nullopt},
        {"1e127", 2, std::nullopt},
        {"1", 19, std::nullopt},
        {"1", std::numeric_limits<int>::max(), std::nullopt},
        {"1", std::numeric_limits<int>::min(), std::nullopt},
        {nines38, 0, std::nullopt},
    };
    for (const Row& row : rows) {
        CAPTURE(row.number);
        CAPTURE(row.fractionDigits);
        CHECK(decimal(row.number).toMinorUnits(row.fractionDigits) == row.units);
        if (row.units) CHECK(Decimal::fromMinorUnits(*row.units, row.fractionDigits) == decimal(row.number));
    }
}

TEST_CASE("smallest units of a size that no decimal number has are nothing") {
    CHECK(Decimal::fromMinorUnits(0, std::numeric_limits<int>::max()) == Decimal());
    CHECK(Decimal::fromMinorUnits(7, 128) == decimal("7e-128"));
    CHECK(Decimal::fromMinorUnits(70, 129) == decimal("7e-128"));
    CHECK_FALSE(Decimal::fromMinorUnits(7, 129));
    CHECK_FALSE(Decimal::fromMinorUnits(7, -128));
    CHECK_FALSE(Decimal::fromMinorUnits(7, std::numeric_limits<int>::min()));
}

TEST_CASE("a decimal number becomes the nearest binary one") {
    struct Row {
        std::string number;
        double nearest;
    };
    const std::vector<Row> rows = {
        {"0", 0.0},
        {"-12.5", -12.5},
        {"0.1", 0.1},
        {"1234567.89", 1234567.89},
        {"9007199254740993", 9007199254740992.0},  // between two, and taken to the even one
        {"9007199254740993.0000000000000000001", 9007199254740994.0},
        {"1e127", 1e127},
        {"-1e-128", -1e-128},
        {nines38 + "e127", 1e165},
    };
    for (const Row& row : rows) {
        CAPTURE(row.number);
        CHECK(decimal(row.number).toDouble() == row.nearest);
    }
    CHECK_FALSE(std::signbit(Decimal().toDouble()));
}

TEST_CASE("a binary number becomes the shortest decimal number that is nearest to it, if that fits") {
    struct Row {
        double value;
        std::string number;
    };
    const std::vector<Row> rows = {
        {0.1, "0.1"},       {-12.5, "-12.5"},
        {1e23, "1e23"},     {0.1 + 0.2, "0.30000000000000004"},
        {-0.0, "0"},        {1e127, "1e127"},
        {1e-128, "1e-128"}, {std::numeric_limits<double>::epsilon(), "2.220446049250313e-16"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.value);
        CHECK(Decimal::fromDouble(row.value) == decimal(row.number));
    }
    for (const double value :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::max(),
          std::numeric_limits<double>::denorm_min(), 1e150, 1e-130}) {
        CAPTURE(value);
        CHECK_FALSE(Decimal::fromDouble(value));
    }
}
