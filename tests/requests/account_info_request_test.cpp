// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>
#include <doctest/doctest.h>

#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("an account request without a date asks from 1990 on") {
    const auto request = TvOFXAccountInfoRequest::initWithUpdateDateTime();
    CHECK(request->dateTimeAccountUpdate() == "19900101");
    CHECK(request->ofxString() ==
          "<ACCTINFOTRNRQ>\n<TRNUID>" + shown(request->transactionUID()) +
              "\n<ACCTINFORQ>\n<DTACCTUP>19900101\n</ACCTINFORQ>\n</ACCTINFOTRNRQ>\n");
}

TEST_CASE("the leaves of an account request are closed from version 200 on") {
    for (const std::uint64_t version : {0U, 102U, 160U, 199U, 200U, 211U}) {
        CAPTURE(version);
        const auto request = TvOFXAccountInfoRequest::initWithUpdateDateTime("20240131");
        request->setOfxVersion(version);
        const bool closed = version >= 200;
        CHECK(request->ofxString() == "<ACCTINFOTRNRQ>\n<TRNUID>" + shown(request->transactionUID()) +
                                          (closed ? "</TRNUID>" : "") + "\n<ACCTINFORQ>\n<DTACCTUP>20240131" +
                                          (closed ? "</DTACCTUP>" : "") +
                                          "\n</ACCTINFORQ>\n</ACCTINFOTRNRQ>\n");
    }
}

TEST_CASE("the date of an account request is used as it stands") {
    for (const std::string date : {"", "tomorrow", "20240131120000.000[-5:EST]", "<&>"}) {
        CAPTURE(date);
        const auto request = TvOFXAccountInfoRequest::initWithUpdateDateTime(date);
        CHECK(request->dateTimeAccountUpdate() == date);
        CHECK(request->ofxString().find("<DTACCTUP>" + std::string(date) + "\n") != std::string::npos);
    }
}

TEST_CASE("an account request describes itself like any object without parse data") {
    const auto request = TvOFXAccountInfoRequest::initWithUpdateDateTime();
    CHECK(request->description().find("TvOFXAccountInfoRequest") != std::string::npos);
    CHECK(request->description() != request->ofxString());
}
