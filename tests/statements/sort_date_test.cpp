// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"
#include "support/time_zone_guard.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXStatementTransaction> posted(const std::string& date) {
    return TvOFXStatementTransaction::initWithParserDict(ParseDictionary{{"DTPOSTED", date}});
}

}  // namespace

TEST_CASE("the sort key is the day of the posting date in the process's time zone") {
    struct Row {
        std::string zone;
        std::string date;
        std::string day;
    };
    for (const Row& row :
         {Row{"UTC0", "20240131233000", "20240131"}, Row{"CET-1", "20240131233000", "20240201"},
          Row{"CET-1", "20240131225959", "20240131"}, Row{"EST5", "20240201", "20240131"},
          Row{"EST5", "20240101045959.999", "20231231"}, Row{"EST5", "20240101050000", "20240101"},
          Row{"IST-5:30", "20240228183000", "20240229"}, Row{"UTC0", "00010101", "00010101"},
          Row{"UTC0", "99991231", "99991231"},
          Row{"CET-1CEST,M3.5.0,M10.5.0/3", "20240701223000", "20240702"},
          Row{"CET-1CEST,M3.5.0,M10.5.0/3", "20240101223000", "20240101"}}) {
        CAPTURE(row.zone);
        CAPTURE(row.date);
        const TimeZoneGuard guard(row.zone);
        CHECK(shown(posted(row.date)->sort_date()) == row.day);
    }
}

TEST_CASE("the sort key of a year without four digits is the nearest day that has them") {
    struct Row {
        std::string zone;
        Date date;
        std::string day;
    };
    for (const Row& row :
         {Row{"UTC0", utc(9999, 12, 31, 23, 59), "99991231"},
          Row{"CET-1", utc(9999, 12, 31, 23, 59), "99991231"}, Row{"UTC0", utc(10000, 1, 1), "99991231"},
          Row{"UTC0", utc(20240, 1, 31), "99991231"}, Row{"UTC0", utc(1, 1, 1), "00010101"},
          Row{"EST5", utc(1, 1, 1), "00010101"}, Row{"UTC0", utc(0, 12, 31), "00010101"},
          Row{"UTC0", utc(-1, 6, 1), "00010101"}, Row{"UTC0", utc(-10000, 6, 1), "00010101"},
          Row{"UTC0", Date::max(), "99991231"}, Row{"UTC0", Date::min(), "00010101"}}) {
        CAPTURE(row.zone);
        CAPTURE(row.date.time_since_epoch().count());
        const TimeZoneGuard guard(row.zone);
        TvOFXStatementTransaction transaction;
        transaction.setDatePosted(row.date);
        CHECK(shown(transaction.sort_date()) == row.day);
    }
}

TEST_CASE("a later day never sorts before an earlier one, whatever the years") {
    const TimeZoneGuard guard("CET-1");
    std::string before;
    for (const int year : {-20000, -1, 0, 1, 999, 1970, 2024, 9999, 10000, 20240}) {
        for (const unsigned month : {1U, 12U}) {
            CAPTURE(year);
            TvOFXStatementTransaction transaction;
            transaction.setDatePosted(utc(year, month, 31, 23, 30));
            const std::string day(*transaction.sort_date());
            CHECK(before <= day);
            before = day;
        }
    }
}

TEST_CASE("without a posting date there is no sort key, whatever other dates there are") {
    const auto read = TvOFXStatementTransaction::initWithParserDict(
        ParseDictionary{{"DTPOSTED", "2024"}, {"DTUSER", "20240101"}, {"DTAVAIL", "20240101"}});
    CHECK(shown(read->sort_date()) == "nothing");
    const TimeZoneGuard guard("UTC0");
    read->setDatePosted(utc(2024, 5, 6));
    CHECK(shown(read->sort_date()) == "20240506");
}

TEST_CASE("the sort key is made once and kept") {
    const auto read = posted("20240131233000");
    {
        const TimeZoneGuard guard("CET-1");
        CHECK(shown(read->sort_date()) == "20240201");
    }
    const TimeZoneGuard guard("UTC0");
    CHECK(shown(read->sort_date()) == "20240201");
}

TEST_CASE("another posting date renews the sort key, the same one does not") {
    const auto read = posted("20240131233000");
    {
        const TimeZoneGuard guard("CET-1");
        CHECK(shown(read->sort_date()) == "20240201");
    }
    const TimeZoneGuard guard("UTC0");
    read->setDatePosted(utc(2024, 1, 31, 23, 30));
    CHECK(shown(read->sort_date()) == "20240201");
    read->setDatePosted(utc(2024, 1, 31, 23, 30, 0, 1));
    CHECK(shown(read->sort_date()) == "20240131");
    CHECK(shown(read->datePosted()) == "2024-01-31 23:30:00.001");
}

TEST_CASE("a posting date that is taken away takes the sort key with it") {
    const auto read = posted("20240131");
    CHECK(read->sort_date());
    read->setDatePosted(std::nullopt);
    CHECK(shown(read->sort_date()) == "nothing");
    CHECK(shown(read->datePosted()) == "nothing");
    // The document's text is not the setter's business.
    CHECK(shown(read->originalDatePostedString()) == "20240131");
}

TEST_CASE("reading a second node does not renew the sort key") {
    const TimeZoneGuard guard("UTC0");
    const auto read = posted("20240131");
    CHECK(shown(read->sort_date()) == "20240131");
    read->parseDictionary(ParseDictionary{{"DTPOSTED", "20240215"}});
    CHECK(shown(read->datePosted()) == "2024-02-15 00:00:00.000");
    CHECK(shown(read->sort_date()) == "20240131");
}

TEST_CASE("a transaction from an archive makes its sort key anew") {
    const auto read = posted("20240131233000");
    {
        const TimeZoneGuard guard("CET-1");
        CHECK(shown(read->sort_date()) == "20240201");
    }
    const TimeZoneGuard guard("UTC0");
    CHECK(shown(restored(*read)->sort_date()) == "20240131");
}
