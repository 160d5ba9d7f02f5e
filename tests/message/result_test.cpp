// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include "support/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// A response whose status has these elements.
std::shared_ptr<TvOFXResponse> response(const std::string& status) {
    return TvOFXResponse::initWithParseDict(parsed("<STATUS>" + status + "</STATUS>"));
}

std::vector<std::string> messagesOf(const TvOFXResult& result) {
    std::vector<std::string> messages;
    for (const auto& message : result.allFIMessages()) messages.push_back(message->message());
    return messages;
}

template <class Statement>
std::shared_ptr<Statement> statement(std::string_view node) {
    auto made = std::make_shared<Statement>();
    made->parseDictionary(parsed(node));
    return made;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST_CASE("a result turns statuses with a text into messages, but not errors") {
    const auto result = TvOFXResult::initWithResultObjects({response("<CODE>0<SEVERITY>INFO<MESSAGE>A"),
                                                            response("<CODE>2000<SEVERITY>ERROR<MESSAGE>B"),
                                                            response("<CODE>1<SEVERITY>WARN<MESSAGE>C")});
    CHECK(messagesOf(*result) == Texts{"[INFO] A", "[WARN] C"});
}

TEST_CASE("a result compares the severity of errors exactly, and never looks at codes") {
    const auto result = TvOFXResult::initWithResultObjects(
        {response("<CODE>2000<SEVERITY>error<MESSAGE>A"), response("<CODE>2000<SEVERITY>INFO<MESSAGE>B"),
         response("<CODE>0<SEVERITY>ERROR<MESSAGE>C"), response("<CODE>0<SEVERITY>ERRORS<MESSAGE>D")});
    CHECK(messagesOf(*result) == Texts{"[error] A", "[INFO] B", "[ERRORS] D"});
}

TEST_CASE("a result makes no message of a response without a status or a status without a text") {
    const auto result = TvOFXResult::initWithResultObjects(
        {response("<CODE>0<SEVERITY>INFO"), response("<CODE>0<SEVERITY>INFO<MESSAGE></MESSAGE>"),
         response("<MESSAGE>without code and severity"), std::make_shared<TvOFXResponse>(), nullptr});
    CHECK(result->allFIMessages().empty());
    CHECK(result->allResponses().size() == 5);
}

TEST_CASE("making the messages again appends them a second time") {
    const auto result = TvOFXResult::initWithResultObjects(
        {response("<CODE>0<SEVERITY>INFO<MESSAGE>A"), response("<CODE>0<SEVERITY>INFO<MESSAGE>B")});
    result->createMessagesArrayFromStatusObjects();
    CHECK(messagesOf(*result) == Texts{"[INFO] A", "[INFO] B", "[INFO] A", "[INFO] B"});
}

TEST_CASE("a result keeps the responses in their order") {
    const auto a = std::make_shared<TvOFXResponse>();
    const auto b = std::make_shared<TvOFXResponse>();
    const auto result = TvOFXResult::initWithResultObjects({a, b, a});
    CHECK(result->allResponses() == TvOFXResponseList{a, b, a});
}

TEST_CASE("the balance is the first bank statement, whatever stands before it") {
    const auto card = statement<TvOFXCCStatementResponse>("<CURDEF>USD");
    const auto first = statement<TvOFXStatementResponse>("<CURDEF>USD");
    const auto second = statement<TvOFXStatementResponse>("<CURDEF>EUR");
    const auto result =
        TvOFXResult::initWithResultObjects({std::make_shared<TvOFXResponse>(), nullptr, card, first, second});
    CHECK(result->balance() == first);
}

TEST_CASE("a card statement is never the balance") {
    // Intended, also when it is the only statement.
    const auto card =
        statement<TvOFXCCStatementResponse>("<BANKTRANLIST><STMTTRN><FITID>1</STMTTRN></BANKTRANLIST>");
    const auto result = TvOFXResult::initWithResultObjects({card});
    CHECK_FALSE(result->balance());
    CHECK(result->transactions() == nullptr);
}

TEST_CASE("the transactions are those of the balance as they stand") {
    const auto bank = statement<TvOFXStatementResponse>(
        "<BANKTRANLIST><STMTTRN><FITID>2<DTPOSTED>20240201</STMTTRN>"
        "<STMTTRN><FITID>1<DTPOSTED>20240101</STMTTRN></BANKTRANLIST>");
    const auto result = TvOFXResult::initWithResultObjects({bank});
    REQUIRE(result->transactions() == &bank->statementTransactions());
    REQUIRE(result->transactions()->size() == 2);
    CHECK(result->transactions()->front()->fiTransactionID() == "2");
    const auto empty = TvOFXResult::initWithResultObjects({statement<TvOFXStatementResponse>("<CURDEF>USD")});
    REQUIRE(empty->transactions());
    CHECK(empty->transactions()->empty());
}

TEST_CASE("a result of no responses has nothing") {
    const auto result = TvOFXResult::initWithResultObjects({});
    CHECK(result->allResponses().empty());
    CHECK(result->allFIMessages().empty());
    CHECK_FALSE(result->balance());
    CHECK(result->transactions() == nullptr);
}

TEST_CASE("a result keeps the message that an application gives it") {
    const auto result = TvOFXResult::initWithResultObjects({});
    CHECK_FALSE(result->originalMessage());
    const auto message = std::make_shared<TvOFXMessage>();
    result->setOriginalMessage(message);
    CHECK(result->originalMessage() == message);
    CHECK(result->allResponses().empty());
}
