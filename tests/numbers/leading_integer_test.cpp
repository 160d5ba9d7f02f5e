// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <limits>
#include <string>

using brackwell::leadingInteger;

namespace {

constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();

struct Row {
    std::string text;
    std::int64_t value;
};

void check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(leadingInteger(row.text) == row.value);
    }
}

}  // namespace

TEST_CASE("a text begins with the integer of its first digits") {
    check({{"0", 0},
           {"7", 7},
           {"2000", 2000},
           {"00042", 42},
           {"15500abc", 15500},
           {"12.9", 12},
           {"1,234", 1},
           {"3 4", 3},
           {"5e3", 5},
           {"9-1", 9}});
}

TEST_CASE("one sign may stand before the digits of an integer") {
    check({{"+5", 5}, {"-5", -5}, {"-0", 0}, {"+-5", 0}, {"--5", 0}, {"-", 0}, {"- 5", 0}, {"-a5", 0}});
}

TEST_CASE("white space may stand before an integer and its sign") {
    check({{" 5", 5},
           {"\t\r\n\v\f -17", -17},
           {"\xC2\xA0\xC2\x85 8", 8},
           {"\xE1\x9A\x80\xE2\x80\x80\xE2\x80\x8A\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAF\xE2\x81\x9F\xE3\x80\x80"
            "+9",
            9},
           {"\xE2\x80\x8B"
            "6",
            0}});  // U+200B, zero width space, is not white space
}

TEST_CASE("a text without digits at its beginning gives the integer 0") {
    check({{"", 0},
           {" ", 0},
           {"abc", 0},
           {"x12", 0},
           {".5", 0},
           {std::string("\0"
                        "5",
                        2),
            0},
           {"\xE2\x88\x92"
            "5",
            0},                  // U+2212 is no sign here
           {"\xD9\xA3", 0},      // U+0663, an Arabic digit
           {"\xEF\xBC\x95", 0},  // U+FF15, a full-width digit
           {"/", 0},
           {":", 0}});
}

TEST_CASE("a digit of another script ends an integer") { check({{"4\xD9\xA3", 4}}); }

TEST_CASE("an integer beyond the range saturates") {
    check({{"9223372036854775806", kHighest - 1},
           {"9223372036854775807", kHighest},
           {"9223372036854775808", kHighest},
           {"9223372036854775809", kHighest},
           {"9223372036854775810", kHighest},
           {"18446744073709551617", kHighest},
           {"99999999999999999999x", kHighest},
           {"-9223372036854775807", -kHighest},
           {"-9223372036854775808", kLowest},
           {"-9223372036854775809", kLowest},
           {"-9223372036854775810", kLowest},
           {"-18446744073709551617", kLowest},
           {"000000000000000000000000000000123", 123}});
    const std::string nines(4'000'000, '9');
    CHECK(leadingInteger(nines) == kHighest);
    CHECK(leadingInteger("-" + nines) == kLowest);
    CHECK(leadingInteger(std::string(4'000'000, '0') + "8") == 8);
}
