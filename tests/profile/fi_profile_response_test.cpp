// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>
#include <doctest/doctest.h>

#include "profile/reading_rules.h"
#include "profile/same_archive.h"
#include "support/documents.h"
#include "support/formatters.h"
#include "support/shared_date_formatter.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Response = TvOFXFIProfileResponse;

std::shared_ptr<Response> read(const std::optional<ParseDictionary>& node) {
    return Response::initWithParseDict(node);
}

struct TextField {
    const char* element;
    const char* label;
    OptionalText (Response::*get)() const noexcept;
    void (Response::*set)(TextArgument);
};
const std::array<TextField, 10> kTexts{
    {{"FINAME", "fiName", &Response::fiName, &Response::setFiName},
     {"POSTALCODE", "postalCode", &Response::postalCode, &Response::setPostalCode},
     {"CITY", "city", &Response::city, &Response::setCity},
     {"STATE", "state", &Response::state, &Response::setState},
     {"COUNTRY", "country", &Response::country, &Response::setCountry},
     {"CSPHONE", "customerServicePhoneNumber", &Response::customerServicePhoneNumber,
      &Response::setCustomerServicePhoneNumber},
     {"TSPHONE", "technicalSupportPhoneNumber", &Response::technicalSupportPhoneNumber,
      &Response::setTechnicalSupportPhoneNumber},
     {"FAXPHONE", "faxNumber", &Response::faxNumber, &Response::setFaxNumber},
     {"URL", "informationURL", &Response::informationURL, &Response::setInformationURL},
     {"EMAIL", "email", &Response::email, &Response::setEmail}}};

bool hasMessageSet(const Response& response) {
    return response.messageSetProfileSignOn() || response.messageSetProfileSignUp() ||
           response.messageSetProfileBanking() || response.messageSetProfileCreditCard();
}

void checkEmpty(const Response& response) {
    for (const TextField& field : kTexts) CHECK_FALSE((response.*field.get)());
    CHECK_FALSE(response.address());
    CHECK_FALSE(response.updateTime());
    CHECK_FALSE(response.signonInfoList());
    CHECK_FALSE(hasMessageSet(response));
    CHECK(response.description() == "TvOFXFIProfile\n\n\n");
}

}  // namespace

TEST_CASE("a profile without elements, without a node or made in code is empty") {
    checkEmpty(Response());
    checkEmpty(*read(std::nullopt));
    checkEmpty(*read(ParseDictionary{}));
    checkEmpty(*read(ParseDictionary{{"finame", "Big Bank"}, {"OTHER", "x"}}));
    CHECK_FALSE(read(std::nullopt)->originalParseData());
}

TEST_CASE("a profile keeps its texts as they stand") {
    for (const TextField& field : kTexts) {
        CAPTURE(field.element);
        checkText([&field](const ParseValue& value) {
            const auto response = read(ParseDictionary{{field.element, value}});
            for (const TextField& other : kTexts)
                if (other.element != field.element) CHECK_FALSE(((*response).*other.get)());
            const OptionalText text = ((*response).*field.get)();
            return text ? std::optional(std::string(*text)) : std::nullopt;
        });
    }
}

TEST_CASE("a profile's address is its lines with line feeds between them") {
    struct Row {
        ParseDictionary node;
        const char* address;
    };
    const ParseDictionary empty;
    const std::vector<Row> rows{
        {{{"ADDR1", "1 Main St"}, {"ADDR2", "Floor 3"}, {"ADDR3", "Suite 5"}}, "1 Main St\nFloor 3\nSuite 5"},
        {{{"ADDR3", "Suite 5"}, {"ADDR2", "Floor 3"}, {"ADDR1", "1 Main St"}}, "1 Main St\nFloor 3\nSuite 5"},
        {{{"ADDR1", "1 Main St"}, {"ADDR2", "Floor 3"}}, "1 Main St\nFloor 3"},
        {{{"ADDR1", "1 Main St"}, {"ADDR3", "Suite 5"}}, "1 Main St\nSuite 5"},
        {{{"ADDR1", "1 Main St"}}, "1 Main St"},
        {{{"ADDR1", ""}, {"ADDR2", ""}, {"ADDR3", "Suite 5"}}, "\n\nSuite 5"},
        {{{"ADDR1", "1 Main St"}, {"ADDR2", empty}, {"ADDR3", "Suite 5"}}, "1 Main St\nSuite 5"},
        {{{"ADDR2", "Floor 3"}, {"ADDR3", "Suite 5"}}, "nothing"},
        {{{"ADDR1", empty}, {"ADDR2", "Floor 3"}}, "nothing"},
        {{{"ADDR1", ParseValue::array({"A", "B"})}, {"ADDR2", "Floor 3"}}, "nothing"},
    };
    for (const Row& row : rows) {
        CAPTURE(TvOFXHelper::ofxDictionaryToString(row.node));
        CHECK(shown(read(row.node)->address()) == row.address);
    }
}

TEST_CASE("a profile's update time is a date that converts") {
    const auto time = [](const ParseValue& value) {
        return shown(read(ParseDictionary{{"DTPROFUP", value}})->updateTime());
    };
    CHECK(time("20240131170500.123[-5:EST]") == "2024-01-31 17:05:00.123");
    CHECK(time("garbage") == "nothing");
    CHECK(time("") == "nothing");
    CHECK(time(ParseDictionary{}) == "nothing");
    CHECK(time(repeated()) == "nothing");
}

TEST_CASE("a profile has a list of its realms in document order") {
    const auto one = read(parsed("<SIGNONINFOLIST><SIGNONINFO><SIGNONREALM>A</SIGNONINFO></SIGNONINFOLIST>"));
    REQUIRE(one->signonInfoList());
    REQUIRE(one->signonInfoList()->size() == 1);
    CHECK(shown(one->signonInfoList()->front()->signonRealm()) == "A");

    const auto two =
        read(parsed("<SIGNONINFOLIST><SIGNONINFO><SIGNONREALM>B</SIGNONINFO>"
                    "<SIGNONINFO><SIGNONREALM>A</SIGNONINFO></SIGNONINFOLIST>"));
    REQUIRE(two->signonInfoList());
    REQUIRE(two->signonInfoList()->size() == 2);
    CHECK(shown(two->signonInfoList()->front()->signonRealm()) == "B");
    CHECK(shown(two->signonInfoList()->back()->signonRealm()) == "A");
}

TEST_CASE("realms that are no aggregates are passed over") {
    const ParseDictionary realm{{"SIGNONREALM", "A"}};
    const ParseDictionary list{{"SIGNONINFO", ParseValue::array({"text", realm, "text"})}};
    const auto response = read(ParseDictionary{{"SIGNONINFOLIST", list}});
    REQUIRE(response->signonInfoList());
    CHECK(response->signonInfoList()->size() == 1);
}

TEST_CASE("a profile without a realm has no list of realms, not an empty one") {
    const ParseDictionary realm{{"SIGNONREALM", "A"}};
    const ParseDictionary list{{"SIGNONINFO", realm}};
    const std::vector<ParseDictionary> nodes{
        parsed("<SIGNONINFOLIST></SIGNONINFOLIST>"),
        {{"SIGNONINFOLIST", "text"}},
        {{"SIGNONINFOLIST", ParseValue::array({list, list})}},
        {{"SIGNONINFOLIST", ParseDictionary{{"SIGNONINFO", "text"}}}},
        {{"SIGNONINFOLIST", ParseDictionary{{"SIGNONINFO", ParseValue::array({"a", "b"})}}}},
        {{"SIGNONINFOLIST", ParseDictionary{{"OTHER", realm}}}},
        {{"SIGNONINFO", realm}},
    };
    for (const ParseDictionary& node : nodes) {
        CAPTURE(TvOFXHelper::ofxDictionaryToString(node));
        CHECK_FALSE(read(node)->signonInfoList().has_value());
    }
}

TEST_CASE("a profile reads the four message sets that have a field") {
    const auto response = read(
        parsed("<MSGSETLIST>"
               "<SIGNONMSGSET><SIGNONMSGSETV1><MSGSETCORE><VER>1</MSGSETCORE></SIGNONMSGSETV1></SIGNONMSGSET>"
               "<SIGNUPMSGSET><SIGNUPMSGSETV1><AVAILACCTS>Y</SIGNUPMSGSETV1></SIGNUPMSGSET>"
               "<BANKMSGSET><BANKMSGSETV1><CLOSINGAVAIL>Y</BANKMSGSETV1></BANKMSGSET>"
               "<CREDITCARDMSGSET><CREDITCARDMSGSETV1><CLOSINGAVAIL>Y</CREDITCARDMSGSETV1></CREDITCARDMSGSET>"
               "</MSGSETLIST>"));
    REQUIRE(response->messageSetProfileSignOn());
    CHECK(response->messageSetProfileSignOn()->messageSetCore()->version() == 1);
    REQUIRE(response->messageSetProfileSignUp());
    CHECK(response->messageSetProfileSignUp()->serverProvidesAccountInfos());
    REQUIRE(response->messageSetProfileBanking());
    CHECK(response->messageSetProfileBanking()->closingStatementInformationAvailable());
    REQUIRE(response->messageSetProfileCreditCard());
    CHECK(response->messageSetProfileCreditCard()->closingStatementInformationAvailable());
}

TEST_CASE("a profile keeps nothing of other message sets") {
    CHECK_FALSE(hasMessageSet(*read(
        parsed("<MSGSETLIST><EMAILMSGSET><EMAILMSGSETV1><A>1</EMAILMSGSETV1></EMAILMSGSET>"
               "<PROFMSGSET><PROFMSGSETV1><A>1</PROFMSGSETV1></PROFMSGSET>"
               "<BILLPAYMSGSET><BILLPAYMSGSETV1><A>1</BILLPAYMSGSETV1></BILLPAYMSGSET>"
               "<INVSTMTMSGSET><INVSTMTMSGSETV1><A>1</INVSTMTMSGSETV1></INVSTMTMSGSET></MSGSETLIST>"))));
}

TEST_CASE("a message set is kept only where its aggregates stand as they should") {
    const char* sets[] = {"SIGNONMSGSET", "SIGNUPMSGSET", "BANKMSGSET", "CREDITCARDMSGSET"};
    for (const std::string set : sets) {
        CAPTURE(set);
        const std::string version = set + "V1";
        const std::string next = set + "V2";
        const ParseDictionary node{{"A", "1"}};
        const auto has = [](const ParseValue& list) {
            return hasMessageSet(*read(ParseDictionary{{"MSGSETLIST", list}}));
        };
        const auto inSet = [&](const ParseValue& value) { return ParseDictionary{{set, value}}; };
        const auto inVersion = [&](const ParseValue& value) {
            return inSet(ParseDictionary{{version, value}});
        };
        CHECK(has(inVersion(node)));
        CHECK(has(inVersion(ParseDictionary{})));
        CHECK_FALSE(has(inVersion("text")));
        CHECK_FALSE(has(inVersion(ParseValue::array({node, node}))));
        CHECK_FALSE(has(inSet(ParseDictionary{})));
        CHECK_FALSE(has(inSet(ParseDictionary{{next, node}})));
        CHECK_FALSE(has(inSet("text")));
        CHECK_FALSE(has(inSet(ParseValue::array({inVersion(node)[set], inVersion(node)[set]}))));
        CHECK_FALSE(has(ParseDictionary{{version, node}}));
        CHECK_FALSE(has("text"));
        CHECK_FALSE(has(ParseValue::array({inVersion(node), inVersion(node)})));
    }
}

TEST_CASE("every field of a profile can be set") {
    Response response;
    for (const TextField& field : kTexts) (response.*field.set)(field.label);
    for (const TextField& field : kTexts) {
        CAPTURE(field.element);
        CHECK(shown((response.*field.get)()) == field.label);
    }
    response.setAddress("1 Main St");
    CHECK(shown(response.address()) == "1 Main St");
    response.setUpdateTime(utc(2024, 1, 31));
    CHECK(response.updateTime() == utc(2024, 1, 31));
    const auto signOn = std::make_shared<TvOFXMessageSetProfileSignOn>();
    const auto signUp = std::make_shared<TvOFXMessageSetProfileSignUp>();
    const auto banking = std::make_shared<TvOFXMessageSetProfileBanking>();
    const auto card = std::make_shared<TvOFXMessageSetProfileCreditCard>();
    response.setMessageSetProfileSignOn(signOn);
    response.setMessageSetProfileSignUp(signUp);
    response.setMessageSetProfileBanking(banking);
    response.setMessageSetProfileCreditCard(card);
    CHECK(response.messageSetProfileSignOn() == signOn);
    CHECK(response.messageSetProfileSignUp() == signUp);
    CHECK(response.messageSetProfileBanking() == banking);
    CHECK(response.messageSetProfileCreditCard() == card);
    const auto realm = std::make_shared<TvOFXSignOnInfo>();
    response.setSignonInfoList(std::vector{realm});
    CHECK(response.signonInfoList()->front() == realm);
}

TEST_CASE("a profile describes itself by the other class's name, the postal code before the city") {
    // Both intended, and so is that the sign-up and card message sets are not shown.
    const auto response = read(
        parsed("<MSGSETLIST>"
               "<SIGNONMSGSET><SIGNONMSGSETV1><MSGSETCORE><VER>1</MSGSETCORE></SIGNONMSGSETV1></SIGNONMSGSET>"
               "<SIGNUPMSGSET><SIGNUPMSGSETV1><AVAILACCTS>Y</SIGNUPMSGSETV1></SIGNUPMSGSET>"
               "<BANKMSGSET><BANKMSGSETV1><CLOSINGAVAIL>Y</BANKMSGSETV1></BANKMSGSET>"
               "<CREDITCARDMSGSET><CREDITCARDMSGSETV1><CLOSINGAVAIL>Y</CREDITCARDMSGSETV1></CREDITCARDMSGSET>"
               "</MSGSETLIST>"
               "<SIGNONINFOLIST><SIGNONINFO><SIGNONREALM>A</SIGNONINFO>"
               "<SIGNONINFO><SIGNONREALM>B</SIGNONINFO></SIGNONINFOLIST>"
               "<DTPROFUP>20240131170500<FINAME>Big Bank<ADDR1>1 Main St<ADDR2>Floor 3<CITY>Springfield"
               "<STATE>IL<POSTALCODE>62701<COUNTRY>USA<CSPHONE>1<TSPHONE>2<FAXPHONE>3"
               "<URL>https://bank.example<EMAIL>help@bank.example"));
    CHECK(response->description() ==
          "TvOFXFIProfile"
          "\n   fiName = Big Bank"
          "\n   address = 1 Main St\nFloor 3"
          "\n   postalCode = 62701"
          "\n   city = Springfield"
          "\n   state = IL"
          "\n   country = USA"
          "\n   updateTime = 2024-01-31 17:05:00 +0000"
          "\n   customerServicePhoneNumber = 1"
          "\n   technicalSupportPhoneNumber = 2"
          "\n   faxNumber = 3"
          "\n   informationURL = https://bank.example"
          "\n   email = help@bank.example"
          "\n"
          "\nsignonInfoList:"
          "\n\t" +
              response->signonInfoList()->front()->description() + "\n\t" +
              response->signonInfoList()->back()->description() +
              "\n"
              "\nmessageSetBanking = " +
              response->messageSetProfileBanking()->description() +
              "\n"
              "\nmessageSetSignOn = " +
              response->messageSetProfileSignOn()->description());
}

TEST_CASE("a profile describes each text alone when it alone is there, an empty one too") {
    for (const TextField& field : kTexts) {
        CAPTURE(field.element);
        Response response;
        (response.*field.set)("");
        CHECK(response.description() == std::string("TvOFXFIProfile\n   ") + field.label + " = \n\n\n");
    }
}

TEST_CASE("a profile describes its address and its update time when they alone are there") {
    CHECK(read(parsed("<ADDR1>1 Main St<ADDR3>Suite 5"))->description() ==
          "TvOFXFIProfile\n   address = 1 Main St\nSuite 5\n\n\n");
    CHECK(read(parsed("<DTPROFUP>20240131"))->description() ==
          "TvOFXFIProfile\n   updateTime = 2024-01-31 00:00:00 +0000\n\n\n");
}

TEST_CASE("a profile converts its update time with the helper that all share") {
    const auto formatter =
        std::make_shared<ScriptedDateFormatter>([](std::string_view) { return utc(1999, 12, 31); });
    const SharedDateFormatter guard(formatter);
    CHECK(shown(read(ParseDictionary{{"DTPROFUP", "then"}})->updateTime()) == "1999-12-31 00:00:00.000");
}

TEST_CASE("a profile describes an empty list of realms like none") {
    Response response;
    response.setSignonInfoList(std::vector<std::shared_ptr<TvOFXSignOnInfo>>{});
    CHECK(response.description() == "TvOFXFIProfile\n\n\n");
    response.setSignonInfoList(std::vector<std::shared_ptr<TvOFXSignOnInfo>>{nullptr});
    CHECK(response.description() == "TvOFXFIProfile\n\nsignonInfoList:\n\t(null)\n\n");
}

TEST_CASE("a profile describes its message sets each after a line feed of its own") {
    Response response;
    response.setMessageSetProfileSignOn(std::make_shared<TvOFXMessageSetProfileSignOn>());
    CHECK(response.description() ==
          "TvOFXFIProfile\n\n\n\nmessageSetSignOn = TvOFXMessageSetProfileSignOn:\n");
}

TEST_CASE("a profile renders its node and archives what an aggregate does") {
    const auto response = read(parsed("<FINAME>Big Bank<MSGSETLIST><BANKMSGSET></BANKMSGSET></MSGSETLIST>"));
    CHECK(response->ofxString() ==
          "<FINAME>Big Bank\n<MSGSETLIST>\n<BANKMSGSET>\n</BANKMSGSET>\n</MSGSETLIST>\n");
    CHECK(archivesLikeItsBase(*response));
    CHECK(response->className() == "TvOFXFIProfileResponse");
}

TEST_CASE("the interpreter builds a profile from its wrapper and keeps the last one") {
    const auto interpreter = interpreted(
        "<OFX><PROFMSGSRSV1>"
        "<PROFTRNRS><TRNUID>1<STATUS><CODE>0<SEVERITY>INFO</STATUS><PROFRS><FINAME>A</PROFRS></PROFTRNRS>"
        "<PROFTRNRS><TRNUID>2<STATUS><CODE>2000<SEVERITY>ERROR</STATUS></PROFTRNRS></PROFMSGSRSV1></OFX>");
    REQUIRE(interpreter->allResponses().size() == 2);
    const auto first = std::dynamic_pointer_cast<Response>(interpreter->allResponses().front());
    REQUIRE(first);
    CHECK(shown(first->fiName()) == "A");
    CHECK(shown(first->transactionUID()) == "1");
    const auto& last = interpreter->fiProfileResponse();
    CHECK(last == interpreter->allResponses().back());
    // A wrapper that reports an error carries no profile.
    CHECK(shown(last->transactionUID()) == "2");
    CHECK(last->status()->code() == 2000);
    CHECK_FALSE(last->fiName());
}

TEST_CASE("an import's own formatters do not reach the profile") {
    TvOFXParserResult result;
    result.ofxData = parsed("<OFX><PROFMSGSRSV1><PROFRS><DTPROFUP>20240131</PROFRS></PROFMSGSRSV1></OFX>");
    const auto formatter =
        std::make_shared<ScriptedDateFormatter>([](std::string_view) { return utc(1999, 12, 31); });
    const auto helper = std::make_shared<TvOFXHelper>();
    helper->setDateFormatter(formatter);
    TvOFXInterpreter interpreter(result);
    interpreter.setHelperObject(helper);
    REQUIRE(interpreter.interpret());
    CHECK(shown(interpreter.fiProfileResponse()->updateTime()) == "2024-01-31 00:00:00.000");
    CHECK(formatter->asked().empty());
}
