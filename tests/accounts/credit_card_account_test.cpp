// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using CardAccount = std::shared_ptr<TvOFXCreditCardAccount>;

CardAccount card(const ParseDictionary& node) { return TvOFXCreditCardAccount::initWithParseDict(node); }

CardAccount fullCard() { return card({{"ACCTID", "4999000011112222"}, {"ACCTKEY", "7F"}}); }

}  // namespace

TEST_CASE("a card account made from a number has only that") {
    const CardAccount account = TvOFXCreditCardAccount::initWithAccountID("4999");
    CHECK(shown(account->accountID()) == "4999");
    CHECK(shown(account->acctKeyChecksum()) == "nothing");
    CHECK_FALSE(account->originalParseData());
    CHECK(account->ofxString() == "");
}

TEST_CASE("a card account may be made without a number") {
    const CardAccount account = TvOFXCreditCardAccount::initWithAccountID(std::nullopt);
    REQUIRE(account);
    CHECK(shown(account->accountID()) == "nothing");
}

TEST_CASE("number and key of a card account are read as they stand") {
    const CardAccount account =
        card({{"ACCTID", " 49 "}, {"ACCTKEY", "k"}, {"ACCTTYPE", "CHECKING"}, {"X", "y"}});
    CHECK(shown(account->accountID()) == " 49 ");
    CHECK(shown(account->acctKeyChecksum()) == "k");
}

TEST_CASE("the order of a card account's elements carries no meaning") {
    const CardAccount account = card({{"ACCTKEY", "7F"}, {"ACCTID", "4999000011112222"}});
    CHECK(shown(account->accountID()) == "4999000011112222");
    CHECK(shown(account->acctKeyChecksum()) == "7F");
}

TEST_CASE("names of card account elements are compared exactly") {
    const CardAccount account = card({{"acctid", "1"}, {"ACCTKEY2", "2"}});
    CHECK(shown(account->accountID()) == "nothing");
    CHECK(shown(account->acctKeyChecksum()) == "nothing");
}

TEST_CASE("a value of another kind leaves a field of a card account empty") {
    const ParseDictionary aggregate{{"X", "1"}};
    for (const ParseValue& value :
         {ParseValue::array({"a", "b"}), ParseValue(aggregate), ParseValue(ParseDictionary())}) {
        const CardAccount account = card({{"ACCTID", value}, {"ACCTKEY", value}});
        CHECK(shown(account->accountID()) == "nothing");
        CHECK(shown(account->acctKeyChecksum()) == "nothing");
    }
}

TEST_CASE("no node makes an empty card account without parse data") {
    const CardAccount account = TvOFXCreditCardAccount::initWithParseDict(std::nullopt);
    REQUIRE(account);
    CHECK(shown(account->accountID()) == "nothing");
    CHECK_FALSE(account->originalParseData());
}

TEST_CASE("a card account keeps its parse data and renders it") {
    const CardAccount account = fullCard();
    REQUIRE(account->originalParseData());
    CHECK(shown((*account->originalParseData())["ACCTKEY"].text()) == "7F");
    CHECK(account->ofxString() == "<ACCTID>4999000011112222\n<ACCTKEY>7F\n");
    CHECK(account->description() == account->ofxString());
}

TEST_CASE("a card account without parse data describes itself by its class") {
    CHECK(TvOFXCreditCardAccount::initWithAccountID("1")->description().find("TvOFXCreditCardAccount") !=
          std::string::npos);
}

TEST_CASE("no card account is equal to none") {
    CHECK_FALSE(fullCard()->isEqualToOFXCreditCardAccount(nullptr));
}

TEST_CASE("card accounts are equal when no text differs that both have") {
    struct Row {
        std::string what;
        ParseDictionary a;
        ParseDictionary b;
        bool equal;
    };
    const std::vector<Row> rows{
        {"nothing at all", {}, {}, true},
        {"the same", {{"ACCTID", "1"}, {"ACCTKEY", "k"}}, {{"ACCTID", "1"}, {"ACCTKEY", "k"}}, true},
        {"another number", {{"ACCTID", "1"}}, {{"ACCTID", "2"}}, false},
        {"another key", {{"ACCTID", "1"}, {"ACCTKEY", "k"}}, {{"ACCTID", "1"}, {"ACCTKEY", "l"}}, false},
        {"the same key, another number",
         {{"ACCTID", "1"}, {"ACCTKEY", "k"}},
         {{"ACCTID", "2"}, {"ACCTKEY", "k"}},
         false},
        {"a key and no number beside the same key",
         {{"ACCTID", "1"}, {"ACCTKEY", "k"}},
         {{"ACCTKEY", "k"}},
         true},
        {"a key and no number beside another key",
         {{"ACCTID", "1"}, {"ACCTKEY", "k"}},
         {{"ACCTKEY", "l"}},
         false},
        {"a number beside a key", {{"ACCTID", "1"}}, {{"ACCTKEY", "k"}}, true},
        {"a number beside nothing", {{"ACCTID", "1"}}, {}, true},
        {"case differs", {{"ACCTID", "a"}}, {{"ACCTID", "A"}}, false},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(card(row.a)->isEqualToOFXCreditCardAccount(card(row.b).get()) == row.equal);
        CHECK(card(row.b)->isEqualToOFXCreditCardAccount(card(row.a).get()) == row.equal);
    }
}

TEST_CASE("the archive of a card account holds its parse data and its texts") {
    const auto archive = archived(*fullCard());
    REQUIRE(archive);
    CHECK(archive->contains("originalPD"));
    CHECK(shown(archive->decodeText("aID")) == "4999000011112222");
    CHECK(shown(archive->decodeText("aKC")) == "7F");
    KeyedArchiver expected;
    TvOFXAggregate(fullCard()->originalParseData()).encodeWithCoder(expected);
    expected.encodeText("aID", "4999000011112222");
    expected.encodeText("aKC", "7F");
    KeyedArchiver actual;
    fullCard()->encodeWithCoder(actual);
    CHECK(actual.archivedData() == expected.archivedData());
}

TEST_CASE("an archive without keys brings back an empty card account") {
    const CardAccount account = restored(TvOFXCreditCardAccount());
    REQUIRE(account);
    CHECK(shown(account->accountID()) == "nothing");
    CHECK(shown(account->acctKeyChecksum()) == "nothing");
    CHECK_FALSE(account->originalParseData());
}

TEST_CASE("the archive of a card account without key has no entry for it") {
    const auto archive = archived(*TvOFXCreditCardAccount::initWithAccountID("1"));
    REQUIRE(archive);
    CHECK_FALSE(archive->contains("originalPD"));
    CHECK_FALSE(archive->contains("aKC"));
    CHECK(archive->contains("aID"));
}

TEST_CASE("the archive of an empty card account is empty") {
    KeyedArchiver coder;
    TvOFXCreditCardAccount().encodeWithCoder(coder);
    CHECK(coder.archivedData() == KeyedArchiver().archivedData());
}

TEST_CASE("a card account comes back from its archive with its parse data") {
    const ParseDictionary node{{"ACCTID", "1"}, {"ACCTKEY", "k"}, {"MORE", ParseDictionary{{"A", "b"}}}};
    const CardAccount account = restored(*card(node));
    REQUIRE(account);
    CHECK(shown(account->accountID()) == "1");
    CHECK(shown(account->acctKeyChecksum()) == "k");
    REQUIRE(account->originalParseData());
    CHECK(*account->originalParseData() == node);
    CHECK(account->ofxString() == card(node)->ofxString());
}

TEST_CASE("a card account names its class") { CHECK(fullCard()->className() == "TvOFXCreditCardAccount"); }
