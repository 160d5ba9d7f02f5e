// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "archives/archive_samples.h"
#include "support/archive_copy.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace std::string_literals;

TEST_CASE("bytes that are not what is written are no archive") {
    struct Row {
        const char* what;
        std::string bytes;
    };
    const std::vector<Row> rows = {
        {"nothing", ""},
        {"a text",
         "\x61"
         "a"},
        {"a list", "\x80"},
        {"a number", "\x00"s},
        {"more after the end", "\xA0\x00"s},
        {"two archives", "\xA0\xA0"},
        {"no value",
         "\xA1\x61"
         "a"},
        {"fewer entries",
         "\xA2\x61"
         "a\x01"},
        {"more entries",
         "\xA1\x61"
         "a\x01\x61"
         "b\x01"},
        {"the same key twice",
         "\xA2\x61"
         "a\x01\x61"
         "a\x01"},
        {"keys the wrong way round",
         "\xA2\x61"
         "b\x01\x61"
         "a\x01"},
        {"the longer key first",
         "\xA2\x62"
         "aa\x01\x61"
         "b\x01"},
        {"an inner key twice",
         "\xA1\x61"
         "a\xA2\x60\x01\x60\x01"},
        {"a number as key", "\xA1\x01\x01"},
        {"bytes as key",
         "\xA1\x41"
         "a\x01"},
        {"a key that is no UTF-8", "\xA1\x61\xFF\x01"},
        {"an indefinite map",
         "\xBF\x61"
         "a\x01\xFF"},
        {"a map with a longer head",
         "\xB8\x01\x61"
         "a\x01"},
        {"a key with a longer head",
         "\xA1\x78\x01"
         "a\x01"},
        {"a very large map",
         "\xBB\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x61"
         "a\x01"},
        {"a map of half that",
         "\xBB\x80\x00\x00\x00\x00\x00\x00\x00\x61"
         "a\x01"s},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK_FALSE(open(row.bytes));
    }
    CHECK_FALSE(KeyedUnarchiver::open({}));
}

TEST_CASE("values that are not what is written are no part of an archive") {
    struct Row {
        const char* what;
        std::string bytes;
    };
    const std::vector<Row> rows = {
        {"a negative integer", "\x20"},
        {"bytes",
         "\x41"
         "a"},
        {"false", "\xF4"},
        {"null", "\xF6"},
        {"a float", "\xF9\x3C\x00"s},
        {"a double", "\xFB\x3F\xF0\x00\x00\x00\x00\x00\x00"s},
        {"a break", "\xFF"},
        {"a longer head", "\x18\x17"},
        {"a longer text head",
         "\x78\x01"
         "a"},
        {"an indefinite text",
         "\x7F\x61"
         "a\xFF"},
        {"a text that is no UTF-8", "\x62\xC3("},
        {"a text that is cut inside of a character", "\x61\xC3"},
        {"a text that is too long",
         "\x62"
         "a"},
        {"a text of almost all memory",
         "\x7B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
         "a"},
        {"another tag",
         "\xC0\x61"
         "a"},
        {"a tag without a value", "\xC1"},
        {"a date as a double", "\xC1\xFB\x41\xD9\x6E\x9F\x6F\x10\x00\x00"s},
        {"a date as a text",
         "\xC1\x61"
         "1"},
        {"a date beyond the range", "\xC1\x1B\x00\x20\xC4\x9B\xA5\xE3\x53\xF8"s},
        {"a date far beyond", "\xC1\x1B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"},
        {"a date far before", "\xC1\x3B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"},
        {"a date in a list of one", "\xC1\x81\x01"},
        {"a millisecond after the latest date",
         "\xD9\x03\xE9\xA2\x01\x1B\x00\x20\xC4\x9B\xA5\xE3\x53\xF7\x22\x19\x03\x28"s},
        {"a millisecond before the earliest date",
         "\xD9\x03\xE9\xA2\x01\x3B\x00\x20\xC4\x9B\xA5\xE3\x53\xF7\x22\x18\xBF"s},
        {"no milliseconds", "\xD9\x03\xE9\xA2\x01\x01\x22\x00"s},
        {"1000 milliseconds", "\xD9\x03\xE9\xA2\x01\x01\x22\x19\x03\xE8"},
        {"negative milliseconds", "\xD9\x03\xE9\xA2\x01\x01\x22\x20"},
        {"microseconds", "\xD9\x03\xE9\xA2\x01\x01\x25\x01"},
        {"milliseconds first", "\xD9\x03\xE9\xA2\x22\x01\x01\x01"},
        {"seconds only", "\xD9\x03\xE9\xA1\x01\x01"},
        {"three fields of time", "\xD9\x03\xE9\xA3\x01\x01\x22\x01\x25\x01"},
        {"a decimal that ends in 0", "\xC4\x82\x20\x0A"},
        {"zero with an exponent", "\xC4\x82\x01\x00"s},
        {"an exponent beyond the range", "\xC4\x82\x18\x80\x01"},
        {"an exponent far beyond", "\xC4\x82\x1B\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01"},
        {"a decimal of one", "\xC4\x81\x01"},
        {"a decimal of three", "\xC4\x83\x00\x01\x01"s},
        {"a decimal of texts",
         "\xC4\x82\x61"
         "1\x61"
         "1"},
        {"a bignum that is no bignum", "\xC4\x82\x00\xC2\x41\x05"s},
        {"an empty bignum", "\xC4\x82\x00\xC2\x40"s},
        {"a bignum with a leading zero", "\xC4\x82\x00\xC2\x4A\x00\x01\x00\x00\x00\x00\x00\x00\x00\x01"s},
        {"a bignum of 39 digits",
         "\xC4\x82\x00\xC2\x50\x4B\x3B\x4C\xA8\x5A\x86\xC4\x7A\x09\x8A\x22\x40\x00\x00\x00\x01"s},
        {"the largest bignum of 16 bytes", "\xC4\x82\x00\xC3\x50"s + std::string(16, '\xFF')},
        {"a bignum of 17 bytes", "\xC4\x82\x00\xC2\x51"s + std::string(17, '\x01')},
        {"a bignum of a text",
         "\xC4\x82\x00\xC2\x61"
         "1"s},
        {"a bignum with another tag", "\xC4\x82\x00\xC1\x49\x01\x00\x00\x00\x00\x00\x00\x00\x01"s},
        {"a number in a list", "\x81\x01"},
        {"an object in a list", "\x81\xA0"},
        {"a date in a list", "\x81\xC1\x01"},
        {"an indefinite list", "\x9F\xFF"},
        {"a list that is too long", "\x82\x60"},
        {"a list of almost all memory", "\x9B\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x60"},
        {"lists of lists that are too long", "\x83\x83\x83\x83\x60"},
        {"a list with a text that is no UTF-8", "\x81\x61\x80"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK_FALSE(openValue(row.bytes));
    }
}

TEST_CASE("an archive cut anywhere is no archive") {
    const std::string bytes = bytesOf(sample());
    REQUIRE(open(bytes));
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        CAPTURE(size);
        CHECK_FALSE(open(std::string_view(bytes).substr(0, size)));
    }
}

TEST_CASE("whatever can be opened is what would be written: any byte changed to any other") {
    const std::string bytes = bytesOf(sample());
    int opened = 0;
    int wrong = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (unsigned value = 0; value < 0x100; ++value) {
            std::string changed = bytes;
            changed[i] = static_cast<char>(value);
            const auto archive = open(changed);
            if (!archive) continue;
            ++opened;
            if (bytesOf(copyOf(*archive, changed).value()) != changed) ++wrong;
        }
    }
    CHECK(wrong == 0);
    CHECK(opened > static_cast<int>(bytes.size()));  // the unchanged ones alone are that many
}

TEST_CASE("random bytes are read or refused, but never believed") {
    std::mt19937 random(3);
    // Heads that archives have are frequent, so that many bytes get far.
    constexpr std::array<unsigned char, 20> frequent = {0xA0, 0xA1, 0xA2, 0x60, 0x61, 0x62, 0x80,
                                                        0x81, 0x82, 0x00, 0x01, 0x18, 0xC1, 0xC4,
                                                        0xC2, 0x20, 0x41, 0x61, 0xA1, 0x60};
    int opened = 0;
    int wrong = 0;
    for (int round = 0; round < 100000; ++round) {
        std::string bytes = "\xA1\x60";
        for (auto size = random() % 12; size > 0; --size)
            bytes +=
                static_cast<char>(random() % 8 == 0 ? random() % 256 : frequent[random() % frequent.size()]);
        const auto archive = open(bytes);
        if (!archive) continue;
        ++opened;
        if (bytesOf(copyOf(*archive, bytes).value()) != bytes) ++wrong;
    }
    CHECK(wrong == 0);
    CHECK(opened > 1000);
}

TEST_CASE("lists that never end are refused, however deep they are") {
    CHECK_FALSE(openValue(std::string(1000000, '\x81')));
    CHECK_FALSE(openValue(std::string(1000000, '\x82')));
}

TEST_CASE("objects may be inside each other a million deep") {
    std::string bytes;
    for (int i = 0; i < 1000000; ++i) bytes += "\xA1\x60";
    CHECK_FALSE(open(bytes));
    bytes += "\xA0";
    const auto archive = open(bytes);
    REQUIRE(archive);
    CHECK(archive->decodeObject(""));
}
