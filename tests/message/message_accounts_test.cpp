// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::string bank(const char* account) {
    return std::string("<STMTTRNRS><TRNUID>1<STMTRS><BANKACCTFROM><ACCTID>") + account +
           "<ACCTTYPE>CHECKING</BANKACCTFROM></STMTRS></STMTTRNRS>";
}

std::string card(const char* account) {
    return std::string("<CCSTMTTRNRS><TRNUID>1<CCSTMTRS><CCACCTFROM><ACCTID>") + account +
           "</CCACCTFROM></CCSTMTRS></CCSTMTTRNRS>";
}

std::string ofx(const std::string& banks, const std::string& cards = "<A>1") {
    return "<OFX><CREDITCARDMSGSRSV1>" + cards + "</CREDITCARDMSGSRSV1><BANKMSGSRSV1>" + banks +
           "</BANKMSGSRSV1></OFX>";
}

void process(TvOFXMessage& message, const std::string& body) {
    message.processParserResult({{}, parsed(body)});
}

template <class Account>
std::string ids(const std::vector<std::shared_ptr<Account>>& accounts) {
    std::string text;
    for (const auto& account : accounts) text.append("[").append(shown(account->accountID())).append("]");
    return text;
}

}  // namespace

TEST_CASE("the accounts found are the bank accounts and then the card accounts") {
    const auto message = imported(ofx(bank("b1") + bank("b2"), card("c1") + card("c2")));
    const auto banks = message->bankAccountsFound();
    const auto cards = message->creditCardAccountsFound();
    CHECK(ids(banks) == "[b1][b2]");
    CHECK(ids(cards) == "[c1][c2]");
    REQUIRE(message->accountsFound().size() == 4);
    CHECK(message->accountsFound()[0] == banks[0]);
    CHECK(message->accountsFound()[1] == banks[1]);
    CHECK(message->accountsFound()[2] == cards[0]);
    CHECK(message->accountsFound()[3] == cards[1]);
}

TEST_CASE("each account found is the object that its statement holds") {
    const auto message = imported(ofx(bank("b1")));
    const auto statement =
        std::dynamic_pointer_cast<TvOFXStatementResponse>(message->bankingMsgSet().front());
    REQUIRE(statement);
    CHECK(message->bankAccountsFound().front() == statement->bankAccountFrom());
    CHECK(message->statementsForBankAccount(message->bankAccountsFound().front()) == statement);
}

TEST_CASE("an account with two statements is found twice, each time with its own statement") {
    const auto message = imported(ofx(bank("same") + bank("same"), card("same") + card("same")));
    const auto banks = message->bankAccountsFound();
    REQUIRE(ids(banks) == "[same][same]");
    CHECK(banks[0] != banks[1]);
    CHECK(banks[0]->isEqualToOFXBankAccount(banks[1].get()));
    CHECK(message->statementsForBankAccount(banks[1]) == message->bankingMsgSet()[1]);
    CHECK(message->statementsForBankAccount(banks[0]) == message->bankingMsgSet()[0]);
    const auto cards = message->creditCardAccountsFound();
    REQUIRE(cards.size() == 2);
    CHECK(message->statementsForCreditCardAccount(cards[0]) !=
          message->statementsForCreditCardAccount(cards[1]));
    CHECK(message->statementsForCreditCardAccount(cards[1])->creditCardAccountFrom() == cards[1]);
}

TEST_CASE("an equal account that was made elsewhere finds no statement") {
    const auto message = imported(ofx(bank("b1"), card("c1")));
    const auto equalBank = TvOFXBankAccount::initWithBankID({}, "b1", TvOFXBankAccountTypeChecking);
    CHECK(message->bankAccountsFound().front()->isEqualToOFXBankAccount(equalBank.get()));
    CHECK_FALSE(message->statementsForBankAccount(equalBank));
    CHECK_FALSE(message->statementsForCreditCardAccount(TvOFXCreditCardAccount::initWithAccountID("c1")));
    const auto other = imported(ofx(bank("b1"), card("c1")));
    CHECK_FALSE(message->statementsForBankAccount(other->bankAccountsFound().front()));
}

TEST_CASE("an account finds statements of its own kind only, and no account finds none") {
    const auto message = imported(ofx(bank("b1"), card("c1")));
    CHECK_FALSE(message->statementsForBankAccount(message->creditCardAccountsFound().front()));
    CHECK_FALSE(message->statementsForCreditCardAccount(message->bankAccountsFound().front()));
    CHECK_FALSE(message->statementsForBankAccount(nullptr));
    CHECK_FALSE(message->statementsForCreditCardAccount(nullptr));
    CHECK_FALSE(TvOFXMessage().statementsForBankAccount(message->bankAccountsFound().front()));
}

TEST_CASE("no account is not the account of a statement that has none") {
    const auto message = imported("<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1</STMTTRNRS></BANKMSGSRSV1></OFX>");
    REQUIRE(message->bankingMsgSet().size() == 1);
    CHECK_FALSE(message->statementsForBankAccount(nullptr));
}

TEST_CASE("a statement without an account contributes none") {
    const auto message =
        imported(ofx("<STMTTRNRS><TRNUID>1<STMTRS><CURDEF>EUR</STMTRS></STMTTRNRS>" + bank("b2"),
                     "<CCSTMTTRNRS><TRNUID>1<CCSTMTRS><BANKACCTFROM><ACCTID>x</BANKACCTFROM>"
                     "</CCSTMTRS></CCSTMTTRNRS>"));
    CHECK(ids(message->bankAccountsFound()) == "[b2]");
    CHECK(message->creditCardAccountsFound().empty());
    CHECK(message->accountsFound().size() == 1);
}

TEST_CASE("a statement counts in the message set where it belongs only") {
    const auto message =
        imported("<OFX><BANKMSGSRSV1>" + card("c1") + "</BANKMSGSRSV1><CREDITCARDMSGSRSV1>" + bank("b1") +
                 "</CREDITCARDMSGSRSV1><OTHERMSGSRSV1>" + bank("b2") + "</OTHERMSGSRSV1></OFX>");
    CHECK(message->bankAccountsFound().empty());
    CHECK(message->creditCardAccountsFound().empty());
    CHECK(message->accountsFound().empty());
}

TEST_CASE("account information of a document is not carried into the message") {
    const auto message = imported(
        "<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>1<ACCTINFORS><DTACCTUP>20240101<ACCTINFO><DESC>Mine<"
        "BANKACCTINFO>"
        "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM><SUPTXDL>Y</BANKACCTINFO></"
        "ACCTINFO>"
        "</ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1></OFX>");
    CHECK(message->bankAccountsFound().empty());
    CHECK(message->creditCardAccountsFound().empty());
    CHECK(message->accountsFound().empty());
}

TEST_CASE("the accounts found are made on the first call and kept") {
    TvOFXMessage message;
    CHECK(message.accountsFound().empty());
    process(message, ofx(bank("b1")));
    CHECK(message.accountsFound().empty());
    CHECK(ids(message.bankAccountsFound()) == "[b1]");

    TvOFXMessage other;
    process(other, ofx(bank("b1")));
    CHECK(other.accountsFound().size() == 1);
    process(other, ofx(bank("b2"), card("c1")));
    CHECK(other.accountsFound().size() == 1);
    CHECK(&other.accountsFound() == &other.accountsFound());
    CHECK(ids(other.bankAccountsFound()) == "[b1][b2]");
    CHECK(ids(other.creditCardAccountsFound()) == "[c1]");
}

TEST_CASE("a constant message tells its accounts without keeping them") {
    TvOFXMessage message;
    const TvOFXMessage& constant = message;
    CHECK(constant.accountsFound().empty());
    process(message, ofx(bank("b1"), card("c1")));
    REQUIRE(constant.accountsFound().size() == 2);
    CHECK(constant.accountsFound()[0] == message.bankAccountsFound()[0]);
    CHECK(constant.accountsFound()[1] == message.creditCardAccountsFound()[0]);
    process(message, ofx(bank("b2")));
    CHECK(constant.accountsFound().size() == 3);
    // From the first call on that keeps the list, both give that one.
    CHECK(message.accountsFound() == constant.accountsFound());
    process(message, ofx(bank("b3")));
    CHECK(constant.accountsFound().size() == 3);
}

TEST_CASE("a list of accounts is the caller's own") {
    const auto message = imported(ofx(bank("b1")));
    auto banks = message->bankAccountsFound();
    banks.clear();
    CHECK(message->bankAccountsFound().size() == 1);
    auto accounts = message->accountsFound();
    accounts.clear();
    CHECK(message->accountsFound().size() == 1);
}

TEST_CASE("a second document appends its accounts") {
    TvOFXMessage message;
    process(message, ofx(bank("b1"), card("c1")));
    const auto cards = message.creditCardAccountsFound();
    process(message, ofx(bank("b1"), card("c1")));
    CHECK(ids(message.bankAccountsFound()) == "[b1][b1]");
    REQUIRE(ids(message.creditCardAccountsFound()) == "[c1][c1]");
    CHECK(message.creditCardAccountsFound()[0] == cards[0]);
    CHECK(message.creditCardAccountsFound()[1] != cards[0]);
    CHECK(message.accountsFound().size() == 4);
}

TEST_CASE("an account outlives its message") {
    std::shared_ptr<TvOFXBankAccount> account;
    { account = imported(ofx(bank("b1")))->bankAccountsFound().front(); }
    CHECK(shown(account->accountID()) == "b1");
}

TEST_CASE("the accounts found stand in the order of their statements' names, not in that of the document") {
    const auto message = imported(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKACCTFROM><ACCTID>1</BANKACCTFROM></STMTRS></STMTTRNRS>"
        "<STMTRS><BANKACCTFROM><ACCTID>2</BANKACCTFROM></STMTRS>"
        "<STMTTRNRS><STMTRS><BANKACCTFROM><ACCTID>3</BANKACCTFROM></STMTRS></STMTTRNRS></BANKMSGSRSV1></"
        "OFX>");
    std::string found;
    for (const auto& account : message->bankAccountsFound()) found.append(account->accountID().value_or("?"));
    CHECK(found == "132");
}
