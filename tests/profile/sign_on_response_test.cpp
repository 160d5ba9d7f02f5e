// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>
#include <doctest/doctest.h>

#include "profile/same_archive.h"
#include "support/documents.h"
#include "support/formatters.h"
#include "support/shared_date_formatter.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXSignOnResponse> signOnIn(const std::optional<ParseDictionary>& node) {
    return TvOFXSignOnResponse::initWithParseDict(node);
}

constexpr const char* kFull =
    "<STATUS><CODE>0<SEVERITY>INFO</STATUS><DTSERVER>20240131170500<USERKEY>U-SECRET"
    "<TSKEYEXPIRE>20240201<LANGUAGE>ENG<DTPROFUP>20231115<DTACCTUP>20231116"
    "<FI><ORG>Big Bank<FID>1001</FI><SESSCOOKIE>C-SECRET<ACCESSKEY>A-SECRET";

struct SignOnText {
    const char* element;
    OptionalText (TvOFXSignOnResponse::*get)() const noexcept;
    void (TvOFXSignOnResponse::*set)(TextArgument);
};
using Self = TvOFXSignOnResponse;
const std::array<SignOnText, 4> kSignOnTexts{{{"LANGUAGE", &Self::language, &Self::setLanguage},
                                              {"USERKEY", &Self::userKey, &Self::setUserKey},
                                              {"SESSCOOKIE", &Self::sessionCookie, &Self::setSessionCookie},
                                              {"ACCESSKEY", &Self::accessKey, &Self::setAccessKey}}};

struct DateField {
    const char* element;
    std::optional<Date> (TvOFXSignOnResponse::*get)() const noexcept;
    void (TvOFXSignOnResponse::*set)(std::optional<Date>) noexcept;
};
const std::array<DateField, 4> kDates{
    {{"DTSERVER", &Self::dateOfServer, &Self::setDateOfServer},
     {"TSKEYEXPIRE", &Self::tskeyExpire, &Self::setTskeyExpire},
     {"DTPROFUP", &Self::dateOflastProfileInfoUpdate, &Self::setDateOflastProfileInfoUpdate},
     {"DTACCTUP", &Self::dateOflastAccountInfoUpdate, &Self::setDateOflastAccountInfoUpdate}}};

}  // namespace

TEST_CASE("a sign-on response reads all its elements") {
    const auto response = signOnIn(parsed(kFull));
    CHECK(shown(response->dateOfServer()) == "2024-01-31 17:05:00.000");
    CHECK(shown(response->userKey()) == "U-SECRET");
    CHECK(shown(response->tskeyExpire()) == "2024-02-01 00:00:00.000");
    CHECK(shown(response->language()) == "ENG");
    CHECK(shown(response->dateOflastProfileInfoUpdate()) == "2023-11-15 00:00:00.000");
    CHECK(shown(response->dateOflastAccountInfoUpdate()) == "2023-11-16 00:00:00.000");
    REQUIRE(response->financialInstitutionID());
    CHECK(shown(response->financialInstitutionID()->fid()) == "1001");
    CHECK(shown(response->sessionCookie()) == "C-SECRET");
    CHECK(shown(response->accessKey()) == "A-SECRET");
    REQUIRE(response->status());
    CHECK(shown(response->status()->severity()) == "INFO");
    CHECK(response->originalParseData() == parsed(kFull));
    CHECK(response->className() == "TvOFXSignOnResponse");
}

TEST_CASE("a sign-on response without a node is empty") {
    const auto response = signOnIn(std::nullopt);
    REQUIRE(response);
    for (const SignOnText& field : kSignOnTexts) CHECK_FALSE(((*response).*field.get)());
    for (const DateField& field : kDates) CHECK_FALSE(((*response).*field.get)());
    CHECK_FALSE(response->financialInstitutionID());
    CHECK_FALSE(response->status());
    CHECK_FALSE(response->originalParseData());
}

TEST_CASE("a sign-on response keeps texts as they stand, empty ones too, and nothing else") {
    for (const SignOnText& field : kSignOnTexts) {
        CAPTURE(field.element);
        const auto value = [&field](const ParseValue& given) {
            return shown(((*signOnIn(ParseDictionary{{field.element, given}})).*field.get)());
        };
        CHECK(value(" kept ") == " kept ");
        CHECK(value("") == "");
        CHECK(value(ParseDictionary{}) == "nothing");
        CHECK(value(ParseDictionary{{"A", "B"}}) == "nothing");
        CHECK(value(ParseValue::array({"A", "B"})) == "nothing");
    }
}

TEST_CASE("a sign-on response keeps dates that convert, and nothing else") {
    for (const DateField& field : kDates) {
        CAPTURE(field.element);
        const auto value = [&field](const ParseValue& given) {
            return shown(((*signOnIn(ParseDictionary{{field.element, given}})).*field.get)());
        };
        CHECK(value("20240131170500.000[-5:EST]") == "2024-01-31 17:05:00.000");
        CHECK(value("garbage") == "nothing");
        CHECK(value("") == "nothing");
        CHECK(value(ParseDictionary{}) == "nothing");
        CHECK(value(ParseValue::array({"20240131", "20240201"})) == "nothing");
    }
}

TEST_CASE("a sign-on response compares element names with their case") {
    const auto response = signOnIn(ParseDictionary{{"language", "ENG"}, {"Dtserver", "20240131"}});
    CHECK_FALSE(response->language());
    CHECK_FALSE(response->dateOfServer());
}

TEST_CASE("an empty language element leaves the language empty") {
    CHECK_FALSE(signOnIn(parsed("<LANGUAGE></LANGUAGE><USERKEY>K"))->language());
}

TEST_CASE("an institution that is no aggregate counts as missing") {
    const ParseDictionary bank{{"ORG", "Big Bank"}};
    CHECK_FALSE(signOnIn(ParseDictionary{{"FI", "Big Bank"}})->financialInstitutionID());
    CHECK_FALSE(signOnIn(ParseDictionary{{"FI", ParseValue::array({bank, bank})}})->financialInstitutionID());
}

TEST_CASE("an institution without a name is an object with both fields empty") {
    const auto response = signOnIn(parsed("<FI><FID>1001</FI>"));
    REQUIRE(response->financialInstitutionID());
    CHECK_FALSE(response->financialInstitutionID()->organization());
    CHECK_FALSE(response->financialInstitutionID()->fid());
    CHECK(signOnIn(parsed("<FI></FI>"))->financialInstitutionID());
}

TEST_CASE("every field of a sign-on response can be set") {
    TvOFXSignOnResponse response;
    for (const SignOnText& field : kSignOnTexts) {
        CAPTURE(field.element);
        (response.*field.set)(field.element);
        CHECK(shown((response.*field.get)()) == field.element);
    }
    for (const SignOnText& field : kSignOnTexts) CHECK(shown((response.*field.get)()) == field.element);
    unsigned day = 1;
    for (const DateField& field : kDates) (response.*field.set)(utc(2024, 1, day++));
    day = 1;
    for (const DateField& field : kDates) {
        CAPTURE(field.element);
        CHECK((response.*field.get)() == utc(2024, 1, day++));
        (response.*field.set)(std::nullopt);
        CHECK_FALSE((response.*field.get)());
    }
    const auto fi = std::make_shared<TvOFXFinancialInstitutionIdentification>();
    response.setFinancialInstitutionID(fi);
    CHECK(response.financialInstitutionID() == fi);
}

TEST_CASE("a sign-on response writes its elements in a fixed order, dates in their default form") {
    CHECK(signOnIn(parsed(kFull))->ofxString() ==
          "<SONRS>\n"
          "<STATUS>\n<CODE>0\n<SEVERITY>INFO\n</STATUS>\n"
          "<DTSERVER>2024-01-31 17:05:00 +0000\n"
          "<USERKEY>U-SECRET\n"
          "<TSKEYEXPIRE>2024-02-01 00:00:00 +0000\n"
          "<LANGUAGE>ENG\n"
          "<DTPROFUP>2023-11-15 00:00:00 +0000\n"
          "<DTACCTUP>2023-11-16 00:00:00 +0000\n"
          "<FI>\n<ORG>Big Bank\n<FID>1001\n</FI>\n"
          "<SESSCOOKIE>C-SECRET\n"
          "<ACCESSKEY>A-SECRET\n"
          "</SONRS>\n");
}

TEST_CASE("a sign-on response writes (null) for an absent status, server time and language") {
    CHECK(TvOFXSignOnResponse().ofxString() ==
          "<SONRS>\n(null)<DTSERVER>(null)\n<LANGUAGE>(null)\n</SONRS>\n");
}

TEST_CASE("a sign-on response with status and server time alone writes the language as (null)") {
    const auto response =
        signOnIn(parsed("<STATUS><CODE>0<SEVERITY>INFO</STATUS><DTSERVER>20240131170500.000[-5:EST]"));
    CHECK(shown(response->dateOfServer()) == "2024-01-31 17:05:00.000");
    CHECK_FALSE(response->language());
    CHECK(response->ofxString() ==
          "<SONRS>\n<STATUS>\n<CODE>0\n<SEVERITY>INFO\n</STATUS>\n"
          "<DTSERVER>2024-01-31 17:05:00 +0000\n<LANGUAGE>(null)\n</SONRS>\n");
}

TEST_CASE("a sign-on response writes empty texts as empty elements") {
    TvOFXSignOnResponse response;
    for (const SignOnText& field : kSignOnTexts) (response.*field.set)("");
    CHECK(response.ofxString() ==
          "<SONRS>\n(null)<DTSERVER>(null)\n<USERKEY>\n<LANGUAGE>\n<SESSCOOKIE>\n<ACCESSKEY>\n</SONRS>\n");
}

TEST_CASE("a sign-on response never closes its leaves and hands its version to nobody") {
    const auto response = signOnIn(parsed(kFull));
    const std::string text = response->ofxString();
    response->setOfxVersion(211);
    CHECK(response->ofxString() == text);
    response->financialInstitutionID()->setOfxVersion(211);
    CHECK(response->ofxString().find("<ORG>Big Bank</ORG>\n") != std::string::npos);
}

TEST_CASE("a sign-on response describes itself on one line and keeps its secrets") {
    const std::string description = signOnIn(parsed(kFull))->description();
    CHECK(description ==
          "Sign On Response: [Status: 0 [INFO]] Language:ENG ServerTime:2024-01-31 17:05:00 +0000"
          " TvOFXFinancialInstitutionIdentification = 1001/Big Bank"
          " lastProfileInfoUpdate:2023-11-15 00:00:00 +0000"
          " lastAccountInfoUpdate:2023-11-16 00:00:00 +0000");
    CHECK(description.find("SECRET") == std::string::npos);
    CHECK(description.find("2024-02-01") == std::string::npos);  // the key's expiry
}

TEST_CASE("a sign-on response describes only what is there") {
    TvOFXSignOnResponse response;
    CHECK(response.description() == "Sign On Response:");
    response.setLanguage("");
    CHECK(response.description() == "Sign On Response:");
    response.setLanguage("FRA");
    CHECK(response.description() == "Sign On Response: Language:FRA");
    CHECK(signOnIn(parsed("<FI><ORG>Big Bank<FID>1001</FI>"))->description() ==
          "Sign On Response: TvOFXFinancialInstitutionIdentification = 1001/Big Bank");
}

TEST_CASE("a sign-on response writes and describes each field alone when it alone is there") {
    struct Row {
        const char* node;
        const char* text;  // of the element, after server time and language in their places
        const char* description;
    };
    constexpr const char* kServer = "<DTSERVER>(null)\n";
    constexpr const char* kLanguage = "<LANGUAGE>(null)\n";
    const std::vector<Row> beforeLanguage{
        {"<USERKEY>K", "<USERKEY>K\n", ""},
        {"<TSKEYEXPIRE>20240201", "<TSKEYEXPIRE>2024-02-01 00:00:00 +0000\n", ""},
    };
    const std::vector<Row> behindLanguage{
        {"<DTPROFUP>20240201", "<DTPROFUP>2024-02-01 00:00:00 +0000\n",
         " lastProfileInfoUpdate:2024-02-01 00:00:00 +0000"},
        {"<DTACCTUP>20240201", "<DTACCTUP>2024-02-01 00:00:00 +0000\n",
         " lastAccountInfoUpdate:2024-02-01 00:00:00 +0000"},
        {"<FI></FI>", "<FI>\n</FI>\n", " TvOFXFinancialInstitutionIdentification = (null)/(null)"},
        {"<SESSCOOKIE>C", "<SESSCOOKIE>C\n", ""},
        {"<ACCESSKEY>A", "<ACCESSKEY>A\n", ""},
    };
    const auto check = [](const Row& row, const std::string& elements) {
        CAPTURE(row.node);
        const auto response = signOnIn(parsed(row.node));
        CHECK(response->ofxString() == "<SONRS>\n(null)" + elements + "</SONRS>\n");
        CHECK(response->description() == std::string("Sign On Response:") + row.description);
    };
    for (const Row& row : beforeLanguage) check(row, std::string(kServer) + row.text + kLanguage);
    for (const Row& row : behindLanguage) check(row, std::string(kServer) + kLanguage + row.text);
    CHECK(signOnIn(parsed("<DTSERVER>20240201"))->description() ==
          "Sign On Response: ServerTime:2024-02-01 00:00:00 +0000");
    CHECK(signOnIn(parsed("<STATUS><CODE>0<SEVERITY>INFO</STATUS>"))->description() ==
          "Sign On Response: [Status: 0 [INFO]]");
}

TEST_CASE("a sign-on response archives what an aggregate does") {
    CHECK(archivesLikeItsBase(*signOnIn(parsed(kFull))));
}

TEST_CASE("a sign-on response converts with the shared helper") {
    const auto formatter =
        std::make_shared<ScriptedDateFormatter>([](std::string_view) { return utc(1999, 12, 31); });
    const SharedDateFormatter guard(formatter);
    CHECK(shown(signOnIn(ParseDictionary{{"DTSERVER", "today"}})->dateOfServer()) ==
          "1999-12-31 00:00:00.000");
    CHECK(formatter->asked() == std::vector<std::string>{"today"});
}

TEST_CASE("an import's own formatters do not reach the sign-on response") {
    TvOFXParserResult result;
    result.ofxData = parsed("<OFX><SIGNONMSGSRSV1><SONRS><DTSERVER>20240131</SONRS></SIGNONMSGSRSV1></OFX>");
    const auto formatter =
        std::make_shared<ScriptedDateFormatter>([](std::string_view) { return utc(1999, 12, 31); });
    const auto helper = std::make_shared<TvOFXHelper>();
    helper->setDateFormatter(formatter);
    TvOFXInterpreter interpreter(result);
    interpreter.setHelperObject(helper);
    REQUIRE(interpreter.interpret());
    CHECK(shown(interpreter.signOnResponse()->dateOfServer()) == "2024-01-31 00:00:00.000");
    CHECK(formatter->asked().empty());
}

TEST_CASE("the interpreter keeps the last sign-on response") {
    const auto interpreter = interpreted(
        "<OFX><SIGNONMSGSRSV1><SONRS><LANGUAGE>ENG</SONRS><SONRS><LANGUAGE>FRA</SONRS></SIGNONMSGSRSV1></"
        "OFX>");
    CHECK(interpreter->allResponses().size() == 2);
    REQUIRE(interpreter->signOnResponse());
    CHECK(shown(interpreter->signOnResponse()->language()) == "FRA");
    CHECK(interpreter->signonMsgSetResponses().back() == interpreter->signOnResponse());
    interpreter->reset();
    CHECK_FALSE(interpreter->signOnResponse());
}
