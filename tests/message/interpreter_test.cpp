// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "interpreted_trees.h"
#include "support/documents.h"
#include "support/formatters.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using List = const TvOFXResponseList& (TvOFXInterpreter::*)() const noexcept;

struct MessageSetRow {
    std::string prefix;
    List list;
};
const std::array<MessageSetRow, 10> kMessageSets{
    {{"SIGNONMSGSRSV", &TvOFXInterpreter::signonMsgSetResponses},
     {"SIGNUPMSGSRSV", &TvOFXInterpreter::signupMsgSetResponses},
     {"BANKMSGSRSV", &TvOFXInterpreter::bankingMsgSetResponses},
     {"CREDITCARDMSGSRSV", &TvOFXInterpreter::creditCardMsgSetResponses},
     {"INVSTMTMSGSRSV", &TvOFXInterpreter::investmentMgsSetResponses},
     {"INTERXFERMSGSRSV", &TvOFXInterpreter::interbankFundsMsgSetResponses},
     {"WIREXFERMSGSRSV", &TvOFXInterpreter::wireFundsMsgSetResponses},
     {"BILLPAYMSGSRSV", &TvOFXInterpreter::billPaymentMsgSetResponses},
     {"EMAILMSGSRSV", &TvOFXInterpreter::emailMsgSetReponses},
     {"SECLISTMSGSRSV", &TvOFXInterpreter::investmentSecListMsgSetResponses}}};

struct ClassRow {
    std::string name;
    std::string className;
};
const std::array<ClassRow, 6> kClasses{{{"SONRS", "TvOFXSignOnResponse"},
                                        {"ACCTINFORS", "TvOFXAccountInfoResponse"},
                                        {"PROFRS", "TvOFXFIProfileResponse"},
                                        {"STMTRS", "TvOFXStatementResponse"},
                                        {"CCSTMTRS", "TvOFXCCStatementResponse"},
                                        {"INVSTMTRS", "TvOFXResponse"}}};

void checkEmpty(const TvOFXInterpreter& interpreter) {
    CHECK(interpreter.allResponses().empty());
    CHECK(interpreter.allResponsesWithTransactionUID().empty());
    CHECK(interpreter.responseObjectsPerSGMLKey().empty());
    CHECK(interpreter.allStatusObjects().empty());
    CHECK_FALSE(interpreter.signOnResponse());
    CHECK_FALSE(interpreter.fiProfileResponse());
    for (const MessageSetRow& row : kMessageSets) CHECK((interpreter.*row.list)().empty());
}

}  // namespace

TEST_CASE("a new interpreter has read nothing") {
    const auto interpreter = TvOFXInterpreter::initWithParseResult(
        {{}, ofx("BANKMSGSRSV1", ParseDictionary{{"A", ParseDictionary()}})});
    checkEmpty(*interpreter);
    CHECK_FALSE(interpreter->helperObject());
    CHECK(interpreter->parserDict());
}

TEST_CASE("a tree without an OFX aggregate that has children is not interpreted") {
    const std::vector<std::optional<ParseDictionary>> trees{
        std::nullopt,
        ParseDictionary(),
        ParseDictionary{{"QFX", ParseDictionary{{"A", "1"}}}},
        ParseDictionary{{"ofx", ParseDictionary{{"A", "1"}}}},
        ParseDictionary{{"OFX", "text"}},
        ParseDictionary{{"OFX", ParseDictionary()}},
        ParseDictionary{{"OFX", ParseValue::array({ParseDictionary{{"BANKMSGSRSV1", ParseDictionary()}},
                                                   ParseDictionary{{"BANKMSGSRSV1", ParseDictionary()}}})}},
    };
    for (std::size_t i = 0; i < trees.size(); ++i) {
        CAPTURE(i);
        TvOFXInterpreter interpreter = over(trees[i]);
        CHECK_FALSE(interpreter.interpret());
        checkEmpty(interpreter);
    }
}

TEST_CASE("any child of OFX makes interpretation succeed, though only aggregates are walked") {
    for (const ParseDictionary& tree :
         {ofx("A", "text"), ofx("BANKMSGSRSV1", "text"), ofx("BANKMSGSRSV1", ParseDictionary()),
          ofx("BANKMSGSRSV1", ParseDictionary{{"STMTTRNRS", "text"}}),
          ofx("BANKMSGSRSV1", ParseValue::array({ParseDictionary{{"STMTTRNRS", ParseDictionary()}},
                                                 ParseDictionary{{"STMTTRNRS", ParseDictionary()}}}))}) {
        TvOFXInterpreter interpreter = over(tree);
        CHECK(interpreter.interpret());
        checkEmpty(interpreter);
    }
}

TEST_CASE("each message set has its list, whatever its version digit") {
    for (const MessageSetRow& row : kMessageSets) {
        CAPTURE(row.prefix);
        for (const std::string version : {"1", "2", "", "1X"}) {
            CAPTURE(version);
            TvOFXInterpreter interpreter =
                over(ofx(std::string(row.prefix) + version,
                         ParseDictionary{{"ANYTRNRS", ParseDictionary{{"TRNUID", "u"}}}}));
            CHECK(interpreter.interpret());
            for (const MessageSetRow& other : kMessageSets) {
                CAPTURE(other.prefix);
                CHECK((interpreter.*other.list)().size() == (&other == &row ? 1 : 0));
            }
            CHECK(interpreter.allResponses().size() == 1);
            CHECK((interpreter.*row.list)().front() == interpreter.allResponses().front());
        }
    }
}

TEST_CASE("two versions of a message set share one list") {
    TvOFXInterpreter interpreter = over(ParseDictionary{
        {"OFX", ParseDictionary{{"BANKMSGSRSV1", ParseDictionary{{"A", ParseDictionary()}}},
                                {"BANKMSGSRSV2", ParseDictionary{{"B", ParseDictionary()}}}}}});
    CHECK(interpreter.interpret());
    CHECK(names(interpreter.bankingMsgSetResponses()) == "[A][B]");
}

TEST_CASE("the responses of an unknown message set stand in every index but the message sets") {
    for (const std::string messageSet :
         {"PRESDIRMSGSRSV1", "TAX1099MSGSRSV1", "BANKMSGSRS", "XBANKMSGSRSV1", "bankmsgsrsv1", ""}) {
        CAPTURE(messageSet);
        TvOFXInterpreter interpreter = over(
            ofx(messageSet,
                ParseDictionary{{"ANYTRNRS", ParseDictionary{{"TRNUID", "u"}, {"STATUS", status("0")}}}}));
        CHECK(interpreter.interpret());
        CHECK(interpreter.allResponses().size() == 1);
        CHECK(interpreter.responsesForKey("ANYRS") != nullptr);
        CHECK(interpreter.responsesForTransactionUID("u") != nullptr);
        CHECK(interpreter.allStatusObjects().size() == 1);
        for (const MessageSetRow& row : kMessageSets) CHECK((interpreter.*row.list)().empty());
    }
}

TEST_CASE("the name of an aggregate decides the class of its response") {
    for (const ClassRow& row : kClasses) {
        CAPTURE(row.name);
        TvOFXInterpreter direct = over(std::nullopt);
        const auto made = direct.createResponseObjectForKey(row.name, std::nullopt);
        REQUIRE(made);
        CHECK(made->className() == row.className);
        CHECK((direct.signOnResponse() == made) == (row.name == "SONRS"));
        CHECK((direct.fiProfileResponse() == made) == (row.name == "PROFRS"));

        TvOFXInterpreter bare = over(ofx("ANYMSGSRSV1", ParseDictionary{{row.name, ParseDictionary()}}));
        CHECK(bare.interpret());
        REQUIRE(bare.allResponses().size() == 1);
        CHECK(bare.allResponses().front()->className() == row.className);
        CHECK((bare.signOnResponse() != nullptr) == (std::string_view(row.name) == "SONRS"));
        CHECK((bare.fiProfileResponse() != nullptr) == (std::string_view(row.name) == "PROFRS"));
    }
}

TEST_CASE("names of responses are compared exactly") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    for (const std::string name :
         {"stmtrs", "STMTRS ", "XSTMTRS", "STMTRSS", "INTU.STMTRS", "", "CCSTMTENDRS"}) {
        CAPTURE(name);
        CHECK(interpreter.createResponseObjectForKey(name, std::nullopt)->className() == "TvOFXResponse");
    }
}

TEST_CASE("a response whose aggregate has no class stands in its message set as a generic one") {
    const auto interpreter = interpreted(
        "<OFX><INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>u<INVSTMTRS><CURDEF>EUR</INVSTMTRS></INVSTMTTRNRS>"
        "</INVSTMTMSGSRSV1></OFX>");
    REQUIRE(interpreter->investmentMgsSetResponses().size() == 1);
    const TvOFXResponse& response = *interpreter->investmentMgsSetResponses().front();
    CHECK(response.className() == "TvOFXResponse");
    CHECK(shown(response.transactionWrapperName()) == "INVSTMTRS");
    CHECK(response.ofxString() == "<CURDEF>EUR\n");
}

TEST_CASE("a response that is made alone is in no index") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    CHECK(interpreter.createResponseObjectForKey("STMTRS", ParseDictionary{{"CURDEF", "EUR"}}));
    checkEmpty(interpreter);
}

TEST_CASE("a wrapper's response is the aggregate that its name names") {
    struct Row {
        std::string wrapper;
        std::string inner;
    };
    for (const Row& row : {Row{"STMTTRNRS", "STMTRS"}, Row{"CCSTMTTRNRS", "CCSTMTRS"},
                           Row{"ACCTINFOTRNRS", "ACCTINFORS"}, Row{"PROFTRNRS", "PROFRS"},
                           Row{"INVSTMTTRNRS", "INVSTMTRS"}, Row{"TRNRS", "RS"}, Row{"TRNTRNRS", "TRNRS"}}) {
        CAPTURE(row.wrapper);
        TvOFXInterpreter interpreter = over(std::nullopt);
        const auto response = interpreter.interpretResponseDict(
            ParseDictionary{{"TRNUID", "u"}, {row.inner, ParseDictionary{{"CURDEF", "EUR"}}}}, row.wrapper);
        REQUIRE(response);
        CHECK(shown(response->transactionWrapperName()) == row.inner);
        CHECK(shown(response->transactionUID()) == "u");
        REQUIRE(response->originalParseData());
        CHECK(shown((*response->originalParseData())["CURDEF"].text()) == "EUR");
        REQUIRE(interpreter.responsesForKey(row.inner) != nullptr);
        CHECK(interpreter.responsesForKey(row.wrapper) == nullptr);
    }
}

TEST_CASE("only a name that ends in TRNRS is a wrapper") {
    for (const std::string name : {"STMTTRNRSX", "STMTTRNR", "TRNRQ", "STMTTRNrs", "RS", ""}) {
        CAPTURE(name);
        TvOFXInterpreter interpreter = over(std::nullopt);
        const auto response = interpreter.interpretResponseDict(
            ParseDictionary{{"TRNUID", "u"}, {"STMTRS", ParseDictionary()}}, name);
        CHECK(shown(response->transactionWrapperName()) == name);
        CHECK(shown(response->transactionUID()) == "nothing");
        CHECK(response->originalParseData()->size() == 2);
    }
}

TEST_CASE("a sign-on is its own wrapper and has no transaction identifier") {
    const auto interpreter = interpreted(
        "<OFX><SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO</STATUS><TRNUID>u<LANGUAGE>ENG</SONRS>"
        "</SIGNONMSGSRSV1></OFX>");
    CHECK(interpreter->interpret());
    CHECK(names(interpreter->allResponses()) == "[SONRS]");
    CHECK(interpreter->signOnResponse() != nullptr);
    CHECK(names(interpreter->signonMsgSetResponses()) == "[SONRS]");
    CHECK(interpreter->allResponsesWithTransactionUID().empty());
    CHECK(interpreter->allStatusObjects().empty());
    REQUIRE(interpreter->allResponses().front()->status());
    CHECK(interpreter->allResponses().front()->status()->description() == "Status: 0 [INFO]");
}

TEST_CASE("the last sign-on and the last profile are kept") {
    TvOFXInterpreter interpreter =
        over(ofx("ANYMSGSRSV1",
                 ParseDictionary{{"SONRS", ParseValue::array({ParseDictionary{{"LANGUAGE", "A"}},
                                                              ParseDictionary{{"LANGUAGE", "B"}}})},
                                 {"PROFTRNRS", ParseValue::array({ParseDictionary{{"TRNUID", "1"}},
                                                                  ParseDictionary{{"TRNUID", "2"}}})}}));
    CHECK(interpreter.interpret());
    REQUIRE(interpreter.allResponses().size() == 4);
    CHECK(std::shared_ptr<TvOFXResponse>(interpreter.signOnResponse()) == interpreter.allResponses()[1]);
    CHECK(std::shared_ptr<TvOFXResponse>(interpreter.fiProfileResponse()) == interpreter.allResponses()[3]);
}

TEST_CASE("the wrappers of one name stand in document order in every index") {
    const auto interpreter = interpreted(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>a<STMTRS><CURDEF>A</STMTRS></STMTTRNRS>"
        "<STMTTRNRS><TRNUID>b<STMTRS><CURDEF>B</STMTRS></STMTTRNRS>"
        "<STMTTRNRS><TRNUID>c<STMTRS><CURDEF>C</STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>");
    CHECK(uids(interpreter->allResponses()) == "[a][b][c]");
    CHECK(uids(interpreter->bankingMsgSetResponses()) == "[a][b][c]");
    REQUIRE(interpreter->responsesForKey("STMTRS") != nullptr);
    CHECK(uids(*interpreter->responsesForKey("STMTRS")) == "[a][b][c]");
    for (const auto& response : interpreter->allResponses())
        CHECK(dynamic_cast<TvOFXStatementResponse*>(response.get()) != nullptr);
}

TEST_CASE("responses stand in the order in which their names first appear") {
    const auto interpreter = interpreted(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>a</STMTTRNRS><XTRNRS><TRNUID>b</XTRNRS>"
        "<STMTTRNRS><TRNUID>c</STMTTRNRS></BANKMSGSRSV1><SIGNONMSGSRSV1><SONRS><LANGUAGE>ENG</SONRS></"
        "SIGNONMSGSRSV1>"
        "</OFX>");
    CHECK(uids(interpreter->allResponses()) == "[a][c][b][nothing]");
    CHECK(names(interpreter->allResponses()) == "[STMTRS][STMTRS][XRS][SONRS]");
}

TEST_CASE("texts among the wrappers of one name are passed over") {
    TvOFXInterpreter interpreter =
        over(ofx("BANKMSGSRSV1",
                 ParseDictionary{{"STMTTRNRS", ParseValue::array({ParseDictionary{{"TRNUID", "a"}}, "text",
                                                                  ParseDictionary{{"TRNUID", "b"}}})},
                                 {"TRNUID", "text"}}));
    CHECK(interpreter.interpret());
    CHECK(uids(interpreter.allResponses()) == "[a][b]");
}

TEST_CASE("responses of one transaction identifier stand together, with the last one's status") {
    const auto interpreter = interpreted(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>u<STATUS><CODE>1<SEVERITY>INFO</STATUS></STMTTRNRS>"
        "<STMTTRNRS><TRNUID>u<STATUS><CODE>2<SEVERITY>WARN</STATUS></STMTTRNRS>"
        "<STMTTRNRS><TRNUID>u</STMTTRNRS></BANKMSGSRSV1></OFX>");
    REQUIRE(interpreter->responsesForTransactionUID("u") != nullptr);
    CHECK(interpreter->responsesForTransactionUID("u")->size() == 3);
    CHECK(*interpreter->responsesForTransactionUID("u") == interpreter->allResponses());
    CHECK(interpreter->allResponsesWithTransactionUID().size() == 1);
    REQUIRE(interpreter->allStatusObjects().size() == 1);
    CHECK(interpreter->allStatusObjects().find("u")->second == interpreter->allResponses()[1]->status());
    CHECK(interpreter->allStatusObjects().find("u")->second->code() == 2);
}

TEST_CASE("an identifier or name that no response has finds nothing") {
    TvOFXInterpreter interpreter =
        over(ofx("BANKMSGSRSV1", ParseDictionary{{"STMTTRNRS", ParseDictionary()}}));
    CHECK(interpreter.interpret());
    CHECK(interpreter.responsesForKey("CCSTMTRS") == nullptr);
    CHECK(interpreter.responsesForKey("") == nullptr);
    CHECK(interpreter.responsesForTransactionUID("") == nullptr);
    CHECK(interpreter.allResponsesWithTransactionUID().empty());
}

TEST_CASE("a wrapper with an error and no response gives an empty statement with that error") {
    const auto interpreter = interpreted(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>u<STATUS><CODE>2000<SEVERITY>ERROR<MESSAGE>General "
        "error</STATUS>"
        "</STMTTRNRS></BANKMSGSRSV1></OFX>");
    REQUIRE(interpreter->bankingMsgSetResponses().size() == 1);
    const auto statement =
        std::dynamic_pointer_cast<TvOFXStatementResponse>(interpreter->bankingMsgSetResponses().front());
    REQUIRE(statement);
    REQUIRE(statement->status());
    CHECK(statement->status()->description() == "Status: 2000 [ERROR] - General error");
    CHECK(shown(statement->transactionUID()) == "u");
    CHECK(shown(statement->transactionWrapperName()) == "STMTRS");
    CHECK_FALSE(statement->bankAccountFrom());
    CHECK(statement->statementTransactions().empty());
    CHECK_FALSE(statement->originalParseData());
    CHECK(statement->ofxString() == "");
    CHECK(interpreter->allStatusObjects().size() == 1);
}

TEST_CASE("a response beside an error is read like any other") {
    const auto interpreter = interpreted(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>u<STATUS><CODE>2000<SEVERITY>ERROR</"
        "STATUS><STMTRS><CURDEF>EUR</STMTRS>"
        "</STMTTRNRS></BANKMSGSRSV1></OFX>");
    const auto statement =
        std::dynamic_pointer_cast<TvOFXStatementResponse>(interpreter->allResponses().front());
    REQUIRE(statement);
    CHECK(shown(statement->defaultCurrency()) == "EUR");
    CHECK(statement->status()->code() == 2000);
}

TEST_CASE("an inner node that is no aggregate counts as absent") {
    const ParseDictionary statement{{"CURDEF", "EUR"}};
    for (const ParseValue& inner : {ParseValue("text"), ParseValue::array({statement, statement})}) {
        for (const ClassRow& row : kClasses) {
            const std::string name = row.name;
            CAPTURE(name);
            const std::string wrapper = name.substr(0, name.size() - 2) + "TRNRS";
            TvOFXInterpreter interpreter = over(std::nullopt);
            const auto response =
                interpreter.interpretResponseDict(ParseDictionary{{"TRNUID", "u"}, {name, inner}}, wrapper);
            REQUIRE(response);
            CHECK(response->className() == row.className);
            CHECK_FALSE(response->originalParseData());
            CHECK(shown(response->transactionUID()) == "u");
        }
    }
}

TEST_CASE("a response from no node at all is empty and indexed by its name") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    for (const std::string key : {"STMTTRNRS", "STMTRS"}) {
        const auto response = interpreter.interpretResponseDict(std::nullopt, key);
        REQUIRE(response);
        CHECK(response->className() == "TvOFXStatementResponse");
        CHECK_FALSE(response->originalParseData());
        CHECK_FALSE(response->status());
    }
    CHECK(interpreter.responsesForKey("STMTRS")->size() == 2);
}

TEST_CASE("a response that is interpreted alone is in every index but the message sets") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    const auto response = interpreter.interpretResponseDict(ParseDictionary{{"TRNUID", "u"}}, "STMTTRNRS");
    CHECK(interpreter.allResponses() == TvOFXResponseList{response});
    for (const MessageSetRow& row : kMessageSets) CHECK((interpreter.*row.list)().empty());
    interpreter.addResponse(response, "BANKMSGSRSV1");
    interpreter.addResponse(response, "NOSUCHSET");
    CHECK(interpreter.bankingMsgSetResponses() == TvOFXResponseList{response});
    CHECK(interpreter.allResponses().size() == 1);
}

TEST_CASE("no response is in no message set") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    for (const MessageSetRow& row : kMessageSets) {
        CAPTURE(row.prefix);
        interpreter.addResponse(nullptr, row.prefix + "1");
        CHECK((interpreter.*row.list)().empty());
    }
    checkEmpty(interpreter);
}

TEST_CASE("of a message set that stands twice neither is read, and of two OFX neither") {
    const auto interpreter = interpreted(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>a</STMTTRNRS></BANKMSGSRSV1>"
        "<CREDITCARDMSGSRSV1><CCSTMTTRNRS><TRNUID>b</CCSTMTTRNRS></CREDITCARDMSGSRSV1>"
        "<BANKMSGSRSV1><STMTTRNRS><TRNUID>c</STMTTRNRS></BANKMSGSRSV1></OFX>");
    CHECK(uids(interpreter->allResponses()) == "[b]");
    CHECK(interpreted("<OFX><A><B>1</A></OFX><OFX><A><B>1</A></OFX>")->allResponses().empty());
}

TEST_CASE("a sign-on or profile that is made alone is kept as the last one") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    const auto signOn = interpreter.createResponseObjectForKey("SONRS", std::nullopt);
    const auto profile = interpreter.createResponseObjectForKey("PROFRS", std::nullopt);
    CHECK(interpreter.signOnResponse() == signOn);
    CHECK(interpreter.fiProfileResponse() == profile);
    CHECK(interpreter.allResponses().empty());
}

TEST_CASE("interpreting again begins anew") {
    TvOFXInterpreter interpreter =
        over(ofx("BANKMSGSRSV1",
                 ParseDictionary{{"STMTTRNRS", ParseDictionary{{"TRNUID", "u"}, {"STATUS", status("0")}}},
                                 {"SONRS", ParseDictionary()}}));
    CHECK(interpreter.interpret());
    const TvOFXResponseList first = interpreter.allResponses();
    CHECK(interpreter.interpret());
    REQUIRE(interpreter.allResponses().size() == 2);
    CHECK(interpreter.allResponses()[0] != first[0]);
    CHECK(interpreter.bankingMsgSetResponses().size() == 2);
    CHECK(interpreter.responsesForKey("STMTRS")->size() == 1);
    CHECK(interpreter.responsesForTransactionUID("u")->size() == 1);
}

TEST_CASE("an interpretation that finds no OFX forgets what was there before") {
    TvOFXInterpreter interpreter = over(ParseDictionary{{"QFX", ParseDictionary{{"A", "1"}}}});
    const auto response = interpreter.interpretResponseDict(
        ParseDictionary{{"TRNUID", "u"}, {"STATUS", status("0")}}, "PROFTRNRS");
    interpreter.addResponse(response, "BANKMSGSRSV1");
    CHECK_FALSE(interpreter.interpret());
    checkEmpty(interpreter);
}

TEST_CASE("a reset forgets results and keeps tree and helper") {
    TvOFXInterpreter interpreter =
        over(ofx("BANKMSGSRSV1",
                 ParseDictionary{{"STMTTRNRS", ParseDictionary{{"TRNUID", "u"}, {"STATUS", status("0")}}},
                                 {"SONRS", ParseDictionary()},
                                 {"PROFRS", ParseDictionary()}}));
    const auto helper = std::make_shared<TvOFXHelper>();
    interpreter.setHelperObject(helper);
    CHECK(interpreter.interpret());
    interpreter.reset();
    checkEmpty(interpreter);
    CHECK(interpreter.helperObject() == helper);
    CHECK(interpreter.interpret());
    CHECK(interpreter.allResponses().size() == 3);
}

TEST_CASE("only statements get the interpreter's helper") {
    const auto dates = std::make_shared<ScriptedDateFormatter>([](auto) { return utc(1999, 12, 31); });
    const auto helper = std::make_shared<TvOFXHelper>();
    helper->setDateFormatter(dates);
    for (const ClassRow& row : kClasses) {
        CAPTURE(row.name);
        TvOFXInterpreter interpreter = over(std::nullopt);
        interpreter.setHelperObject(helper);
        const auto response = interpreter.createResponseObjectForKey(
            row.name, ParseDictionary{{"DTSERVER", "x"}, {"DTPROFUP", "x"}, {"DTACCTUP", "x"}});
        const bool isStatement = std::string_view(row.className).ends_with("StatementResponse");
        CHECK((response->helperObject() == helper) == isStatement);
        CHECK((response->helperObject() == nullptr) == !isStatement);
    }
    CHECK(dates->asked().empty());
}

TEST_CASE("what an interpreter builds has version 0, whatever the document's") {
    for (const ClassRow& row : kClasses) {
        CAPTURE(row.name);
        TvOFXInterpreter interpreter(
            {ParseDictionary{{"VERSION", "211"}},
             ofx("ANYMSGSRSV1", ParseDictionary{{row.name, ParseDictionary{{"STATUS", status("0")}}}})});
        CHECK(interpreter.interpret());
        REQUIRE(interpreter.allResponses().size() == 1);
        const TvOFXResponse& response = *interpreter.allResponses().front();
        CHECK(response.ofxVersion() == 0);
        REQUIRE(response.status());
        CHECK(response.status()->ofxVersion() == 0);
    }
}

TEST_CASE("a response outlives its interpreter and its document") {
    std::shared_ptr<TvOFXResponse> response;
    {
        const auto interpreter = interpreted(
            "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>u<STATUS><CODE>0<SEVERITY>INFO</"
            "STATUS><STMTRS><CURDEF>EUR</STMTRS>"
            "</STMTTRNRS></BANKMSGSRSV1></OFX>");
        response = interpreter->allResponses().front();
    }
    CHECK(shown(response->transactionUID()) == "u");
    CHECK(shown(response->status()->severity()) == "INFO");
    CHECK(response->ofxString() == "<CURDEF>EUR\n");
}
