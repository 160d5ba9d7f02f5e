// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include "statements/transaction_rows.h"
#include "support/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

bool equal(const ParseDictionary& a, const ParseDictionary& b) {
    const auto first = TvOFXStatementTransaction::initWithParserDict(a);
    const auto second = TvOFXStatementTransaction::initWithParserDict(b);
    const bool answer = first->isEqualOFXStatementTransaction(second.get());
    CHECK(second->isEqualOFXStatementTransaction(first.get()) == answer);
    return answer;
}

}  // namespace

TEST_CASE("no transaction is equal to none") {
    CHECK_FALSE(TvOFXStatementTransaction().isEqualOFXStatementTransaction(nullptr));
}

TEST_CASE("two transactions that share no field are equal") {
    CHECK(equal({}, {}));
    CHECK(equal({{"MEMO", "m"}}, {{"TRNAMT", "1"}}));
    CHECK(equal({{"MEMO", "m"}}, {}));
    CHECK(equal({{"FITID", "1"}}, {{"TRNAMT", "1"}, {"NAME", "n"}}));
}

TEST_CASE("equality of transactions is not transitive") {
    CHECK(equal({{"MEMO", "a"}}, {{"NAME", "n"}}));
    CHECK(equal({{"NAME", "n"}}, {{"MEMO", "b"}}));
    CHECK_FALSE(equal({{"MEMO", "a"}}, {{"MEMO", "b"}}));
}

TEST_CASE("amounts are compared as numbers") {
    CHECK(equal({{"TRNAMT", "1"}}, {{"TRNAMT", "1.00"}}));
    CHECK(equal({{"TRNAMT", "-1,000.50"}}, {{"TRNAMT", "-1000.5"}}));
    CHECK(equal({{"TRNAMT", "0"}}, {{"TRNAMT", "-0.00"}}));
    CHECK_FALSE(equal({{"TRNAMT", "1"}}, {{"TRNAMT", "-1"}}));
    CHECK_FALSE(equal({{"TRNAMT", "0.1"}}, {{"TRNAMT", "0.10000000000000000001"}}));
}

TEST_CASE("different amounts are unequal even when the identifiers agree") {
    CHECK_FALSE(equal({{"TRNAMT", "1"}, {"FITID", "x"}}, {{"TRNAMT", "2"}, {"FITID", "x"}}));
}

TEST_CASE("once the amounts agree the institution's identifiers alone decide") {
    CHECK(equal({{"TRNAMT", "1"}, {"FITID", "x"}, {"MEMO", "a"}, {"DTPOSTED", "20240101"}},
                {{"TRNAMT", "1"}, {"FITID", "x"}, {"MEMO", "b"}, {"DTPOSTED", "20240102"}}));
    CHECK_FALSE(equal({{"TRNAMT", "1"}, {"FITID", "x"}, {"MEMO", "a"}},
                      {{"TRNAMT", "1"}, {"FITID", "y"}, {"MEMO", "a"}}));
    CHECK_FALSE(equal({{"FITID", "x"}}, {{"FITID", "X"}}));
    CHECK(equal({{"FITID", ""}, {"MEMO", "a"}}, {{"FITID", ""}, {"MEMO", "b"}}));
    CHECK(equal({{"FITID", "x"}, {"MEMO", "a"}}, {{"FITID", "x"}, {"MEMO", "b"}, {"TRNAMT", "1"}}));
}

TEST_CASE("an identifier on one side alone decides nothing") {
    CHECK_FALSE(equal({{"FITID", "x"}, {"MEMO", "a"}}, {{"MEMO", "b"}}));
    CHECK(equal({{"FITID", "x"}, {"MEMO", "a"}}, {{"MEMO", "a"}}));
}

TEST_CASE("a date that differs makes transactions unequal, one that is missing does not") {
    for (const TransactionDate& row : kTransactionDates) {
        CAPTURE(row.element);
        CHECK(equal({{row.element, "20240101"}}, {{row.element, "20240101000000.000[-5:EST]"}}));
        CHECK_FALSE(equal({{row.element, "20240101000000"}}, {{row.element, "20240101000000.001"}}));
        CHECK(equal({{row.element, "20240101"}}, {{row.element, "no date"}}));
    }
}

TEST_CASE("posting dates are compared as moments, not as texts") {
    CHECK(equal({{"DTPOSTED", "20240101"}}, {{"DTPOSTED", "20240101000000"}}));
    CHECK(equal({{"DTPOSTED", "yesterday"}}, {{"DTPOSTED", "tomorrow"}}));
}

TEST_CASE("a text that differs makes transactions unequal, one that is missing does not") {
    for (const TransactionText& row : kTransactionTexts) {
        CAPTURE(row.element);
        CHECK(equal({{row.element, "a"}}, {{row.element, "a"}}));
        CHECK(equal({{row.element, "a"}, {"X", "1"}}, {{"X", "2"}}));
        CHECK(equal({{row.element, "a"}}, {{row.element, "A"}}) == !row.compared);
        // An empty text is there.
        CHECK(equal({{row.element, "a"}}, {{row.element, ""}}) == !row.compared);
    }
}

TEST_CASE("the source text takes no part in equality") {
    const ParseDictionary tree =
        parsed("<T><STMTTRN><NAME>A</STMTTRN><STMTTRN>  <NAME>A</NAME></STMTTRN></T>");
    const std::vector<ParseValue> two = at(tree, {"T"})["STMTTRN"].elements();
    REQUIRE(two.size() == 2);
    CHECK(two[0]["TVOFX_ORIGINAL_STRING"] != two[1]["TVOFX_ORIGINAL_STRING"]);
    CHECK(equal(*two[0].dictionary(), *two[1].dictionary()));
}

TEST_CASE("a payee or account that differs makes transactions unequal, one that is missing does not") {
    for (const TransactionParty& row : kTransactionParties) {
        CAPTURE(row.element);
        const ParseDictionary a{{row.text, "a"}};
        const ParseDictionary b{{row.text, "b"}};
        CHECK(equal({{row.element, a}}, {{row.element, a}}));
        CHECK_FALSE(equal({{row.element, a}}, {{row.element, b}}));
        CHECK(equal({{row.element, a}}, {}));
        CHECK(equal({{row.element, a}}, {{row.element, ParseDictionary()}}));
        for (const TransactionParty& other : kTransactionParties) {
            if (&other == &row) continue;
            CAPTURE(other.element);
            CHECK(equal({{row.element, a}}, {{other.element, ParseDictionary{{other.text, "b"}}}}));
        }
    }
}

TEST_CASE("transactions compare their payees and accounts by the rules of these") {
    CHECK_FALSE(equal({{"PAYEE", ParseDictionary{{"ADDR1", "a"}}}}, {{"PAYEE", ParseDictionary()}}));
    CHECK_FALSE(equal({{"BANKACCTTO", ParseDictionary{{"ACCTTYPE", "SAVINGS"}}}},
                      {{"BANKACCTTO", ParseDictionary()}}));
    CHECK(equal({{"CCACCTTO", ParseDictionary{{"ACCTID", "1"}, {"ACCTKEY", "k"}}}},
                {{"CCACCTTO", ParseDictionary{{"ACCTKEY", "k"}}}}));
}

TEST_CASE("neither node, version nor helper take part in the equality of transactions") {
    TvOFXStatementTransaction a;
    TvOFXStatementTransaction b;
    a.setOriginalParseData(ParseDictionary{{"MEMO", "a"}});
    b.setOriginalParseData(ParseDictionary{{"MEMO", "b"}});
    a.setOfxVersion(211);
    a.setHelperObject(TvOFXHelper::defaultHelper());
    CHECK(a.isEqualOFXStatementTransaction(&b));
}
