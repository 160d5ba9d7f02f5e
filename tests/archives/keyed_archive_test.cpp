// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <array>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "archives/archive_samples.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace std::string_literals;

namespace {

/// How the value that is encoded under the key "k" stands in an archive of one entry.
template <class Encode>
std::string valueBytes(Encode encode) {
    KeyedArchiver archiver;
    encode(archiver);
    const std::string bytes = bytesOf(archiver);
    REQUIRE(bytes.starts_with("\xA1\x61k"));
    return bytes.substr(3);
}

}  // namespace

TEST_CASE("an archive without values is an empty map") {
    CHECK(bytesOf({}) == "\xA0");
    const auto archive = open("\xA0");
    REQUIRE(archive);
    CHECK_FALSE(archive->contains(""));
    CHECK_FALSE(archive->decodeText("k"));
}

TEST_CASE("the form of each kind of value is fixed") {
    struct Row {
        const char* what;
        std::string bytes;
        std::string written;
    };
    const auto textOf = [](std::string_view value) {
        return valueBytes([&](auto& a) { a.encodeText("k", value); });
    };
    const auto number = [](std::uint64_t value) {
        return valueBytes([&](auto& a) { a.encodeUnsigned("k", value); });
    };
    const auto date = [](std::int64_t ms) {
        return valueBytes([&](auto& a) { a.encodeDate("k", dateOf(ms)); });
    };
    const auto amount = [](std::string_view value) {
        return valueBytes([&](auto& a) { a.encodeDecimal("k", decimal(value)); });
    };
    const auto list = [](const std::vector<Item>& items) {
        return valueBytes([&](auto& a) { a.encodeList("k", items); });
    };
    const std::vector<Row> rows = {
        {"empty text", "\x60", textOf("")},
        {"text",
         "\x65"
         "Caf\xC3\xA9",
         textOf("Caf\u00E9")},
        {"long text",
         "\x78\x18"
         "aaaaaaaaaaaaaaaaaaaaaaaa",
         textOf(std::string(24, 'a'))},
        {"zero", "\x00"s, number(0)},
        {"number", "\x19\x03\xE8", number(1000)},
        {"largest number", "\x1B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", number(~std::uint64_t{0})},
        {"1970", "\xC1\x00"s, date(0)},
        {"seconds", "\xC1\x1A\x65\xBA\x7D\xBC", date(1706720700000)},
        {"seconds before 1970", "\xC1\x20", date(-1000)},
        {"milliseconds", "\xD9\x03\xE9\xA2\x01\x1A\x65\xBA\x7D\xBC\x22\x18\xFA", date(1706720700250)},
        {"milliseconds before 1970", "\xD9\x03\xE9\xA2\x01\x20\x22\x19\x03\xE7", date(-1)},
        {"the latest date", "\xD9\x03\xE9\xA2\x01\x1B\x00\x20\xC4\x9B\xA5\xE3\x53\xF7\x22\x19\x03\x27"s,
         date(std::numeric_limits<std::int64_t>::max())},
        {"the earliest date", "\xD9\x03\xE9\xA2\x01\x3B\x00\x20\xC4\x9B\xA5\xE3\x53\xF7\x22\x18\xC0"s,
         date(std::numeric_limits<std::int64_t>::min())},
        {"example of RFC 8949 for seconds", "\xC1\x1A\x51\x4B\x67\xB0", date(1363896240000)},
        {"example of RFC 8949 for decimals", "\xC4\x82\x21\x19\x6A\xB3", amount("273.15")},
        {"zero amount", "\xC4\x82\x00\x00"s, amount("0.00")},
        {"amount", "\xC4\x82\x20\x38\x7C", amount("-12.50")},
        {"positive exponent", "\xC4\x82\x03\x05", amount("5000")},
        {"largest integer", "\xC4\x82\x00\x1B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
         amount("18446744073709551615")},
        {"smallest bignum", "\xC4\x82\x00\xC2\x49\x01\x00\x00\x00\x00\x00\x00\x00\x00"s,
         amount("18446744073709551616")},
        {"least negative integer", "\xC4\x82\x00\x3B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
         amount("-18446744073709551616")},
        {"first negative bignum", "\xC4\x82\x00\xC3\x49\x01\x00\x00\x00\x00\x00\x00\x00\x00"s,
         amount("-18446744073709551617")},
        {"38 digits", "\xC4\x82\x00\xC2\x50\x4B\x3B\x4C\xA8\x5A\x86\xC4\x7A\x09\x8A\x22\x3F\xFF\xFF\xFF\xFF"s,
         amount("99999999999999999999999999999999999999")},
        {"empty list", "\x80", list({})},
        {"list",
         "\x82\x61"
         "a\x83\x60\x80\x61"
         "b",
         list({text("a"), begin(3), text(""), begin(0), end(), text("b"), end()})},
        {"empty object", "\xA0", valueBytes([](auto& a) { a.encodeObject("k", {}); })},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(row.written == row.bytes);
        CHECK(openValue(row.bytes));
    }
}

TEST_CASE("keys stand in the order of their encoded bytes, shorter ones first") {
    KeyedArchiver archiver;
    for (const char* key : {"b", "aa", "", "a", "\u00E9", "Z", "aaaaaaaaaaaaaaaaaaaaaaaa", "ab"})
        archiver.encodeUnsigned(key, 1);
    const std::string expected =
        "\xA8\x60\x01\x61Z\x01\x61"
        "a\x01\x61"
        "b\x01\x62"
        "aa\x01\x62"
        "ab\x01\x62\xC3\xA9\x01"
        "\x78\x18"
        "aaaaaaaaaaaaaaaaaaaaaaaa\x01";
    CHECK(bytesOf(archiver) == expected);
    CHECK(open(expected));
}

TEST_CASE("the order of writing leaves no trace") {
    KeyedArchiver one;
    one.encodeText("a", "1");
    one.encodeText("b", "2");
    KeyedArchiver other;
    other.encodeText("b", "2");
    other.encodeText("a", "1");
    CHECK(bytesOf(one) == bytesOf(other));
}

TEST_CASE("a value replaces the one before it under the same key") {
    KeyedArchiver archiver;
    archiver.encodeText("k", "old");
    archiver.encodeUnsigned("k", 5);
    CHECK(bytesOf(archiver) == "\xA1\x61k\x05");
}

TEST_CASE("an archiver can be written on after its data was taken") {
    KeyedArchiver archiver;
    archiver.encodeUnsigned("a", 1);
    const Data before = archiver.archivedData();
    archiver.encodeObject("b", archiver);
    CHECK(before.bytes() ==
          "\xA1\x61"
          "a\x01");
    CHECK(bytesOf(archiver) ==
          "\xA2\x61"
          "a\x01\x61"
          "b\xA1\x61"
          "a\x01");
}

TEST_CASE("every value is read back as it was written") {
    const auto archive = KeyedUnarchiver::open(sample().archivedData());
    REQUIRE(archive);
    CHECK(archive->decodeText("text") == "Lorem ipsum dolor sit amet");
    CHECK(archive->decodeText("") == "");
    CHECK(archive->decodeUnsigned("aT") == 1000U);
    CHECK(archive->decodeDate("whole") == dateOf(1706720700000));
    CHECK(archive->decodeDate("ms") == dateOf(1706720700250));
    CHECK(archive->decodeDecimal("amount") == decimal("99999999999999999999999999999999999999"));
    CHECK(archive->decodeList("list") ==
          std::vector{text("a"), begin(3), text(""), begin(0), end(), text("b"), end()});
    const auto object = archive->decodeObject("object");
    REQUIRE(object);
    CHECK(object->decodeText("name") == "Caf\u00E9");
    CHECK(object->decodeDecimal("d") == decimal("-12.5"));
    CHECK_FALSE(object->contains("text"));
    CHECK(archive->decodeObject("none"));
}

TEST_CASE("a missing key and a value of another kind are nothing") {
    const auto archive = KeyedUnarchiver::open(sample().archivedData());
    REQUIRE(archive);
    for (const std::string_view key : {"text", "", "aT", "whole", "ms", "amount", "list", "object", "none",
                                       "missing", "tex", "textt", "Text"}) {
        CAPTURE(key);
        const bool isText = key == "text" || key.empty();
        const bool isMissing = key == "missing" || key == "tex" || key == "textt" || key == "Text";
        CHECK(archive->contains(key) != isMissing);
        CHECK(archive->decodeText(key).has_value() == isText);
        CHECK(archive->decodeUnsigned(key).has_value() == (key == "aT"));
        CHECK(archive->decodeDate(key).has_value() == (key == "whole" || key == "ms"));
        CHECK(archive->decodeDecimal(key).has_value() == (key == "amount"));
        CHECK(archive->decodeList(key).has_value() == (key == "list"));
        CHECK(archive->decodeObject(key).has_value() == (key == "object" || key == "none"));
    }
}

TEST_CASE("texts and objects share the archive's bytes and keep them alive") {
    std::optional<KeyedUnarchiver> object;
    {
        const auto archive = KeyedUnarchiver::open(sample().archivedData());
        REQUIRE(archive);
        object = archive->decodeObject("object");
    }
    REQUIRE(object);
    CHECK(object->decodeText("name") == "Caf\u00E9");

    const std::string bytes = "\xA1\x61k\x62hi";
    const auto view = KeyedUnarchiver::open(Data::view(bytes));
    REQUIRE(view);
    CHECK(static_cast<const void*>(view->decodeText("k")->data()) == bytes.data() + 4);
}

TEST_CASE("an archive with a key or text that is no UTF-8 is written, but cannot be opened") {
    KeyedArchiver withKey;
    withKey.encodeUnsigned("\xFF", 1);
    CHECK(bytesOf(withKey) == "\xA1\x61\xFF\x01");
    KeyedArchiver withText;
    withText.encodeText("k", "\xC3(");
    KeyedArchiver withList;
    withList.encodeList("k", {text("\x80")});
    KeyedArchiver around;
    around.encodeObject("k", withText);
    for (const KeyedArchiver& archiver : {withKey, withText, withList, around})
        CHECK_FALSE(KeyedUnarchiver::open(archiver.archivedData()));
}

TEST_CASE("every date is kept to the millisecond") {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    std::vector<std::int64_t> counts = {0, 1, -1, 999, -999, 1000, -1000, 1001, -1001};
    for (std::int64_t i = 0; i < 3000; ++i) counts.insert(counts.end(), {least + i, most - i});
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        counts.push_back(static_cast<std::int64_t>(random()));  // any
        counts.push_back(static_cast<std::int64_t>(random() % 315537897600000) -
                         62135596800000);  // year 1 to 9999
    }
    int wrong = 0;
    for (const std::int64_t count : counts) {
        KeyedArchiver archiver;
        archiver.encodeDate("k", dateOf(count));
        const auto archive = KeyedUnarchiver::open(archiver.archivedData());
        if (!archive || archive->decodeDate("k") != dateOf(count)) ++wrong;
    }
    CHECK(wrong == 0);
}

TEST_CASE("every decimal is kept exactly") {
    std::vector<std::string> numbers = {"0",
                                        "1",
                                        "-1",
                                        "0.01",
                                        "-0.01",
                                        "9223372036854775808",
                                        "1e127",
                                        "1e-128",
                                        "-99999999999999999999999999999999999999e127",
                                        "99999999999999999999999999999999999999e-128"};
    std::mt19937_64 random(2);
    for (int i = 0; i < 5000; ++i) {
        std::string digits = i % 2 == 0 ? "-" : "";
        for (auto count = random() % 38 + 1; count > 0; --count)
            digits += static_cast<char>('1' + random() % 9);
        numbers.push_back(digits + "e" + std::to_string(static_cast<int>(random() % 256) - 128));
    }
    int wrong = 0;
    for (const std::string& number : numbers) {
        KeyedArchiver archiver;
        archiver.encodeDecimal("k", decimal(number));
        const auto archive = KeyedUnarchiver::open(archiver.archivedData());
        if (!archive || archive->decodeDecimal("k") != decimal(number)) ++wrong;
    }
    CHECK(wrong == 0);
}

TEST_CASE("lists may be inside each other a million deep") {
    constexpr std::size_t depth = 1000000;
    std::vector<Item> items(2 * depth);
    for (std::size_t i = 0; i < depth; ++i) {
        items[i] = begin(i + 1 == depth ? 0 : 1);
        items[depth + i] = end();
    }
    KeyedArchiver archiver;
    archiver.encodeList("k", items);
    const auto archive = KeyedUnarchiver::open(archiver.archivedData());
    REQUIRE(archive);
    const auto read = archive->decodeList("k");
    REQUIRE(read);
    CHECK((*read == items));
}

TEST_CASE("a hundred thousand keys are found") {
    KeyedArchiver archiver;
    for (std::uint64_t i = 0; i < 100000; ++i) archiver.encodeUnsigned(std::to_string(i), i);
    const auto archive = KeyedUnarchiver::open(archiver.archivedData());
    REQUIRE(archive);
    int wrong = 0;
    for (std::uint64_t i = 0; i < 100000; ++i)
        wrong += archive->decodeUnsigned(std::to_string(i)) == i ? 0 : 1;
    CHECK(wrong == 0);
    CHECK_FALSE(archive->contains("100000"));
}
