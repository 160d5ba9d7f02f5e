// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <random>

#include "support/documents.h"

/// \file
/// The statement of an account is looked up in a table. Here the answers are held against those of going
/// through all statements and comparing objects, while statements come, and read other accounts, in any
/// order.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Banks = std::vector<std::shared_ptr<TvOFXStatementResponse>>;
using Cards = std::vector<std::shared_ptr<TvOFXCCStatementResponse>>;
using Account = std::shared_ptr<const TvOFXAggregate>;

/// The first statement whose account is this very object.
std::shared_ptr<TvOFXStatementResponse> plainLookup(const Banks& statements, const Account& account) {
    const auto found = std::ranges::find_if(statements, [&](const auto& statement) {
        return account && statement->bankAccountFrom() == account;
    });
    return found == statements.end() ? nullptr : *found;
}

std::shared_ptr<TvOFXCCStatementResponse> plainLookup(const Cards& statements, const Account& account) {
    const auto found = std::ranges::find_if(statements, [&](const auto& statement) {
        return account && statement->creditCardAccountFrom() == account;
    });
    return found == statements.end() ? nullptr : *found;
}

template <class Statement>
std::vector<std::shared_ptr<Statement>> statementsIn(const TvOFXResponseList& responses) {
    std::vector<std::shared_ptr<Statement>> statements;
    for (const auto& response : responses)
        if (auto statement = std::dynamic_pointer_cast<Statement>(response))
            statements.push_back(std::move(statement));
    return statements;
}

/// Random statements, in which identifiers are few, so that many are the same, and often absent.
class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    bool once(std::size_t in) { return below(in) == 0; }

    std::string leaf(std::string_view name) {
        return once(3) ? "" : "<" + std::string(name) + ">" + std::to_string(below(3));
    }
    std::string account(std::string_view name) {
        if (once(5)) return "";
        return "<" + std::string(name) + "><X>1" + leaf("BANKID") + leaf("BRANCHID") + leaf("ACCTID") +
               leaf("ACCTKEY") + "<ACCTTYPE>" + (once(2) ? "CHECKING" : "CD") + "</" + std::string(name) +
               ">";
    }
    std::string bankStatement() {
        return "<STMTTRNRS><TRNUID>1" +
               (once(9) ? "" : "<STMTRS><CURDEF>EUR" + account("BANKACCTFROM") + "</STMTRS>") +
               "</STMTTRNRS>";
    }
    std::string cardStatement() {
        return "<CCSTMTTRNRS><TRNUID>1" +
               (once(9) ? "" : "<CCSTMTRS><CURDEF>EUR" + account("CCACCTFROM") + "</CCSTMTRS>") +
               "</CCSTMTTRNRS>";
    }
    std::string statements(bool banks) {
        std::string text = "<Y>1";  // without which an empty message set would hold the next one
        // Now and then one of the other kind, which the lookup by this kind must not find.
        for (std::size_t count = below(6); count > 0; --count)
            text += banks != once(5) ? bankStatement() : cardStatement();
        return text;
    }
    std::string document() {
        return "<OFX><BANKMSGSRSV1>" + statements(true) + "</BANKMSGSRSV1><CREDITCARDMSGSRSV1>" +
               statements(false) + "</CREDITCARDMSGSRSV1></OFX>";
    }
    /// An account of the application's own.
    Account madeAccount() {
        if (once(2)) return TvOFXCreditCardAccount::initWithAccountID(std::to_string(below(3)));
        return TvOFXBankAccount::initWithBankID("1", std::to_string(below(3)), TvOFXBankAccountTypeChecking);
    }
    /// Another account for a statement, or none, which leaves it the one that it has.
    template <class Statement>
    void readAgain(const std::vector<std::shared_ptr<Statement>>& statements, std::string_view element) {
        if (statements.empty()) return;
        statements[below(statements.size())]->parseDictionary(parsed(account(element)));
    }

private:
    std::mt19937 random_;
};

/// The accounts that somebody may ask for: those of now, of before, of other messages, and made ones.
struct Asked {
    std::vector<Account> all{nullptr};

    void note(const Banks& statements) {
        for (const auto& statement : statements) all.push_back(statement->bankAccountFrom());
    }
    void note(const Cards& statements) {
        for (const auto& statement : statements) all.push_back(statement->creditCardAccountFrom());
    }
};

void compare(const TvOFXMessage& message, const Banks& banks, const Cards& cards, const Asked& asked) {
    for (const Account& account : asked.all) {
        CHECK(message.statementsForBankAccount(account) == plainLookup(banks, account));
        CHECK(message.statementsForCreditCardAccount(account) == plainLookup(cards, account));
    }
}

}  // namespace

TEST_CASE("looking a statement up gives what going through all statements gives") {
    std::size_t found = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        CAPTURE(seed);
        Generator random(seed);
        const OpenedFile file = openData(Data::adopt(random.document()), OpenOptions::asIs());
        const auto other = imported(random.document());
        REQUIRE(file);
        const auto message = file.message();
        // A message does not hand out its card statements; those of the file are the same objects.
        const auto& interpreter = *file.documents().front().interpreter();
        const Banks banks = statementsIn<TvOFXStatementResponse>(interpreter.bankingMsgSetResponses());
        const Cards cards = statementsIn<TvOFXCCStatementResponse>(interpreter.creditCardMsgSetResponses());
        Asked asked;
        asked.note(statementsIn<TvOFXStatementResponse>(other->bankingMsgSet()));
        for (const auto& account : other->creditCardAccountsFound()) asked.all.push_back(account);
        for (int round = 0; round < 6; ++round) {
            asked.note(banks);
            asked.note(cards);
            asked.all.push_back(random.madeAccount());
            compare(*message, banks, cards, asked);
            random.readAgain(banks, "BANKACCTFROM");
            random.readAgain(cards, "CCACCTFROM");
        }
        found += message->bankAccountsFound().size() + message->creditCardAccountsFound().size();
    }
    CHECK(found > 500);
}

TEST_CASE("looking a statement up sees all documents that a message has taken") {
    for (unsigned seed = 0; seed < 100; ++seed) {
        CAPTURE(seed);
        Generator random(seed);
        TvOFXMessage message;
        Asked asked;
        for (int document = 0; document < 5; ++document) {
            message.processParserResult({{}, parsed(random.document())});
            const auto banks = statementsIn<TvOFXStatementResponse>(message.bankingMsgSet());
            asked.note(banks);
            for (const Account& account : asked.all)
                CHECK(message.statementsForBankAccount(account) == plainLookup(banks, account));
            for (const auto& account : message.creditCardAccountsFound()) {
                const auto statement = message.statementsForCreditCardAccount(account);
                REQUIRE(statement);
                CHECK(statement->creditCardAccountFrom() == account);
            }
            random.readAgain(banks, "BANKACCTFROM");
        }
    }
}

TEST_CASE("the account of a statement that is gone finds none, whatever has taken its place in memory") {
    const std::string document =
        "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS><BANKACCTFROM><ACCTID>1</BANKACCTFROM></STMTRS>"
        "</STMTTRNRS></BANKMSGSRSV1></OFX>";
    std::shared_ptr<TvOFXBankAccount> before;
    for (int i = 0; i < 20; ++i) {
        const auto message = imported(document);
        CHECK_FALSE(message->statementsForBankAccount(before));
        before = message->bankAccountsFound().front();
        CHECK(message->statementsForBankAccount(before));
    }
}
