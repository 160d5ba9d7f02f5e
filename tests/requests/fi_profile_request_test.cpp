// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>
#include <doctest/doctest.h>

#include <limits>

#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("a profile request without a date asks from 1990 on, without routing") {
    const auto request = TvOFXFIProfileRequest::initWithUpdateDateTime();
    CHECK(request->dateTimeProfileUpdate() == "19900101");
    CHECK(request->clientRouting() == 0);
    CHECK(request->ofxString() == "<PROFTRNRQ>\n<TRNUID>" + shown(request->transactionUID()) +
                                      "\n<PROFRQ>\n<CLIENTROUTING>NONE\n<DTPROFUP>19900101\n</PROFRQ>\n"
                                      "</PROFTRNRQ>\n");
}

TEST_CASE("the leaves of a profile request are closed from version 200 on") {
    for (const std::uint64_t version : {0U, 102U, 199U, 200U, 211U}) {
        CAPTURE(version);
        const auto request = TvOFXFIProfileRequest::initWithUpdateDateTime("20240131");
        request->setOfxVersion(version);
        const bool closed = version >= 200;
        CHECK(request->ofxString() == "<PROFTRNRQ>\n<TRNUID>" + shown(request->transactionUID()) +
                                          (closed ? "</TRNUID>" : "") + "\n<PROFRQ>\n<CLIENTROUTING>NONE" +
                                          (closed ? "</CLIENTROUTING>" : "") + "\n<DTPROFUP>20240131" +
                                          (closed ? "</DTPROFUP>" : "") + "\n</PROFRQ>\n</PROFTRNRQ>\n");
    }
}

TEST_CASE("a number of client routing is written as its text, any other as an empty one") {
    struct Row {
        std::int32_t routing;
        std::string text;
    };
    for (const Row& row : {Row{0, "NONE"}, Row{1, "SERVICE"}, Row{2, "MSGSET"}, Row{3, ""}, Row{-1, ""},
                           Row{std::numeric_limits<std::int32_t>::max(), ""},
                           Row{std::numeric_limits<std::int32_t>::min(), ""}}) {
        CAPTURE(row.routing);
        const auto request = TvOFXFIProfileRequest::initWithUpdateDateTime();
        request->setClientRouting(row.routing);
        CHECK(request->clientRouting() == row.routing);
        CHECK(request->clientRoutingString() == row.text);
        CHECK(request->ofxString().find("<CLIENTROUTING>" + std::string(row.text) + "\n") !=
              std::string::npos);
    }
}

TEST_CASE("the date of a profile request is used as it stands") {
    for (const std::string date : {"", "tomorrow", "20240131120000"}) {
        CAPTURE(date);
        CHECK(TvOFXFIProfileRequest::initWithUpdateDateTime(date)->dateTimeProfileUpdate() == date);
    }
}

TEST_CASE("a profile request describes itself by its OFX text") {
    const auto request = TvOFXFIProfileRequest::initWithUpdateDateTime();
    CHECK(request->description() == request->ofxString());
    request->setOfxVersion(211);
    CHECK(request->description() == request->ofxString());
    CHECK(request->description().find("</TRNUID>") != std::string::npos);
}
