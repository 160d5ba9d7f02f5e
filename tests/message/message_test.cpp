// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// A header field that is a text: its name in a header and its getter.
struct HeaderRow {
    std::string name;
    OptionalText (TvOFXMessage::*get)() const noexcept;
};
const std::array<HeaderRow, 7> kHeaderTexts{{{"DATA", &TvOFXMessage::headerData},
                                             {"OLDFILEUID", &TvOFXMessage::oldFileUID},
                                             {"NEWFILEUID", &TvOFXMessage::nuFileUID},
                                             {"ENCODING", &TvOFXMessage::encoding},
                                             {"CHARSET", &TvOFXMessage::charset},
                                             {"SECURITY", &TvOFXMessage::ofxSecurity},
                                             {"COMPRESSION", &TvOFXMessage::compression}}};

void process(TvOFXMessage& message, const std::optional<ParseDictionary>& header,
             const std::optional<ParseDictionary>& data = std::nullopt) {
    message.processParserResult({header, data});
}

ParseDictionary statementTree() {
    return parsed(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>u<STMTRS><BANKACCTFROM><ACCTID>1</BANKACCTFROM></STMTRS>"
        "</STMTTRNRS></BANKMSGSRSV1></OFX>");
}

}  // namespace

TEST_CASE("a new message holds nothing") {
    TvOFXMessage message;
    CHECK(message.headerVersion() == 0);
    CHECK(message.ofxVersion() == 0);
    for (const HeaderRow& row : kHeaderTexts) {
        CAPTURE(row.name);
        CHECK(shown((message.*row.get)()) == "nothing");
    }
    CHECK_FALSE(message.allRequests());
    CHECK(message.bankingMsgSet().empty());
    CHECK(message.accountsFound().empty());
    CHECK_FALSE(message.data());
}

TEST_CASE("a message that an application makes has the header of a document to be written") {
    const auto message = TvOFXMessage::initWithUserSettings();
    CHECK(message->headerVersion() == 100);
    CHECK(message->ofxVersion() == 0);
    CHECK(shown(message->headerData()) == "OFXSGML");
    CHECK(shown(message->encoding()) == "USASCII");
    CHECK(shown(message->charset()) == "1252");
    CHECK(shown(message->ofxSecurity()) == "NONE");
    CHECK(shown(message->compression()) == "NONE");
    CHECK(shown(message->oldFileUID()) == "NONE");
    CHECK(shown(message->nuFileUID()) == "NONE");
    CHECK_FALSE(message->allRequests());
    CHECK_FALSE(message->data());
}

TEST_CASE("each header text is copied to its field") {
    for (const HeaderRow& row : kHeaderTexts) {
        CAPTURE(row.name);
        TvOFXMessage message;
        process(message, ParseDictionary{{row.name, "value"}});
        for (const HeaderRow& other : kHeaderTexts) {
            CAPTURE(other.name);
            CHECK(shown((message.*other.get)()) == (&row == &other ? "value" : "nothing"));
        }
        CHECK(message.headerVersion() == 0);
        CHECK(message.ofxVersion() == 0);
    }
}

TEST_CASE("the two versions are the leading integers of their header values") {
    struct Row {
        std::string text;
        std::uint64_t number;
    };
    for (const Row& row :
         {Row{"102", 102}, Row{"211", 211}, Row{" 103x", 103}, Row{"abc", 0}, Row{"", 0}, Row{"+160", 160}}) {
        CAPTURE(row.text);
        TvOFXMessage version;
        process(version, ParseDictionary{{"VERSION", row.text}});
        CHECK(version.ofxVersion() == row.number);
        CHECK(version.headerVersion() == 0);
        TvOFXMessage header;
        process(header, ParseDictionary{{"OFXHEADER", row.text}});
        CHECK(header.headerVersion() == row.number);
        CHECK(header.ofxVersion() == 0);
    }
}

TEST_CASE("header names are compared exactly") {
    TvOFXMessage message;
    process(message,
            ParseDictionary{{"data", "1"}, {"Version", "2"}, {"ofxheader", "3"}, {"NUFILEUID", "4"}});
    for (const HeaderRow& row : kHeaderTexts) CHECK(shown((message.*row.get)()) == "nothing");
    CHECK(message.ofxVersion() == 0);
    CHECK(message.headerVersion() == 0);
}

TEST_CASE("a second document overwrites the header texts, with nothing where it has none") {
    TvOFXMessage message;
    process(message, ParseDictionary{{"DATA", "a"}, {"CHARSET", "b"}, {"SECURITY", "c"}});
    process(message, ParseDictionary{{"CHARSET", "new"}});
    CHECK(shown(message.headerData()) == "nothing");
    CHECK(shown(message.charset()) == "new");
    CHECK(shown(message.ofxSecurity()) == "nothing");
    process(message, std::nullopt);
    CHECK(shown(message.charset()) == "nothing");
}

TEST_CASE("a second document without versions leaves these as they were") {
    TvOFXMessage message;
    process(message, ParseDictionary{{"OFXHEADER", "100"}, {"VERSION", "102"}});
    process(message, ParseDictionary{{"DATA", "x"}});
    process(message, std::nullopt);
    CHECK(message.headerVersion() == 100);
    CHECK(message.ofxVersion() == 102);
    process(message, ParseDictionary{{"VERSION", "x"}});
    CHECK(message.ofxVersion() == 0);
}

TEST_CASE("a document without header takes an application's header texts away and leaves its versions") {
    const auto message = TvOFXMessage::initWithUserSettings();
    process(*message, std::nullopt);
    CHECK(message->headerVersion() == 100);
    for (const HeaderRow& row : kHeaderTexts) CHECK(shown(((*message).*row.get)()) == "nothing");
}

TEST_CASE("the header of each kind of document gives its versions") {
    const std::string body = "<OFX><BANKMSGSRSV1></BANKMSGSRSV1></OFX>";
    const auto first = imported("OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nSECURITY:\n\n" + body);
    CHECK(first->headerVersion() == 100);
    CHECK(first->ofxVersion() == 102);
    CHECK(shown(first->headerData()) == "OFXSGML");
    CHECK(shown(first->ofxSecurity()) == "");
    CHECK(shown(first->encoding()) == "nothing");
    const auto second = imported(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?OFX OFXHEADER=\"200\" VERSION=\"211\"?>" + body);
    CHECK(second->headerVersion() == 200);
    CHECK(second->ofxVersion() == 211);
    CHECK(shown(second->encoding()) == "UTF-8");
    const auto none = imported(body);
    CHECK(none->headerVersion() == 0);
    CHECK(none->ofxVersion() == 0);
    for (const HeaderRow& row : kHeaderTexts) CHECK(shown(((*none).*row.get)()) == "nothing");
}

TEST_CASE("a text that is not OFX makes a message without content") {
    const auto message = imported("Dear customer");
    CHECK(message->bankingMsgSet().empty());
    CHECK(message->accountsFound().empty());
    CHECK(message->headerVersion() == 0);
}

TEST_CASE("a message tells text that is no OFX from OFX without responses") {
    struct Row {
        std::string_view text;
        MessageContent content;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"no OFX at all", MessageContent::notOFX},
             {"<html><body>Please sign in</body></html>", MessageContent::notOFX},
             {"<ofx></ofx>", MessageContent::notOFX},
             {"OFXHEADER:100\nVERSION:102\n", MessageContent::noResponses},
             {"<OFX></OFX>", MessageContent::noResponses},
             {"<OFX><BANKMSGSRSV1></BANKMSGSRSV1></OFX>", MessageContent::noResponses},
             {"OFXHEADER:100\n\n<ofx><bankmsgsrsv1><stmttrnrs><trnuid>1</stmttrnrs></bankmsgsrsv1></ofx>",
              MessageContent::noResponses},
             {"<?xml "
              "version=\"1.0\"?><OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1</STMTTRNRS></BANKMSGSRSV1></OFX>",
              MessageContent::noResponses},
             {"<OFX><SIGNONMSGSRSV1><SONRS><LANGUAGE>ENG</SONRS></SIGNONMSGSRSV1></OFX>",
              MessageContent::responses},
             {"<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>1</ACCTINFOTRNRS></SIGNUPMSGSRSV1></OFX>",
              MessageContent::responses},
             {"<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1</STMTTRNRS></BANKMSGSRSV1></OFX>",
              MessageContent::responses},
         }) {
        CAPTURE(row.text);
        const auto message = TovanaOFXController::importOFXFileFromData(Data::view(row.text));
        REQUIRE(message);
        CHECK(static_cast<int>(message->content()) == static_cast<int>(row.content));
    }
}

TEST_CASE("the content of a message is the most of what it has taken") {
    TvOFXMessage message;
    CHECK((message.content() == MessageContent::notOFX));
    message.processParserResult({{}, {}});
    CHECK((message.content() == MessageContent::notOFX));
    message.processParserResult({{}, parsed("<OFX><A>1</OFX>")});
    CHECK((message.content() == MessageContent::noResponses));
    message.processParserResult({{}, parsed("<OFX><X><SONRS><A>1</SONRS></X></OFX>")});
    CHECK((message.content() == MessageContent::responses));
    message.processParserResult({{}, {}});
    CHECK((message.content() == MessageContent::responses));
    CHECK((TvOFXMessage::initWithUserSettings()->content() == MessageContent::notOFX));
}

TEST_CASE("header texts outlive the parser result") {
    TvOFXMessage message;
    {
        const std::string value(100, 'v');
        process(message, ParseDictionary{{"DATA", value}});
    }
    CHECK(shown(message.headerData()) == std::string(100, 'v'));
}

TEST_CASE("a second document appends its responses") {
    TvOFXMessage message;
    process(message, std::nullopt, statementTree());
    const TvOFXResponseList first = message.bankingMsgSet();
    process(message, std::nullopt, statementTree());
    REQUIRE(message.bankingMsgSet().size() == 2);
    CHECK(message.bankingMsgSet()[0] == first[0]);
    CHECK(message.bankingMsgSet()[1] != first[0]);
    process(message, std::nullopt, std::nullopt);
    CHECK(message.bankingMsgSet().size() == 2);
}

TEST_CASE("the banking set has the responses of the banking message set alone") {
    const auto message = imported(
        "<OFX><SIGNONMSGSRSV1><SONRS><LANGUAGE>ENG</SONRS></SIGNONMSGSRSV1>"
        "<BANKMSGSRSV1><STMTTRNRS><TRNUID>a</STMTTRNRS><XTRNRS><TRNUID>b</XTRNRS></BANKMSGSRSV1>"
        "<CREDITCARDMSGSRSV1><CCSTMTTRNRS><TRNUID>c</CCSTMTTRNRS></CREDITCARDMSGSRSV1>"
        "<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>d</INVSTMTTRNRS></INVSTMTMSGSRSV1></OFX>");
    REQUIRE(message->bankingMsgSet().size() == 2);
    CHECK(shown(message->bankingMsgSet()[0]->transactionUID()) == "a");
    CHECK(shown(message->bankingMsgSet()[1]->transactionUID()) == "b");
}

TEST_CASE("requests are absent until the first is added, and keep their order") {
    TvOFXMessage message;
    CHECK_FALSE(message.allRequests());
    const std::vector<std::shared_ptr<TvOFXRequest>> requests{
        TvOFXFIProfileRequest::initWithUpdateDateTime(), std::make_shared<TvOFXChallengeRequest>(),
        TvOFXAccountInfoRequest::initWithUpdateDateTime(), TvOFXFIProfileRequest::initWithUpdateDateTime()};
    for (const auto& request : requests) message.addRequest(request);
    message.addRequest(requests.front());
    REQUIRE(message.allRequests());
    REQUIRE(message.allRequests()->size() == 5);
    for (std::size_t i = 0; i < requests.size(); ++i) CHECK((*message.allRequests())[i] == requests[i]);
    CHECK((*message.allRequests())[4] == requests[0]);
}

TEST_CASE("no request adds nothing") {
    TvOFXMessage message;
    message.addRequest(nullptr);
    CHECK_FALSE(message.allRequests());
}

TEST_CASE("a request gets the message's version when it is added, and not later") {
    TvOFXMessage message;
    process(message, ParseDictionary{{"VERSION", "211"}});
    const auto request = TvOFXAccountInfoRequest::initWithUpdateDateTime();
    message.addRequest(request);
    CHECK(request->ofxVersion() == 211);
    CHECK(request->ofxString().find("</TRNUID>") != std::string::npos);
    process(message, ParseDictionary{{"VERSION", "102"}});
    CHECK(request->ofxVersion() == 211);
    message.addRequest(request);
    CHECK(request->ofxVersion() == 102);
}

TEST_CASE("requests of a message that an application makes render like version 1") {
    const auto message = TvOFXMessage::initWithUserSettings();
    const auto request = TvOFXFIProfileRequest::initWithUpdateDateTime();
    request->setOfxVersion(211);
    message->addRequest(request);
    CHECK(request->ofxVersion() == 0);
    CHECK(request->ofxString().find("</TRNUID>") == std::string::npos);
}

TEST_CASE("requests stand in no list of accounts") {
    const auto message = TvOFXMessage::initWithUserSettings();
    message->addRequest(TvOFXAccountInfoRequest::initWithUpdateDateTime());
    CHECK(message->bankAccountsFound().empty());
    CHECK(message->creditCardAccountsFound().empty());
    CHECK(message->bankingMsgSet().empty());
}

TEST_CASE("a message never has data") {
    const auto message = importedExample("checking.ofx");
    CHECK_FALSE(message->data());
    message->addRequest(TvOFXFIProfileRequest::initWithUpdateDateTime());
    CHECK_FALSE(message->data());
}
