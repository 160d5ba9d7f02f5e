// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "accounts/block_rules.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using CardInfo = TvOFXCreditCardAccountInfo;

std::shared_ptr<CardInfo> cardInfoIn(const std::optional<ParseDictionary>& node) {
    return CardInfo::initWithParserDict(node);
}

}  // namespace

TEST_CASE("a card block reads all its elements") {
    const auto info = cardInfoIn(parsed(
        "<CCACCTFROM><ACCTID>4111<ACCTKEY>K</CCACCTFROM><SUPTXDL>Y<XFERSRC>Y<XFERDEST>Y<SVCSTATUS>PEND"));
    REQUIRE(info->creditCardAccountFrom());
    CHECK(shown(info->creditCardAccountFrom()->accountID()) == "4111");
    CHECK(shown(info->accountID()) == "4111");
    CHECK(shown(info->acctKeyChecksum()) == "K");
    CHECK(info->supportsTransactionDownload());
    CHECK(info->isTransferSourceAccount());
    CHECK(info->isTransferDestinationAccount());
    CHECK(info->serviceStatus() == TvOFXServiceStatusPending);
}

TEST_CASE("a card block without elements or without a node has its defaults") {
    for (const auto& info :
         {std::make_shared<CardInfo>(), cardInfoIn(std::nullopt), cardInfoIn(ParseDictionary{})}) {
        CHECK_FALSE(info->creditCardAccountFrom());
        CHECK_FALSE(info->accountID());
        CHECK_FALSE(info->acctKeyChecksum());
        CHECK_FALSE(info->supportsTransactionDownload());
        CHECK_FALSE(info->isTransferSourceAccount());
        CHECK_FALSE(info->isTransferDestinationAccount());
        CHECK(info->serviceStatus() == TvOFXServiceStatusNone);
    }
}

TEST_CASE("a card block's account that is no aggregate counts as missing") {
    const ParseDictionary account{{"ACCTID", "4111"}};
    CHECK_FALSE(cardInfoIn(ParseDictionary{{"CCACCTFROM", "4111"}})->creditCardAccountFrom());
    CHECK_FALSE(cardInfoIn(ParseDictionary{{"CCACCTFROM", ParseValue::array({account, account})}})
                    ->creditCardAccountFrom());
}

TEST_CASE("a card block's flags are true exactly for Y") { checkBlockFlags<CardInfo>(); }

TEST_CASE("a card block's status is read from exact words") { checkServiceStatus<CardInfo>(); }
