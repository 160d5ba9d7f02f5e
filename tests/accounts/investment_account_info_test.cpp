// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "accounts/block_rules.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using InvestmentInfo = TvOFXInvestmentAccountInfo;

std::shared_ptr<InvestmentInfo> investmentInfoIn(const std::optional<ParseDictionary>& node) {
    return InvestmentInfo::initWithParseDict(node);
}

}  // namespace

TEST_CASE("an investment block reads all its elements") {
    const ParseDictionary node = parsed(
        "<INVACCTFROM><BROKERID>broker.example<ACCTID>77</INVACCTFROM><USPRODUCTTYPE>401K<CHECKING>Y"
        "<SVCSTATUS>AVAIL<INVACCTTYPE>JOINT<OPTIONLEVEL>No naked calls");
    const auto info = investmentInfoIn(node);
    REQUIRE(info->investmentAccount());
    CHECK(shown(info->investmentAccount()->brokerID().text()) == "broker.example");
    CHECK(shown(info->usproductType()) == "401K");
    CHECK(info->hasCheckWritingPrivileges());
    CHECK(info->serviceStatus() == TvOFXServiceStatusAvailable);
    CHECK(info->accountType() == TvOFXInvestmentAccountTypeJoint);
    CHECK(shown(info->optionLevel()) == "No naked calls");
    CHECK(info->originalParseData() == node);
    CHECK(info->className() == "TvOFXInvestmentAccountInfo");
}

TEST_CASE("an investment block without elements or without a node has its defaults") {
    for (const auto& info : {std::make_shared<InvestmentInfo>(), investmentInfoIn(std::nullopt),
                             investmentInfoIn(ParseDictionary{})}) {
        CHECK_FALSE(info->investmentAccount());
        CHECK_FALSE(info->usproductType());
        CHECK_FALSE(info->hasCheckWritingPrivileges());
        CHECK(info->accountType() == TvOFXInvestmentAccountTypeUnknown);
        CHECK_FALSE(info->optionLevel());
        CHECK(info->serviceStatus() == TvOFXServiceStatusNone);
    }
}

TEST_CASE("an investment block's account is read from an aggregate only") {
    const ParseDictionary account{{"ACCTID", "77"}};
    CHECK_FALSE(investmentInfoIn(ParseDictionary{{"INVACCTFROM", "77"}})->investmentAccount());
    CHECK_FALSE(investmentInfoIn(ParseDictionary{{"INVACCTFROM", ParseValue::array({account, account})}})
                    ->investmentAccount());
}

TEST_CASE("an investment block's texts are read from texts only") {
    for (const ParseValue& value : otherKinds("x")) {
        CHECK_FALSE(investmentInfoIn(ParseDictionary{{"USPRODUCTTYPE", value}})->usproductType());
        CHECK_FALSE(investmentInfoIn(ParseDictionary{{"OPTIONLEVEL", value}})->optionLevel());
    }
    CHECK(investmentInfoIn(ParseDictionary{{"USPRODUCTTYPE", ""}})->usproductType() == "");
}

TEST_CASE("an investment account may write checks exactly for Y") {
    checkExactFlag([](const ParseValue& value) {
        return investmentInfoIn(ParseDictionary{{"CHECKING", value}})->hasCheckWritingPrivileges();
    });
}

TEST_CASE("an investment block's status is read from exact words") {
    checkServiceStatusOf([](const ParseValue& value) {
        return investmentInfoIn(ParseDictionary{{"SVCSTATUS", value}})->serviceStatus();
    });
}

TEST_CASE("the numbers of the investment account types are fixed") {
    CHECK(TvOFXInvestmentAccountTypeUnknown == 0);
    CHECK(TvOFXInvestmentAccountTypeIndividual == 1);
    CHECK(TvOFXInvestmentAccountTypeJoint == 2);
    CHECK(TvOFXInvestmentAccountTypeTrust == 3);
    CHECK(TvOFXInvestmentAccountTypeCorporate == 4);
    CHECK(std::is_same_v<std::underlying_type_t<TvOFXInvestmentAccountType>, std::uint64_t>);
}

TEST_CASE("an investment account's type is read from exact words") {
    const auto typeOf = [](const ParseValue& value) {
        return investmentInfoIn(ParseDictionary{{"INVACCTTYPE", value}})->accountType();
    };
    CHECK(typeOf("INDIVIDUAL") == TvOFXInvestmentAccountTypeIndividual);
    CHECK(typeOf("JOINT") == TvOFXInvestmentAccountTypeJoint);
    CHECK(typeOf("TRUST") == TvOFXInvestmentAccountTypeTrust);
    CHECK(typeOf("CORPORATE") == TvOFXInvestmentAccountTypeCorporate);
    for (const char* text : {"joint", "OTHER", ""}) {
        CAPTURE(text);
        CHECK(typeOf(text) == TvOFXInvestmentAccountTypeUnknown);
    }
    for (const ParseValue& value : otherKinds("JOINT"))
        CHECK(typeOf(value) == TvOFXInvestmentAccountTypeUnknown);
}
