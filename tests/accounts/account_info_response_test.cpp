// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/formatters.h"
#include "support/shared_date_formatter.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Response = TvOFXAccountInfoResponse;

std::shared_ptr<Response> responseIn(const std::optional<ParseDictionary>& node) {
    return Response::initWithParseDict(node);
}

std::vector<std::string> descriptionsIn(const Response& response) {
    std::vector<std::string> descriptions;
    for (const auto& record : response.accountInfos())
        descriptions.push_back(shown(record->accountDescription()));
    return descriptions;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST_CASE("account information has one record for each of its aggregates, in document order") {
    CHECK(descriptionsIn(*responseIn(parsed("<ACCTINFO><DESC>A</ACCTINFO>"))) == Texts{"A"});
    CHECK(descriptionsIn(
              *responseIn(parsed("<ACCTINFO><DESC>C</ACCTINFO><DTACCTUP>20240131<ACCTINFO><DESC>A</ACCTINFO>"
                                 "<ACCTINFO><DESC>B</ACCTINFO>"))) == Texts{"C", "A", "B"});
}

TEST_CASE("records that are no aggregates are passed over") {
    const ParseDictionary record{{"DESC", "A"}};
    CHECK(descriptionsIn(*responseIn(ParseDictionary{
              {"ACCTINFO", ParseValue::array({"text", record, "text", record})}})) == Texts{"A", "A"});
    CHECK(responseIn(ParseDictionary{{"ACCTINFO", "text"}})->accountInfos().empty());
    CHECK(responseIn(ParseDictionary{{"acctinfo", record}, {"OTHER", record}})->accountInfos().empty());
    CHECK(responseIn(ParseDictionary{{"ACCTINFO", ParseDictionary{}}})->accountInfos().size() == 1);
}

TEST_CASE("account information without a node has no records") {
    for (const auto& response :
         {std::make_shared<Response>(), responseIn(std::nullopt), responseIn(ParseDictionary{})}) {
        CHECK(response->accountInfos().empty());
        CHECK_FALSE(response->lastUpdateDateTime());
        CHECK(response->description() == "TvOFXAccountInfoResponse containing 0 accounts.");
        CHECK(response->className() == "TvOFXAccountInfoResponse");
    }
}

TEST_CASE("account information was updated at a date that converts") {
    const auto time = [](const ParseValue& value) {
        return shown(responseIn(ParseDictionary{{"DTACCTUP", value}})->lastUpdateDateTime());
    };
    CHECK(time("20240131170500.123") == "2024-01-31 17:05:00.123");
    CHECK(time("garbage") == "nothing");
    CHECK(time("") == "nothing");
    CHECK(time(ParseDictionary{}) == "nothing");
    CHECK(time(ParseValue::array({"20240131", "20240201"})) == "nothing");
    CHECK_FALSE(responseIn(parsed("<DTACCTUP></DTACCTUP>"))->lastUpdateDateTime());
}

TEST_CASE("account information converts with the shared helper, and no empty text") {
    const auto formatter =
        std::make_shared<ScriptedDateFormatter>([](std::string_view) { return utc(1999, 12, 31); });
    const SharedDateFormatter guard(formatter);
    CHECK_FALSE(responseIn(ParseDictionary{{"DTACCTUP", ""}})->lastUpdateDateTime());
    CHECK(shown(responseIn(ParseDictionary{{"DTACCTUP", "today"}})->lastUpdateDateTime()) ==
          "1999-12-31 00:00:00.000");
    CHECK(formatter->asked() == Texts{"today"});
}

TEST_CASE("account information describes itself by the number of its records") {
    CHECK(responseIn(parsed("<ACCTINFO><DESC>A</ACCTINFO><ACCTINFO><DESC>B</ACCTINFO>"))->description() ==
          "TvOFXAccountInfoResponse containing 2 accounts.");
}

TEST_CASE("the interpreter builds account information from its wrapper") {
    const auto interpreter = interpreted(
        "<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>9<STATUS><CODE>0<SEVERITY>INFO</STATUS>"
        "<ACCTINFORS><DTACCTUP>20240131<ACCTINFO><DESC>A</ACCTINFO></ACCTINFORS></ACCTINFOTRNRS>"
        "</SIGNUPMSGSRSV1></OFX>");
    REQUIRE(interpreter->signupMsgSetResponses().size() == 1);
    const auto response = std::dynamic_pointer_cast<Response>(interpreter->signupMsgSetResponses().front());
    REQUIRE(response);
    CHECK(descriptionsIn(*response) == Texts{"A"});
    CHECK(shown(response->transactionUID()) == "9");
    CHECK(shown(response->transactionWrapperName()) == "ACCTINFORS");
    CHECK(response->ofxString() == "<DTACCTUP>20240131\n<ACCTINFO>\n<DESC>A\n</ACCTINFO>\n");
}

TEST_CASE("an import's own formatters do not reach account information") {
    TvOFXParserResult result;
    result.ofxData =
        parsed("<OFX><SIGNUPMSGSRSV1><ACCTINFORS><DTACCTUP>20240131</ACCTINFORS></SIGNUPMSGSRSV1></OFX>");
    const auto formatter =
        std::make_shared<ScriptedDateFormatter>([](std::string_view) { return utc(1999, 12, 31); });
    const auto helper = std::make_shared<TvOFXHelper>();
    helper->setDateFormatter(formatter);
    TvOFXInterpreter interpreter(result);
    interpreter.setHelperObject(helper);
    REQUIRE(interpreter.interpret());
    const auto response = std::dynamic_pointer_cast<Response>(interpreter.allResponses().front());
    REQUIRE(response);
    CHECK(shown(response->lastUpdateDateTime()) == "2024-01-31 00:00:00.000");
    CHECK(formatter->asked().empty());
}
