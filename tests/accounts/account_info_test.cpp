// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "accounts/block_rules.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Info = TvOFXAccountInfo;

std::shared_ptr<Info> infoIn(const std::optional<ParseDictionary>& node) {
    return Info::initWithParserDict(node);
}

std::string bankAccountIn(const Info& info) {
    return info.bankAccountInfo() ? shown(info.bankAccountInfo()->accountID()) : "no block";
}

}  // namespace

TEST_CASE("a record reads its description, its telephone number and its bank block") {
    const auto info =
        infoIn(parsed("<DESC>Checking<PHONE>555<BANKACCTINFO><BANKACCTFROM><ACCTID>0001</BANKACCTFROM>"
                      "</BANKACCTINFO>"));
    CHECK(shown(info->accountDescription()) == "Checking");
    CHECK(shown(info->accountPhone()) == "555");
    CHECK(bankAccountIn(*info) == "0001");
}

TEST_CASE("the order of a record's elements carries no meaning") {
    const auto info = infoIn(
        parsed("<BANKACCTINFO><SVCSTATUS>AVAIL<XFERDEST>Y<XFERSRC>N<SUPTXDL>Y<BANKACCTFROM><ACCTID>0001"
               "</BANKACCTFROM></BANKACCTINFO><SVCSTATUS>ACTIVE<PHONE>555<DESC>Checking"));
    CHECK(shown(info->accountDescription()) == "Checking");
    CHECK(shown(info->accountPhone()) == "555");
    CHECK(info->serviceStatus() == TvOFXServiceStatusActive);
    CHECK(bankAccountIn(*info) == "0001");
    CHECK(info->bankAccountInfo()->supportsTransactionDownload());
    CHECK_FALSE(info->bankAccountInfo()->isTransferSourceAccount());
    CHECK(info->bankAccountInfo()->isTransferDestinationAccount());
    CHECK(info->bankAccountInfo()->serviceStatus() == TvOFXServiceStatusAvailable);
}

TEST_CASE("a record without elements or without a node is empty") {
    for (const auto& info : {std::make_shared<Info>(), infoIn(std::nullopt), infoIn(ParseDictionary{})}) {
        CHECK_FALSE(info->accountDescription());
        CHECK_FALSE(info->accountPhone());
        CHECK_FALSE(info->bankAccountInfo());
        CHECK_FALSE(info->creditCardAccountInfo());
        CHECK_FALSE(info->paymentsAccountInfo());
        CHECK_FALSE(info->investmentAccountInfo());
        CHECK(info->serviceStatus() == TvOFXServiceStatusNone);
    }
}

TEST_CASE("a record's texts are read from texts only, and kept as they stand") {
    for (const ParseValue& value : otherKinds("x")) {
        CHECK_FALSE(infoIn(ParseDictionary{{"DESC", value}})->accountDescription());
        CHECK_FALSE(infoIn(ParseDictionary{{"PHONE", value}})->accountPhone());
    }
    CHECK(infoIn(ParseDictionary{{"DESC", ""}})->accountDescription() == "");
    CHECK(infoIn(ParseDictionary{{"PHONE", " 5 "}})->accountPhone() == " 5 ");
}

TEST_CASE("a record recognises the blocks of other services and leaves them empty") {
    // Intended: only bank accounts come out of account information.
    for (const char* block : {"CCACCTINFO", "INVACCTINFO", "BPACCTINFO", "LOANACCTINFO", "ACCTINFO"}) {
        CAPTURE(block);
        const ParseDictionary card{{"CCACCTFROM", ParseDictionary{{"ACCTID", "4111"}}},
                                   {"SVCSTATUS", "ACTIVE"}};
        const auto info = infoIn(ParseDictionary{{"DESC", "Card"}, {"PHONE", "555"}, {block, card}});
        CHECK(shown(info->accountDescription()) == "Card");
        CHECK(shown(info->accountPhone()) == "555");
        CHECK_FALSE(info->bankAccountInfo());
        CHECK_FALSE(info->creditCardAccountInfo());
        CHECK_FALSE(info->paymentsAccountInfo());
        CHECK_FALSE(info->investmentAccountInfo());
    }
}

TEST_CASE("a bank block is any aggregate whose name begins with BANK and ends with ACCTINFO") {
    const ParseDictionary block{{"BANKACCTFROM", ParseDictionary{{"ACCTID", "0001"}}}};
    for (const char* name : {"BANKACCTINFO", "BANKXACCTINFO", "BANK2ACCTINFO"}) {
        CAPTURE(name);
        CHECK(bankAccountIn(*infoIn(ParseDictionary{{name, block}})) == "0001");
        CHECK(bankAccountIn(*infoIn(ParseDictionary{{name, "text"}})) == "no block");
        CHECK(bankAccountIn(*infoIn(ParseDictionary{{name, ParseValue::array({block, block})}})) ==
              "no block");
    }
    for (const char* name : {"bankacctinfo", "BANKACCTINFOS", "XBANKACCTINFO", "BANK", "BANKINFO"}) {
        CAPTURE(name);
        CHECK(bankAccountIn(*infoIn(ParseDictionary{{name, block}})) == "no block");
    }
}

TEST_CASE("of several bank blocks the last one wins") {
    const auto block = [](const char* id) {
        return ParseDictionary{{"BANKACCTFROM", ParseDictionary{{"ACCTID", id}}}};
    };
    CHECK(bankAccountIn(
              *infoIn(ParseDictionary{{"BANKACCTINFO", block("1")}, {"BANKXACCTINFO", block("2")}})) == "2");
    CHECK(bankAccountIn(
              *infoIn(ParseDictionary{{"BANKXACCTINFO", block("2")}, {"BANKACCTINFO", block("1")}})) == "1");
    CHECK(bankAccountIn(*infoIn(ParseDictionary{{"BANKACCTINFO", block("1")}, {"BANKXACCTINFO", "text"}})) ==
          "1");
}

TEST_CASE("the numbers of the service statuses are fixed") {
    CHECK(TvOFXServiceStatusNone == 0);
    CHECK(TvOFXServiceStatusAvailable == 1);
    CHECK(TvOFXServiceStatusPending == 2);
    CHECK(TvOFXServiceStatusActive == 3);
    CHECK(std::is_same_v<std::underlying_type_t<TvOFXServiceStatus>, std::uint64_t>);
}

TEST_CASE("a record's own status is read from exact words") { checkServiceStatus<Info>(); }

TEST_CASE("a record's status is the one that stands in it, not that of its bank block") {
    const auto inner = infoIn(parsed("<BANKACCTINFO><SVCSTATUS>ACTIVE</BANKACCTINFO>"));
    CHECK(inner->serviceStatus() == TvOFXServiceStatusNone);
    CHECK(inner->bankAccountInfo()->serviceStatus() == TvOFXServiceStatusActive);
    const auto outer = infoIn(parsed("<SVCSTATUS>PEND<BANKACCTINFO><SUPTXDL>Y</BANKACCTINFO>"));
    CHECK(outer->serviceStatus() == TvOFXServiceStatusPending);
    CHECK(outer->bankAccountInfo()->serviceStatus() == TvOFXServiceStatusNone);
}

TEST_CASE("a payments block has no status") {
    CHECK(TvOFXPaymentsAccountInfo().serviceStatus() == TvOFXServiceStatusNone);
}
