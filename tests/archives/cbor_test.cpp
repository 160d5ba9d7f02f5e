// SPDX-License-Identifier: Apache-2.0
#include "archives/cbor.h"

#include <doctest/doctest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

using namespace brackwell::cbor;
using namespace std::string_literals;

namespace {

struct HeadRow {
    std::uint64_t argument;
    std::string bytes;
};

const std::vector<HeadRow> kHeads = {
    {0, "\x00"s},
    {1, "\x01"},
    {23, "\x17"},
    {24, "\x18\x18"},
    {255, "\x18\xFF"},
    {256, "\x19\x01\x00"s},
    {65535, "\x19\xFF\xFF"},
    {65536, "\x1A\x00\x01\x00\x00"s},
    {0xFFFFFFFF, "\x1A\xFF\xFF\xFF\xFF"},
    {0x100000000, "\x1B\x00\x00\x00\x01\x00\x00\x00\x00"s},
    {0xFFFFFFFFFFFFFFFF, "\x1B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"},
};

constexpr std::array kMajors = {Major::unsignedInteger,
                                Major::negativeInteger,
                                Major::bytes,
                                Major::text,
                                Major::array,
                                Major::map,
                                Major::tag};

/// The same head for another kind of item.
std::string withMajor(std::string bytes, Major major) {
    bytes[0] = static_cast<char>(static_cast<unsigned>(major) << 5 | static_cast<unsigned char>(bytes[0]));
    return bytes;
}

}  // namespace

TEST_CASE("heads are as short as possible and read back") {
    for (const HeadRow& row : kHeads) {
        for (const Major major : kMajors) {
            CAPTURE(row.argument);
            const std::string expected = withMajor(row.bytes, major);
            std::string bytes;
            appendHead(bytes, major, row.argument);
            CHECK(bytes == expected);
            const std::string more = bytes + "x";
            std::string_view rest = more;
            const auto head = takeHead(rest);
            REQUIRE(head);
            CHECK(head->major == major);
            CHECK(head->argument == row.argument);
            CHECK(rest == "x");
        }
    }
}

TEST_CASE("a head that is cut is none") {
    for (const HeadRow& row : kHeads) {
        for (std::size_t size = 0; size < row.bytes.size(); ++size) {
            CAPTURE(row.argument);
            std::string_view rest = std::string_view(row.bytes).substr(0, size);
            CHECK_FALSE(takeHead(rest));
        }
    }
}

TEST_CASE("a head that could be shorter is none") {
    for (const std::string& bytes :
         {"\x18\x00"s, "\x18\x17"s, "\x19\x00\x18"s, "\x19\x00\xFF"s, "\x1A\x00\x00\x01\x00"s,
          "\x1A\x00\x00\xFF\xFF"s, "\x1B\x00\x00\x00\x00\x00\x01\x00\x00"s,
          "\x1B\x00\x00\x00\x00\xFF\xFF\xFF\xFF"s}) {
        for (const Major major : kMajors) {
            const std::string head = withMajor(bytes, major);
            std::string_view rest = head;
            CHECK_FALSE(takeHead(rest));
        }
    }
}

TEST_CASE("reserved and indefinite heads, simple values and floating point are none") {
    for (unsigned first = 0; first < 0x100; ++first) {
        CAPTURE(first);
        if (first < 0xE0 && (first & 0x1F) < 28) continue;
        const std::string bytes = static_cast<char>(first) + "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s;
        std::string_view rest = bytes;
        CHECK_FALSE(takeHead(rest));
    }
}

TEST_CASE("signed integers are written and read over their whole range") {
    struct Row {
        std::int64_t value;
        std::string bytes;
    };
    for (const Row& row : std::vector<Row>{
             {0, "\x00"s},
             {-1, "\x20"},
             {-24, "\x37"},
             {-25, "\x38\x18"},
             {-256, "\x38\xFF"},
             {-257, "\x39\x01\x00"s},
             {1000000, "\x1A\x00\x0F\x42\x40"s},
             {std::numeric_limits<std::int64_t>::max(), "\x1B\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"},
             {std::numeric_limits<std::int64_t>::min(), "\x3B\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"},
         }) {
        CAPTURE(row.value);
        std::string bytes;
        appendInteger(bytes, row.value);
        CHECK(bytes == row.bytes);
        std::string_view rest = bytes;
        CHECK(takeInteger(rest) == row.value);
        CHECK(rest.empty());
    }
    for (const std::string& bytes : {"\x1B\x80\x00\x00\x00\x00\x00\x00\x00"s,
                                     "\x3B\x80\x00\x00\x00\x00\x00\x00\x00"s, "\x60"s, "\xC1"s, ""s}) {
        std::string_view rest = bytes;
        CHECK_FALSE(takeInteger(rest));
    }
}

TEST_CASE("texts and bytes are taken as slices") {
    std::string bytes;
    appendText(bytes, "abc");
    CHECK(bytes ==
          "\x63"
          "abc");
    bytes += "x";
    std::string_view rest = bytes;
    const auto text = takeString(rest, Major::text);
    CHECK(text == "abc");
    CHECK(static_cast<const void*>(text->data()) == bytes.data() + 1);
    CHECK(rest == "x");
    rest = bytes;
    CHECK_FALSE(takeString(rest, Major::bytes));
    rest = std::string_view(bytes).substr(0, 3);
    CHECK_FALSE(takeString(rest, Major::text));
    rest =
        "\x7B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
        "abc";
    CHECK_FALSE(takeString(rest, Major::text));
}

TEST_CASE("an item is stepped over with all that is in it") {
    for (const std::string& item :
         {"\x00"s, "\x39\x01\x00"s,
          "\x63"
          "abc"s,
          "\x43\xFF\x00\xFF"s, "\x80"s, "\xA0"s,
          "\x82\x01\x81\x62"
          "ab"s,
          "\xA2\x61"
          "a\x01\x61"
          "b\x82\x00\x00"s,
          "\xC1\x1A\x00\x0F\x42\x40"s, "\xC4\x82\x20\xC2\x42\x01\x00"s, std::string(1000000, '\x81') + '\x00',
          std::string(1000000, '\xC1') + '\x00'}) {
        CAPTURE(item.size());
        const std::string more = item + "x";
        std::string_view rest = more;
        CHECK(skipItem(rest));
        CHECK(rest == "x");
        rest = std::string_view(item).substr(0, item.size() - 1);
        CHECK_FALSE(skipItem(rest));
    }
}

TEST_CASE("lengths that are lies are noticed at once") {
    for (const Major major : {Major::bytes, Major::text, Major::array, Major::map}) {
        const std::string head = withMajor("\x1B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", major);
        const std::string bytes = head + head + head + "abc";
        std::string_view rest = bytes;
        CHECK_FALSE(skipItem(rest));
    }
    std::string_view rest = "\x83\x83\x83\x00";
    CHECK_FALSE(skipItem(rest));
}
