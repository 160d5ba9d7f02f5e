// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXAccount> accountOf(std::string_view record) {
    return TvOFXAccount::initWithAccountInfos(TvOFXAccountInfo::initWithParserDict(parsed(record)));
}

/// All that comes from the blocks of the record.
void checkNoBlocks(const TvOFXAccount& account) {
    CHECK_FALSE(account.bankAccount());
    CHECK(account.bankingServiceStatus() == 0);
    CHECK_FALSE(account.supportsTransactionDownload());
    CHECK_FALSE(account.isTransferSourceAccount());
    CHECK_FALSE(account.isTransferDestinationAccount());
    CHECK_FALSE(account.bankingBankID());
    CHECK_FALSE(account.bankingBranchID());
    CHECK_FALSE(account.bankingAccountID());
    CHECK_FALSE(account.bankingAcctKeyChecksum());
    CHECK(account.bankingAccountType() == 0);
    CHECK(account.creditCardServiceStatus() == 0);
    CHECK(account.paymentsServiceStatus() == 0);
    CHECK(account.investmentServiceStatus() == 0);
}

}  // namespace

TEST_CASE("the numbers of statuses and types are those of their enumerations") {
    CHECK(std::is_same_v<decltype(&TvOFXAccount::bankingAccountType),
                         TvOFXBankAccountType (TvOFXAccount::*)() const noexcept>);
    for (const auto status : {&TvOFXAccount::serviceStatus, &TvOFXAccount::bankingServiceStatus,
                              &TvOFXAccount::creditCardServiceStatus, &TvOFXAccount::paymentsServiceStatus,
                              &TvOFXAccount::investmentServiceStatus}) {
        const std::uint64_t number = (*accountOf("<DESC>x").*status)();  // as before
        CHECK(number == TvOFXServiceStatusNone);
    }
}

TEST_CASE("there is no flat account without a record") {
    CHECK_FALSE(TvOFXAccount::initWithAccountInfos(nullptr));
}

TEST_CASE("a flat account answers with the fields of its record and of the record's bank block") {
    const auto record = TvOFXAccountInfo::initWithParserDict(
        parsed("<DESC>Checking<PHONE>555<SVCSTATUS>PEND<BANKACCTINFO><BANKACCTFROM><BANKID>121000248"
               "<BRANCHID>7<ACCTID>0001<ACCTTYPE>MONEYMARKET<ACCTKEY>K</BANKACCTFROM><SUPTXDL>Y<XFERSRC>Y"
               "<XFERDEST>Y<SVCSTATUS>ACTIVE</BANKACCTINFO>"));
    const auto account = TvOFXAccount::initWithAccountInfos(record);
    REQUIRE(account);
    CHECK(account->ofxAccountInfo() == record);
    CHECK(account->serviceStatus() == TvOFXServiceStatusPending);
    CHECK(shown(account->accountDescription()) == "Checking");
    CHECK(shown(account->accountPhone()) == "555");
    CHECK(account->bankAccount() == record->bankAccountInfo()->bankAcctFrom());
    CHECK(account->bankingServiceStatus() == TvOFXServiceStatusActive);
    CHECK(account->supportsTransactionDownload());
    CHECK(account->isTransferSourceAccount());
    CHECK(account->isTransferDestinationAccount());
    CHECK(shown(account->bankingBankID()) == "121000248");
    CHECK(shown(account->bankingBranchID()) == "7");
    CHECK(shown(account->bankingAccountID()) == "0001");
    CHECK(shown(account->bankingAcctKeyChecksum()) == "K");
    CHECK(account->bankingAccountType() == TvOFXBankAccountTypeMoneyMarket);
    CHECK(account->creditCardServiceStatus() == 0);
    CHECK(account->paymentsServiceStatus() == 0);
    CHECK(account->investmentServiceStatus() == 0);
}

TEST_CASE("each flag of a flat account is its own") {
    struct Row {
        const char* element;
        bool (TvOFXAccount::*get)() const noexcept;
    };
    const std::array<Row, 3> rows{{{"SUPTXDL", &TvOFXAccount::supportsTransactionDownload},
                                   {"XFERSRC", &TvOFXAccount::isTransferSourceAccount},
                                   {"XFERDEST", &TvOFXAccount::isTransferDestinationAccount}}};
    for (const Row& row : rows) {
        CAPTURE(row.element);
        const auto account = accountOf("<BANKACCTINFO><" + std::string(row.element) + ">Y</BANKACCTINFO>");
        for (const Row& other : rows) CHECK(((*account).*other.get)() == (row.element == other.element));
    }
}

TEST_CASE("a flat account without a bank block answers nothing, 0 or false for all of it") {
    const auto account = accountOf("<DESC>Savings");
    checkNoBlocks(*account);
    CHECK(account->country() == "USA");
    const auto empty = TvOFXAccount::initWithAccountInfos(std::make_shared<TvOFXAccountInfo>());
    checkNoBlocks(*empty);
    CHECK(empty->serviceStatus() == 0);
    CHECK_FALSE(empty->accountDescription());
    CHECK_FALSE(empty->accountPhone());
}

TEST_CASE("a bank block without an account answers nothing for the account") {
    const auto account = accountOf("<BANKACCTINFO><SUPTXDL>Y<SVCSTATUS>AVAIL</BANKACCTINFO>");
    CHECK_FALSE(account->bankAccount());
    CHECK(account->bankingServiceStatus() == TvOFXServiceStatusAvailable);
    CHECK(account->supportsTransactionDownload());
    CHECK_FALSE(account->bankingBankID());
    CHECK_FALSE(account->bankingBranchID());
    CHECK_FALSE(account->bankingAccountID());
    CHECK_FALSE(account->bankingAcctKeyChecksum());
    CHECK(account->bankingAccountType() == TvOFXBankAccountTypeUnknown);
}

TEST_CASE("a flat account takes nothing from the block of a card") {
    // Intended: flags and identifiers are those of the bank block only.
    checkNoBlocks(*accountOf(
        "<DESC>Card<CCACCTINFO><CCACCTFROM><ACCTID>4111</CCACCTFROM><SUPTXDL>Y<XFERSRC>Y<XFERDEST>Y"
        "<SVCSTATUS>ACTIVE</CCACCTINFO>"));
}

TEST_CASE("a flat account is in the USA until it is set to be elsewhere") {
    const auto account = accountOf("<DESC>Checking");
    CHECK(account->country() == "USA");
    account->setCountry("DEU");
    CHECK(account->country() == "DEU");
    account->setCountry("");
    CHECK(account->country().empty());
    account->setCountry(std::nullopt);
    CHECK(account->country() == "USA");
}

TEST_CASE("a flat account describes itself by its class and its description") {
    CHECK(accountOf("<DESC>Checking")->description() == "TvOFXAccount:\ndescription = Checking\n");
    CHECK(accountOf("<PHONE>555")->description() == "TvOFXAccount:\n");
}
