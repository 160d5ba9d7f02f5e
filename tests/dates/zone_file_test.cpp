// SPDX-License-Identifier: Apache-2.0
#include "dates/zone_file.h"

#include <doctest/doctest.h>

#include <fstream>
#include <functional>
#include <limits>
#include <random>

#include "dates/civil_time.h"
#include "dates/date_samples.h"
#include "dates/environment_guard.h"
#include "dates/tz_samples.h"
#include "support/temporary_folder.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::string abbreviationAt(const ZoneFile& file, Date moment) {
    return file.typeAt(secondsOf(moment)).abbreviation;
}

std::string berlinFile() {
    const auto data = Data::fromFile("/usr/share/zoneinfo/Europe/Berlin");
    REQUIRE_MESSAGE(data, "the system's zone files are needed");
    return std::string(data->bytes());
}

}  // namespace

TEST_CASE("a zone file tells how clocks go before, between and after its changes") {
    const auto file = parseZoneFile(berlinParts().bytes());
    REQUIRE(file);
    CHECK(abbreviationAt(*file, utc(1900, 7, 1)) == "CET");
    CHECK(abbreviationAt(*file, utc(2023, 3, 26, {0, 59, 59, 999})) == "CET");
    CHECK(abbreviationAt(*file, utc(2023, 3, 26, {1})) == "CEST");
    CHECK(abbreviationAt(*file, utc(2023, 10, 29, {0, 59, 59})) == "CEST");
    CHECK(abbreviationAt(*file, utc(2023, 10, 29, {1})) == "CET");
    CHECK(abbreviationAt(*file, utc(2100, 3, 28, {0, 59, 59})) == "CET");
    CHECK(abbreviationAt(*file, utc(2100, 3, 28, {1})) == "CEST");
    CHECK(file->typeAt(secondsOf(utc(2100, 7, 1))).fromUTC == 7200);
}

TEST_CASE("without a rule the last change of a zone file holds for ever") {
    ZoneFileParts parts = berlinParts();
    parts.footer = "\n\n";
    const auto file = parseZoneFile(parts.bytes());
    REQUIRE(file);
    CHECK(abbreviationAt(*file, utc(2100, 7, 1)) == "CET");
}

TEST_CASE("a zone file without changes is its rule, or its first type") {
    ZoneFileParts parts = berlinParts();
    parts.times.clear();
    parts.typeOfChange.clear();
    CHECK(abbreviationAt(parseZoneFile(parts.bytes()).value(), utc(1900, 7, 1)) == "CEST");
    parts.footer = "\n\n";
    CHECK(abbreviationAt(parseZoneFile(parts.bytes()).value(), utc(1900, 7, 1)) == "CET");
}

TEST_CASE("a zone file of the first version has times of four bytes and no rule") {
    ZoneFileParts parts = berlinParts();
    parts.version = '\0';
    parts.times = {-5, 10};
    const auto file = parseZoneFile(parts.bytes());
    REQUIRE(file);
    CHECK(file->typeAt(-6).abbreviation == "CET");
    CHECK(file->typeAt(-5).abbreviation == "CEST");
    CHECK(file->typeAt(10).abbreviation == "CET");
    CHECK_FALSE(file->rule);
    CHECK_FALSE(parseZoneFile(parts.bytes() + '\0'));
}

TEST_CASE("times of eight bytes reach further than 1901 and 2038") {
    ZoneFileParts parts = berlinParts();
    parts.times = {-10'000'000'000, 10'000'000'000};
    const auto file = parseZoneFile(parts.bytes());
    REQUIRE(file);
    CHECK(file->typeAt(-10'000'000'001).abbreviation == "CET");
    CHECK(file->typeAt(-10'000'000'000).abbreviation == "CEST");
    CHECK(file->typeAt(9'999'999'999).abbreviation == "CEST");
}

TEST_CASE("bytes that are not exactly a zone file give nothing") {
    using Parts = ZoneFileParts;
    struct Row {
        std::string what;
        std::function<void(Parts&)> spoil;
    };
    const std::vector<Row> rows = {
        {"unknown version", [](Parts& p) { p.version = '1'; }},
        {"version that is no digit", [](Parts& p) { p.version = 'x'; }},
        {"version beyond ASCII", [](Parts& p) { p.version = '\xFF'; }},
        {"no type", [](Parts& p) { p.types.clear(); }},
        {"times descend", [](Parts& p) { std::swap(p.times[0], p.times[1]); }},
        {"equal times", [](Parts& p) { p.times[1] = p.times[0]; }},
        {"change to a type that is missing", [](Parts& p) { p.typeOfChange = "\2\1"; }},
        {"leap seconds", [](Parts& p) { p.leapSeconds = 1; }},
        {"flags for some types only", [](Parts& p) { p.standardFlags = 1; }},
        {"more flags than types", [](Parts& p) { p.universalFlags = 3; }},
        {"offset of 26 hours", [](Parts& p) { p.types[1].fromUTC = 26 * 3600; }},
        {"offset of -26 hours", [](Parts& p) { p.types[1].fromUTC = -26 * 3600; }},
        {"smallest offset", [](Parts& p) { p.types[1].fromUTC = std::numeric_limits<std::int32_t>::min(); }},
        {"daylight neither 0 nor 1", [](Parts& p) { p.types[1].daylight = 2; }},
        {"abbreviation past the end", [](Parts& p) { p.types[1].abbreviation = 9; }},
        {"abbreviation without end", [](Parts& p) { p.characters.back() = 'T'; }},
        {"empty abbreviation", [](Parts& p) { p.types[1].abbreviation = 3; }},
        {"abbreviation beyond ASCII", [](Parts& p) { p.characters[0] = '\xC3'; }},
        {"abbreviation with a space", [](Parts& p) { p.characters[1] = ' '; }},
        {"endless abbreviation", [](Parts& p) { p.characters = std::string(300, 'A') + '\0'; }},
        {"no footer", [](Parts& p) { p.footer.clear(); }},
        {"half a footer", [](Parts& p) { p.footer = "\n"; }},
        {"footer does not begin with a line feed", [](Parts& p) { p.footer = "CET-1\n"; }},
        {"footer is no rule", [](Parts& p) { p.footer = "\nCET\n"; }},
        {"bytes after the footer", [](Parts& p) { p.footer += "x"; }},
        {"lines after the footer", [](Parts& p) { p.footer += "\n"; }},
    };
    REQUIRE(parseZoneFile(berlinParts().bytes()));
    for (const Row& row : rows) {
        CAPTURE(row.what);
        Parts parts = berlinParts();
        row.spoil(parts);
        CHECK_FALSE(parseZoneFile(parts.bytes()));
    }
    CHECK_FALSE(parseZoneFile(""));
    CHECK_FALSE(parseZoneFile("root:x:0:0:root:/root:/bin/bash\n"));
}

TEST_CASE("a zone file cut at any length gives nothing") {
    for (const std::string& whole : {berlinParts().bytes(), berlinFile()}) {
        REQUIRE(parseZoneFile(whole));
        for (std::size_t size = 0; size < whole.size(); ++size) {
            CAPTURE(size);
            // A copy of its own, so that a read after its end is seen.
            const std::vector<char> part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            REQUIRE_FALSE(parseZoneFile(std::string_view(part.data(), part.size())));
        }
    }
}

TEST_CASE("counts that promise more than a zone file holds give nothing") {
    const std::string whole = berlinParts().bytes();
    const std::size_t secondHeader = whole.find("TZif", 4);
    for (const std::size_t header : {std::size_t{0}, secondHeader}) {
        for (std::size_t count = 0; count < 6; ++count) {
            CAPTURE(header);
            CAPTURE(count);
            std::string bytes = whole;
            bytes.replace(header + 20 + count * 4, 4, "\xFF\xFF\xFF\xFF");
            CHECK_FALSE(parseZoneFile(bytes));
        }
    }
}

TEST_CASE("spoilt zone files are read or rejected without harm") {
    const std::string whole = berlinFile();
    std::mt19937 engine(7);
    std::size_t accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string bytes = whole;
        for (unsigned changes = engine() % 4 + 1; changes > 0; --changes)
            bytes[engine() % bytes.size()] = static_cast<char>(engine());
        const auto file = parseZoneFile(bytes);
        if (!file) continue;
        ++accepted;
        for (const Date moment :
             {Date::min(), utc(1950, 1, 1), utc(2024, 7, 1), utc(2200, 7, 1), Date::max()})
            REQUIRE(std::abs(file->typeAt(secondsOf(moment)).fromUTC) < kZoneOffsetLimit);
    }
    CHECK(accepted > 0);  // most bytes of the first block do not count
}

TEST_CASE("zones are looked for in the folder that TZDIR names") {
    const TemporaryFolder folder;
    folder.file("Here/There_1", berlinParts().bytes());
    folder.file("Broken", "TZif");
    const EnvironmentGuard guard("TZDIR", folder.path());
    CHECK(loadZoneFile("Here/There_1"));
    CHECK_FALSE(loadZoneFile("Here"));
    CHECK_FALSE(loadZoneFile("Broken"));
    CHECK_FALSE(loadZoneFile("Europe/Berlin"));
}

TEST_CASE("without TZDIR zones are the system's own") {
    for (const std::optional<std::string>& folder :
         {std::optional<std::string>(), std::optional<std::string>("")}) {
        const EnvironmentGuard guard("TZDIR", folder);
        CHECK(loadZoneFile("Europe/Berlin"));
        CHECK(loadZoneFile("Etc/GMT+5"));
        CHECK(loadZoneFile("America/Port-au-Prince"));
    }
}

TEST_CASE("a zone's name cannot lead out of the folder of zones") {
    const TemporaryFolder folder;
    const std::string bytes = berlinParts().bytes();
    folder.file("zones/In/Side", bytes);
    folder.file("Outside", bytes);
    folder.file("zones/.hidden", bytes);
    const EnvironmentGuard guard("TZDIR", folder.path("zones"));
    REQUIRE(loadZoneFile("In/Side"));
    const std::vector<std::string> names = {"",
                                            "/",
                                            ".",
                                            "..",
                                            "../Outside",
                                            "In/../../Outside",
                                            "In/../In/Side",
                                            "./In/Side",
                                            "In/./Side",
                                            "In//Side",
                                            "In/Side/",
                                            "/In/Side",
                                            folder.path("Outside"),
                                            ".hidden",
                                            std::string("In/Side\0", 8),
                                            std::string("In/Side\0../../Outside", 21),
                                            "In/Side ",
                                            "In\\Side",
                                            ":In/Side",
                                            "In/S\xC3\xAF"
                                            "de",
                                            "../../etc/passwd",
                                            "/etc/passwd"};
    for (const std::string& name : names) {
        CAPTURE(name);
        CHECK_FALSE(loadZoneFile(name));
    }
}
