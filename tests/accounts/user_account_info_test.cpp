// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using UserInfo = TvOFXUserAccountInfo;

constexpr const char* kThree =
    "<DTACCTUP>20240131"
    "<ACCTINFO><DESC>Chécking<BANKACCTINFO><BANKACCTFROM><BANKID>121000248<ACCTID>0001<ACCTTYPE>CHECKING"
    "</BANKACCTFROM><SUPTXDL>Y<SVCSTATUS>ACTIVE</BANKACCTINFO></ACCTINFO>"
    "<ACCTINFO><DESC>Card<CCACCTINFO><CCACCTFROM><ACCTID>4111</CCACCTFROM></CCACCTINFO></ACCTINFO>"
    "<ACCTINFO><PHONE>555</ACCTINFO>";

std::shared_ptr<TvOFXAccountInfoResponse> threeAccounts() {
    return TvOFXAccountInfoResponse::initWithParseDict(parsed(kThree));
}

std::optional<ParseDictionary> restoredNode(const TvOFXAccountInfoResponse& response) {
    return restored(response)->originalParseData();
}

}  // namespace

TEST_CASE("a user without a response has no accounts") {
    for (const auto& info :
         {UserInfo::init(), UserInfo::initWithAccountInfoResponse(nullptr), std::make_shared<UserInfo>()}) {
        CHECK_FALSE(info->acctInfoResponse());
        CHECK(info->allAccounts().empty());
        CHECK(info->allAccountInfos() == nullptr);
        CHECK_FALSE(info->data());
    }
}

TEST_CASE("a user has one account for each record, in order") {
    const auto response = threeAccounts();
    const auto info = UserInfo::initWithAccountInfoResponse(response);
    CHECK(info->acctInfoResponse() == response);
    REQUIRE(info->allAccountInfos() == &response->accountInfos());
    REQUIRE(info->allAccounts().size() == 3);
    for (std::size_t i = 0; i < 3; ++i) {
        CAPTURE(i);
        CHECK(info->allAccounts()[i]->ofxAccountInfo() == response->accountInfos()[i]);
    }
}

TEST_CASE("a user whose response has no records has no accounts") {
    const auto info = UserInfo::initWithAccountInfoResponse(std::make_shared<TvOFXAccountInfoResponse>());
    CHECK(info->allAccounts().empty());
    REQUIRE(info->allAccountInfos());
    CHECK(info->allAccountInfos()->empty());
    REQUIRE(info->data());
    CHECK(info->data()->isEmpty());
}

TEST_CASE("a user's data is the response's text") {
    const auto info = UserInfo::initWithAccountInfoResponse(
        TvOFXAccountInfoResponse::initWithParseDict(parsed("<ACCTINFO><DESC>Chécking</ACCTINFO>")));
    CHECK(info->data()->bytes() == "<ACCTINFO>\n<DESC>Chécking\n</ACCTINFO>\n");
}

TEST_CASE("a user that is stored and restored has the same accounts") {
    const auto info = UserInfo::initWithAccountInfoResponse(threeAccounts());
    std::shared_ptr<UserInfo> restored;
    {
        // The application's bytes are gone when the accounts are used.
        const std::string bytes(info->data()->bytes());
        restored = UserInfo::initWithData(Data::view(bytes));
    }
    REQUIRE(restored->acctInfoResponse());
    CHECK(shown(restored->acctInfoResponse()->lastUpdateDateTime()) == "2024-01-31 00:00:00.000");
    REQUIRE(restored->allAccounts().size() == 3);
    const TvOFXAccount& first = *restored->allAccounts().front();
    CHECK(shown(first.accountDescription()) == "Chécking");
    CHECK(shown(first.bankingAccountID()) == "0001");
    CHECK(first.bankingServiceStatus() == TvOFXServiceStatusActive);
    CHECK(first.supportsTransactionDownload());
    CHECK(shown(restored->allAccounts()[1]->accountDescription()) == "Card");
    CHECK(shown(restored->allAccounts()[2]->accountPhone()) == "555");
    CHECK(restored->data() == info->data());
}

TEST_CASE("bytes that do not parse give a user whose response has no records") {
    const std::vector<std::optional<Data>> inputs{std::nullopt, Data(), Data::copy("\xFF\xFE\xC0"),
                                                  Data::copy("<ACCTINFO><DESC>A</OTHER>")};
    for (const auto& input : inputs) {
        CAPTURE(input ? input->size() : std::size_t{0});
        const auto info = UserInfo::initWithData(input);
        REQUIRE(info);
        REQUIRE(info->acctInfoResponse());
        CHECK(info->acctInfoResponse()->accountInfos().empty());
        CHECK(info->allAccounts().empty());
        REQUIRE(info->data());
        CHECK(info->data()->isEmpty());
    }
}

TEST_CASE("a text with markup does not survive storing unchanged, which its node shows") {
    // Intended: nothing is escaped.
    struct Row {
        std::string text;      ///< in the document
        std::string restored;  ///< what the record's description reads after storing
        std::size_t accounts;  ///< how many come back
    };
    for (const Row& row :
         {Row{"A &amp; B", "A & B", 1}, Row{"A", "A", 1}, Row{"A &lt;B&gt; C", "A", 1},
          Row{"A &amp;lt; B", "A < B", 1}, Row{"A &lt; B", "", 0}, Row{"A &lt;/B&gt;", "", 0}}) {
        CAPTURE(row.text);
        const auto response = TvOFXAccountInfoResponse::initWithParseDict(
            parsed("<ACCTINFO><DESC>" + row.text + "<BANKACCTINFO><SUPTXDL>Y</BANKACCTINFO></ACCTINFO>"));
        const auto info = UserInfo::initWithAccountInfoResponse(response);
        REQUIRE(info->allAccounts().size() == 1);
        const auto restored = UserInfo::initWithData(info->data());
        REQUIRE(restored->allAccounts().size() == row.accounts);
        if (row.accounts != 0) CHECK(shown(restored->allAccounts()[0]->accountDescription()) == row.restored);
        const bool isWhole = restored->acctInfoResponse()->originalParseData() ==
                             info->acctInfoResponse()->originalParseData();
        CHECK(isWhole == (shown(info->allAccounts()[0]->accountDescription()) == row.restored));
        // A keyed archive has no such weakness.
        const auto archive = restoredNode(*response);
        CHECK(archive == response->originalParseData());
        CHECK(TvOFXAccountInfoResponse::initWithParseDict(archive)->accountInfos().size() == 1);
    }
}

TEST_CASE("an account outlives the user that it came from") {
    std::shared_ptr<TvOFXAccount> account;
    {
        const auto info = UserInfo::initWithAccountInfoResponse(threeAccounts());
        account = info->allAccounts().front();
    }
    CHECK(shown(account->bankingBankID()) == "121000248");
}
