// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include "statements/transaction_rows.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXStatementTransaction> full() {
    ParseDictionaryBuilder node;
    for (const TransactionText& row : kTransactionTexts) node.leaf(row.element, std::string("t-") + row.key);
    node.leaf("DTPOSTED", "20240131120000.123");
    node.leaf("DTUSER", "19690101");
    node.leaf("DTAVAIL", "20240202235959");
    node.leaf("TRNAMT", "-12345678901234567890.0000000001");
    for (const TransactionParty& row : kTransactionParties)
        node.value(row.element, ParseDictionary{{row.text, std::string("p-") + row.key}});
    return TvOFXStatementTransaction::initWithParserDict(node.finish());
}

}  // namespace

TEST_CASE("the archive of a transaction has every field under its key") {
    const auto archive = archived(*full());
    REQUIRE(archive);
    for (const TransactionText& row : kTransactionTexts) {
        CAPTURE(row.key);
        CHECK(shown(archive->decodeText(row.key)) == std::string("t-") + row.key);
    }
    CHECK(shown(archive->decodeDate("dP")) == "2024-01-31 12:00:00.123");
    CHECK(shown(archive->decodeDate("dUI")) == "1969-01-01 00:00:00.000");
    CHECK(shown(archive->decodeDate("dFA")) == "2024-02-02 23:59:59.000");
    CHECK(shown(archive->decodeDecimal("at")) == "-12345678901234567890.0000000001");
    const auto payee = archive->decodeObject("pObj");
    REQUIRE(payee);
    CHECK(shown(payee->decodeText("name")) == "p-pObj");
    CHECK(payee->contains("originalPD"));
    const auto bank = archive->decodeObject("bAObj");
    REQUIRE(bank);
    CHECK(shown(bank->decodeText("aID")) == "p-bAObj");
    CHECK(bank->decodeUnsigned("aT") == 0);
    CHECK_FALSE(bank->contains("originalPD"));
    const auto card = archive->decodeObject("cCAObj");
    REQUIRE(card);
    CHECK(shown(card->decodeText("aID")) == "p-cCAObj");
    CHECK(card->contains("originalPD"));
    CHECK_FALSE(archive->contains("originalPD"));
}

TEST_CASE("the archive of an empty transaction is empty") {
    KeyedArchiver coder;
    TvOFXStatementTransaction().encodeWithCoder(coder);
    CHECK(coder.archivedData() == KeyedArchiver().archivedData());
}

TEST_CASE("a transaction archives only the fields that are there") {
    struct Row {
        ParseDictionary node;
        std::string key;
    };
    std::vector<Row> rows{{{{"TRNAMT", "1"}}, "at"}};
    for (const TransactionText& row : kTransactionTexts) rows.push_back({{{row.element, "x"}}, row.key});
    for (const TransactionDate& row : kTransactionDates)
        rows.push_back({{{row.element, "20240101"}}, row.key});
    for (const TransactionParty& row : kTransactionParties)
        rows.push_back({{{row.element, ParseDictionary()}}, row.key});
    for (const Row& row : rows) {
        CAPTURE(row.key);
        const auto archive = archived(*TvOFXStatementTransaction::initWithParserDict(row.node));
        REQUIRE(archive);
        for (const Row& other : rows)
            CHECK(archive->contains(other.key) == (std::string_view(other.key) == row.key));
    }
}

TEST_CASE("a transaction comes back from its archive with every keyed field") {
    const auto before = full();
    const auto back = restored(*before);
    REQUIRE(back);
    for (const TransactionText& row : kTransactionTexts) {
        CAPTURE(row.key);
        CHECK(shown((back.get()->*row.get)()) == shown((before.get()->*row.get)()));
    }
    for (const TransactionDate& row : kTransactionDates) {
        CAPTURE(row.key);
        CHECK(shown((back.get()->*row.get)()) == shown((before.get()->*row.get)()));
    }
    CHECK(back->amount() == before->amount());
    REQUIRE(back->payee());
    CHECK(shown(back->payee()->name()) == "p-pObj");
    REQUIRE(back->payee()->originalParseData());
    REQUIRE(back->bankAccountTo());
    CHECK(shown(back->bankAccountTo()->accountID()) == "p-bAObj");
    REQUIRE(back->creditCardAccountTo());
    CHECK(shown(back->creditCardAccountTo()->accountID()) == "p-cCAObj");
    CHECK(back->isEqualOFXStatementTransaction(before.get()));
    CHECK(back->description() == before->description());
}

TEST_CASE("an empty text of a transaction comes back empty, not absent") {
    for (const TransactionText& row : kTransactionTexts) {
        CAPTURE(row.key);
        const auto back =
            restored(*TvOFXStatementTransaction::initWithParserDict(ParseDictionary{{row.element, ""}}));
        REQUIRE(back);
        CHECK(shown((back.get()->*row.get)()) == "");
    }
}

TEST_CASE("a payee or an account alone comes back from the archive of a transaction") {
    for (const TransactionParty& row : kTransactionParties) {
        CAPTURE(row.element);
        const ParseDictionary node{{row.element, ParseDictionary{{row.text, "p"}}}};
        const auto back = restored(*TvOFXStatementTransaction::initWithParserDict(node));
        REQUIRE(back);
        CHECK((back->payee() != nullptr) == (row.element == "PAYEE"));
        CHECK((back->bankAccountTo() != nullptr) == (row.element == "BANKACCTTO"));
        CHECK((back->creditCardAccountTo() != nullptr) == (row.element == "CCACCTTO"));
    }
}

TEST_CASE("an archive brings back neither the text of the posting date nor what the base holds") {
    const auto before = full();
    before->setOfxVersion(211);
    before->setHelperObject(TvOFXHelper::defaultHelper());
    const auto back = restored(*before);
    REQUIRE(back);
    CHECK(shown(before->originalDatePostedString()) == "20240131120000.123");
    CHECK(shown(back->originalDatePostedString()) == "nothing");
    CHECK_FALSE(back->originalParseData());
    CHECK(back->ofxVersion() == 0);
    CHECK_FALSE(back->helperObject());
}

TEST_CASE("a transaction does not read parse data from an archive that has some") {
    KeyedArchiver coder;
    TvOFXAggregate(ParseDictionary{{"NAME", "n"}}).encodeWithCoder(coder);
    const auto archive = KeyedUnarchiver::open(coder.archivedData());
    REQUIRE(archive);
    REQUIRE(TvOFXAggregate::initWithCoder(*archive)->originalParseData());
    const auto back = TvOFXStatementTransaction::initWithCoder(*archive);
    CHECK_FALSE(back->originalParseData());
    CHECK(shown(back->payeeName()) == "nothing");
}

TEST_CASE("an archive of a transaction's archive is the same archive") {
    KeyedArchiver once;
    full()->encodeWithCoder(once);
    KeyedArchiver twice;
    restored(*full())->encodeWithCoder(twice);
    CHECK(once.archivedData() == twice.archivedData());
}

TEST_CASE("a missing key, or a value of another kind under it, leaves a field of a transaction empty") {
    KeyedArchiver coder;
    coder.encodeUnsigned("type", 1);
    coder.encodeText("dP", "20240101");
    coder.encodeText("at", "1");
    coder.encodeText("pObj", "payee");
    coder.encodeText("memo", "m");
    const auto archive = KeyedUnarchiver::open(coder.archivedData());
    REQUIRE(archive);
    const auto back = TvOFXStatementTransaction::initWithCoder(*archive);
    CHECK(shown(back->transactionType()) == "nothing");
    CHECK(shown(back->datePosted()) == "nothing");
    CHECK(shown(back->amount()) == "nothing");
    CHECK_FALSE(back->payee());
    CHECK_FALSE(back->bankAccountTo());
    CHECK(shown(back->memo()) == "m");
}

TEST_CASE("a transaction from an archive outlives the archive") {
    std::shared_ptr<TvOFXStatementTransaction> back;
    {
        const auto archive = archived(*full());
        REQUIRE(archive);
        back = TvOFXStatementTransaction::initWithCoder(*archive);
    }
    CHECK(shown(back->memo()) == "t-memo");
    CHECK(shown(back->payee()->name()) == "p-pObj");
}
