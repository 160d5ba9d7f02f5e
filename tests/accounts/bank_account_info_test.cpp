// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "accounts/block_rules.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using BankInfo = TvOFXBankAccountInfo;

std::shared_ptr<BankInfo> bankInfoIn(const std::optional<ParseDictionary>& node) {
    return BankInfo::initWithParserDict(node);
}

}  // namespace

TEST_CASE("a bank block reads all its elements") {
    const auto info =
        bankInfoIn(parsed("<BANKACCTFROM><BANKID>121000248<BRANCHID>7<ACCTID>0001<ACCTTYPE>SAVINGS<ACCTKEY>K"
                          "</BANKACCTFROM><SUPTXDL>Y<XFERSRC>Y<XFERDEST>Y<SVCSTATUS>ACTIVE"));
    REQUIRE(info->bankAcctFrom());
    CHECK(shown(info->bankAcctFrom()->accountID()) == "0001");
    CHECK(info->supportsTransactionDownload());
    CHECK(info->isTransferSourceAccount());
    CHECK(info->isTransferDestinationAccount());
    CHECK(info->serviceStatus() == TvOFXServiceStatusActive);
}

TEST_CASE("a bank block answers with its account's fields") {
    const auto info =
        bankInfoIn(parsed("<BANKACCTFROM><BANKID>121000248<BRANCHID>7<ACCTID>0001<ACCTTYPE>SAVINGS<ACCTKEY>K"
                          "</BANKACCTFROM>"));
    CHECK(shown(info->bankID()) == "121000248");
    CHECK(shown(info->branchID()) == "7");
    CHECK(shown(info->accountID()) == "0001");
    CHECK(info->accountType() == TvOFXBankAccountTypeSavings);
    CHECK(shown(info->acctKeyChecksum()) == "K");
}

TEST_CASE("a bank block without elements or without a node has its defaults") {
    for (const auto& info :
         {std::make_shared<BankInfo>(), bankInfoIn(std::nullopt), bankInfoIn(ParseDictionary{}),
          bankInfoIn(ParseDictionary{{"suptxdl", "Y"}, {"OTHER", "Y"}})}) {
        CHECK_FALSE(info->bankAcctFrom());
        CHECK_FALSE(info->bankID());
        CHECK_FALSE(info->branchID());
        CHECK_FALSE(info->accountID());
        CHECK(info->accountType() == TvOFXBankAccountTypeUnknown);
        CHECK_FALSE(info->acctKeyChecksum());
        CHECK_FALSE(info->supportsTransactionDownload());
        CHECK_FALSE(info->isTransferSourceAccount());
        CHECK_FALSE(info->isTransferDestinationAccount());
        CHECK(info->serviceStatus() == TvOFXServiceStatusNone);
    }
}

TEST_CASE("a bank block's account that is no aggregate counts as missing") {
    const ParseDictionary account{{"ACCTID", "0001"}};
    CHECK_FALSE(bankInfoIn(ParseDictionary{{"BANKACCTFROM", "0001"}})->bankAcctFrom());
    CHECK_FALSE(
        bankInfoIn(ParseDictionary{{"BANKACCTFROM", ParseValue::array({account, account})}})->bankAcctFrom());
    CHECK(bankInfoIn(ParseDictionary{{"BANKACCTFROM", ParseDictionary{}}})->bankAcctFrom());
}

TEST_CASE("a bank block's flags are true exactly for Y") { checkBlockFlags<BankInfo>(); }

TEST_CASE("a bank block's status is read from exact words") { checkServiceStatus<BankInfo>(); }
