// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "support/documents.h"

/// \file
/// Equality, order and hash of account identifiers, beside the prescribed comparison, which is not
/// transitive.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Bank = std::shared_ptr<TvOFXBankAccount>;
using Card = std::shared_ptr<TvOFXCreditCardAccount>;
using Investment = std::shared_ptr<TvOFXInvestmentAccount>;

Bank bank(std::string_view content) { return TvOFXBankAccount::initWithParserDict(parsed(content)); }
Card card(std::string_view content) { return TvOFXCreditCardAccount::initWithParseDict(parsed(content)); }
Investment investment(std::string_view content) {
    return TvOFXInvestmentAccount::initWithParseDict(parsed(content));
}

/// Accounts in ascending order, no two of them equal.
const std::vector<std::string> kBanks{
    "",
    "<ACCTTYPE>CHECKING",
    "<ACCTID>1",
    "<ACCTID>1<ACCTKEY>1",
    "<ACCTID>1<ACCTTYPE>SAVINGS",
    "<ACCTID>2",
    "<BRANCHID>1",
    "<BRANCHID>1<ACCTID>1",
    "<BANKID>1",
    "<BANKID>1<ACCTID>1<ACCTTYPE>CHECKING",
    "<BANKID>1<ACCTID>1<ACCTTYPE>CHECKING<ACCTKEY>1",
    "<BANKID>1<BRANCHID>1",
    "<BANKID>10",
    "<BANKID>2",
};
const std::vector<std::string> kCards{
    "", "<ACCTKEY>1", "<ACCTKEY>2", "<ACCTID>1", "<ACCTID>1<ACCTKEY>1", "<ACCTID>10", "<ACCTID>2"};
const std::vector<std::string> kInvestments{
    "", "<ACCTID>1", "<ACCTID>2", "<BROKERID>1", "<BROKERID>1<ACCTID>1", "<BROKERID>2"};

/// Each row is made twice, so that equal accounts are distinct objects.
template <class Make>
void checkOrder(const std::vector<std::string>& rows, Make make) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < rows.size(); ++j) {
            CAPTURE(rows[i]);
            CAPTURE(rows[j]);
            const auto a = make(rows[i]);
            const auto b = make(rows[j]);
            CHECK((*a <=> *b) == (i <=> j));
            CHECK((*a == *b) == (i == j));
            CHECK((*a < *b) == (i < j));
            CHECK(AccountLess()(a, b) == (i < j));
            CHECK(AccountEqual()(a, b) == (i == j));
            // Different hashes are not promised, but here nothing is the same by chance.
            CHECK((AccountHash()(a) == AccountHash()(b)) == (i == j));
        }
}

}  // namespace

TEST_CASE("bank accounts are ordered by bank, branch, number, type and key, and absent comes first") {
    checkOrder(kBanks, bank);
}

TEST_CASE("card accounts are ordered by number and key, and absent comes first") { checkOrder(kCards, card); }

TEST_CASE("investment accounts are ordered by broker and number, and absent comes first") {
    checkOrder(kInvestments, investment);
}

TEST_CASE("an empty text is not an absent one") {
    const auto absent = TvOFXBankAccount::initWithBankID(std::nullopt, "1", TvOFXBankAccountTypeChecking);
    const auto empty = TvOFXBankAccount::initWithBankID("", "1", TvOFXBankAccountTypeChecking);
    CHECK(*absent < *empty);
    CHECK(AccountHash()(absent) != AccountHash()(empty));
}

TEST_CASE("accounts that the prescribed comparison takes for the same are different when one says more") {
    const auto some = bank("<ACCTID>1<ACCTTYPE>CHECKING");
    const auto more = bank("<BANKID>7<ACCTID>1<ACCTTYPE>CHECKING");
    CHECK(some->isEqualToOFXBankAccount(more.get()));
    CHECK(*some != *more);
    const auto number = card("<ACCTID>1");
    const auto key = card("<ACCTID>1<ACCTKEY>2");
    CHECK(number->isEqualToOFXCreditCardAccount(key.get()));
    CHECK(*number != *key);
}

TEST_CASE("what was set counts like what was read") {
    const auto read = bank("<BANKID>7<ACCTID>1<ACCTTYPE>CHECKING");
    const auto made = TvOFXBankAccount::initWithBankID("7", "1", TvOFXBankAccountTypeChecking);
    CHECK(*read == *made);
    CHECK(AccountHash()(read) == AccountHash()(made));
    made->setBranchID("3");
    CHECK(*read < *made);
}

TEST_CASE("fields of an investment account that are no texts count as absent") {
    CHECK(*investment("<BROKERID><X>1</BROKERID><ACCTID>1") == *investment("<ACCTID>1"));
    CHECK(*investment("<ACCTID>1<ACCTID>2") == *investment(""));
}

TEST_CASE("accounts are keys of the standard containers") {
    const auto first = bank("<ACCTID>1");
    const auto second = bank("<ACCTID>2");
    const auto again = bank("<ACCTID>1");

    std::map<Bank, int, AccountLess> ordered{{first, 1}, {second, 2}};
    ordered[again] += 10;
    CHECK(ordered.size() == 2);
    CHECK(ordered.at(first) == 11);
    CHECK(ordered.begin()->first == first);

    std::unordered_map<Bank, int, AccountHash, AccountEqual> hashed{{second, 2}, {first, 1}};
    hashed[again] += 10;
    CHECK(hashed.size() == 2);
    CHECK(hashed.at(first) == 11);

    // Looked up by another kind of pointer, nothing is copied.
    const std::shared_ptr<const TvOFXBankAccount> constant = again;
    CHECK(ordered.contains(constant));
    CHECK(ordered.contains(again.get()));
    CHECK(hashed.find(constant) != hashed.end());
    CHECK(std::hash<TvOFXBankAccount>()(*first) == AccountHash()(again));

    std::vector<Bank> list{second, nullptr, first};
    std::ranges::sort(list, AccountLess());
    CHECK(list == std::vector<Bank>{nullptr, first, second});
}

TEST_CASE("null is a key like others, before all accounts") {
    const Card none;
    const auto one = card("");
    CHECK(AccountLess()(none, one));
    CHECK_FALSE(AccountLess()(one, none));
    CHECK_FALSE(AccountLess()(none, none));
    CHECK(AccountEqual()(none, none));
    CHECK_FALSE(AccountEqual()(none, one));
    std::unordered_set<Card, AccountHash, AccountEqual> cards{none, one, nullptr, card("")};
    CHECK(cards.size() == 2);
}
