// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("an investment account has the broker and the number of its node") {
    const auto account = TvOFXInvestmentAccount::initWithParseDict(
        ParseDictionary{{"BROKERID", "thornbury.example"}, {"ACCTID", "77-1"}, {"OTHER", "x"}});
    CHECK(shown(account->brokerID().text()) == "thornbury.example");
    CHECK(shown(account->accountID().text()) == "77-1");
}

TEST_CASE("what an investment account's elements hold is kept whatever its kind") {
    const ParseDictionary aggregate{{"X", "1"}};
    const auto account = TvOFXInvestmentAccount::initWithParseDict(
        ParseDictionary{{"BROKERID", ParseValue::array({"a", "b"})}, {"ACCTID", aggregate}});
    CHECK(account->brokerID() == ParseValue::array({"a", "b"}));
    CHECK(account->accountID() == ParseValue(aggregate));
    CHECK(shown(account->brokerID().text()) == "nothing");
}

TEST_CASE("an element that an investment account lacks is nothing") {
    const auto account = TvOFXInvestmentAccount::initWithParseDict(ParseDictionary{{"brokerid", "1"}});
    CHECK(account->brokerID().isNothing());
    CHECK(account->accountID().isNothing());
}

TEST_CASE("the order of an investment account's elements carries no meaning") {
    const auto account =
        TvOFXInvestmentAccount::initWithParseDict(ParseDictionary{{"ACCTID", "77-1"}, {"BROKERID", "b"}});
    CHECK(shown(account->brokerID().text()) == "b");
    CHECK(shown(account->accountID().text()) == "77-1");
}

TEST_CASE("no node makes an empty investment account") {
    const auto account = TvOFXInvestmentAccount::initWithParseDict(std::nullopt);
    REQUIRE(account);
    CHECK(account->brokerID().isNothing());
    CHECK(account->accountID().isNothing());
    CHECK_FALSE(account->originalParseData());
}

TEST_CASE("an investment account keeps and renders its parse data") {
    const auto account =
        TvOFXInvestmentAccount::initWithParseDict(ParseDictionary{{"BROKERID", "b"}, {"ACCTID", "1"}});
    CHECK(account->ofxString() == "<BROKERID>b\n<ACCTID>1\n");
    CHECK(account->description() == account->ofxString());
}

TEST_CASE("the archive of an investment account is its parse data alone") {
    const ParseDictionary node{{"BROKERID", "b"}, {"ACCTID", "1"}};
    KeyedArchiver base;
    TvOFXAggregate(node).encodeWithCoder(base);
    KeyedArchiver coder;
    TvOFXInvestmentAccount::initWithParseDict(node)->encodeWithCoder(coder);
    CHECK(coder.archivedData() == base.archivedData());
}

TEST_CASE("an investment account outlives the document that it was read from") {
    std::shared_ptr<TvOFXInvestmentAccount> account;
    {
        const ParseDictionary tree = parsed("<I><BROKERID>b<ACCTID>1<ACCTID>2</I>");
        account = TvOFXInvestmentAccount::initWithParseDict(at(tree, {"I"}));
    }
    CHECK(shown(account->brokerID().text()) == "b");
    CHECK(account->accountID().elements().size() == 2);
}

TEST_CASE("an investment account names its class") {
    CHECK(TvOFXInvestmentAccount().className() == "TvOFXInvestmentAccount");
}
