// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>
#include <doctest/doctest.h>

#include "support/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("an institution's message is the status's severity in brackets and its text") {
    const TvOFXResponse response(parsed("<STATUS><CODE>0<SEVERITY>INFO<MESSAGE>Statement ready</STATUS>"));
    CHECK(TvOFXFIMessage::initWithOFXResponse(response)->message() == "[INFO] Statement ready");
}

TEST_CASE("an institution's message is dated when it is made") {
    const TvOFXResponse response(parsed("<STATUS><CODE>0<SEVERITY>INFO<MESSAGE>A</STATUS>"));
    const Date before = currentDate();
    const auto message = TvOFXFIMessage::initWithOFXResponse(response);
    const Date after = currentDate();
    CHECK(before <= message->date());
    CHECK(message->date() <= after);
}

TEST_CASE("an institution's message reads (null) where the response has nothing") {
    CHECK(TvOFXFIMessage(TvOFXResponse()).message() == "[(null)] (null)");
    const TvOFXResponse response(parsed("<STATUS><CODE>0<SEVERITY>INFO</STATUS>"));
    CHECK(TvOFXFIMessage(response).message() == "[INFO] (null)");
}

TEST_CASE("an institution's message keeps its text when the response is gone") {
    std::shared_ptr<TvOFXFIMessage> message;
    {
        const TvOFXResponse response(parsed("<STATUS><CODE>0<SEVERITY>WARN<MESSAGE>Closing</STATUS>"));
        message = TvOFXFIMessage::initWithOFXResponse(response);
    }
    CHECK(message->message() == "[WARN] Closing");
}
