// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXFIProfile> profileOf(std::string_view node) {
    return TvOFXFIProfile::initWithProfileResponse(TvOFXFIProfileResponse::initWithParseDict(parsed(node)));
}

std::shared_ptr<TvOFXFIProfile> storedAndRestored(const TvOFXFIProfile& profile) {
    const std::optional<Data> data = profile.data();
    REQUIRE(data);
    // The application's bytes are gone when the profile is used.
    const std::string bytes(data->bytes());
    return TvOFXFIProfile::initWithData(Data::view(bytes));
}

/// All that a profile says "no" to, whatever it holds.
void checkAlwaysFalse(const TvOFXFIProfile& profile) {
    CHECK_FALSE(profile.supportsCreditCardStatements());
    CHECK_FALSE(profile.supportsInvestmentStatements());
    CHECK_FALSE(profile.supportsInterbankFundsTransfer());
    CHECK_FALSE(profile.supportsWireFundsTransfer());
    CHECK_FALSE(profile.supportsPayments());
    CHECK_FALSE(profile.supportsGeneralEMail());
    CHECK_FALSE(profile.supportsInvestmentSecurityList());
}

constexpr const char* kAllSets =
    "<MSGSETLIST>"
    "<SIGNONMSGSET><SIGNONMSGSETV1><MSGSETCORE><VER>1</MSGSETCORE></SIGNONMSGSETV1></SIGNONMSGSET>"
    "<SIGNUPMSGSET><SIGNUPMSGSETV1><AVAILACCTS>Y</SIGNUPMSGSETV1></SIGNUPMSGSET>"
    "<BANKMSGSET><BANKMSGSETV1><MSGSETCORE><VER>1<LANGUAGE>ENG</MSGSETCORE>"
    "<XFERPROF><PROCDAYSOFF>SUNDAY<MODELWND>3</XFERPROF></BANKMSGSETV1></BANKMSGSET>"
    "<CREDITCARDMSGSET><CREDITCARDMSGSETV1><CLOSINGAVAIL>Y</CREDITCARDMSGSETV1></CREDITCARDMSGSET>"
    "<INVSTMTMSGSET><INVSTMTMSGSETV1><A>1</INVSTMTMSGSETV1></INVSTMTMSGSET>"
    "<EMAILMSGSET><EMAILMSGSETV1><A>1</EMAILMSGSETV1></EMAILMSGSET>"
    "<BILLPAYMSGSET><BILLPAYMSGSETV1><A>1</BILLPAYMSGSETV1></BILLPAYMSGSET>"
    "</MSGSETLIST>"
    "<SIGNONINFOLIST><SIGNONINFO><SIGNONREALM>A<MIN>4</SIGNONINFO>"
    "<SIGNONINFO><SIGNONREALM>B<CLIENTUIDREQ>Y</SIGNONINFO></SIGNONINFOLIST>"
    "<DTPROFUP>20240131170500<FINAME>Big Bank<ADDR1>1 Main St<ADDR3>Suite 5<CITY>Springfield<STATE>IL"
    "<POSTALCODE>62701<COUNTRY>USA<CSPHONE>1<TSPHONE>2<FAXPHONE>3<URL>https://bank.example<EMAIL>a@b.example";

}  // namespace

TEST_CASE("a profile without a response answers nothing or false") {
    for (const auto& profile :
         {TvOFXFIProfile::initWithProfileResponse(nullptr), std::make_shared<TvOFXFIProfile>()}) {
        CHECK_FALSE(profile->fiProfileResponse());
        CHECK_FALSE(profile->data());
        CHECK_FALSE(profile->fiName());
        CHECK(profile->description() == "TvOFXFIProfile");
        CHECK_FALSE(profile->supportsSignUp());
        CHECK_FALSE(profile->supportsBanking());
        checkAlwaysFalse(*profile);
        CHECK_FALSE(profile->messageSetProfileSignOn());
        CHECK_FALSE(profile->messageSetProfileSignUp());
        CHECK_FALSE(profile->messageSetProfileBanking());
        CHECK_FALSE(profile->messageSetProfileCreditCard());
        for (std::uint64_t messageSet = 0; messageSet <= 5; ++messageSet)
            CHECK_FALSE(profile->profileForMessageSet(messageSet));
    }
}

TEST_CASE("a profile answers with what its response holds") {
    const auto response = TvOFXFIProfileResponse::initWithParseDict(parsed(kAllSets));
    const auto profile = TvOFXFIProfile::initWithProfileResponse(response);
    CHECK(profile->fiProfileResponse() == response);
    CHECK(shown(profile->fiName()) == "Big Bank");
    CHECK(profile->description() == response->description());
    CHECK(profile->messageSetProfileSignOn() == response->messageSetProfileSignOn());
    CHECK(profile->messageSetProfileSignUp() == response->messageSetProfileSignUp());
    CHECK(profile->messageSetProfileBanking() == response->messageSetProfileBanking());
    CHECK(profile->messageSetProfileCreditCard() == response->messageSetProfileCreditCard());
}

TEST_CASE("a profile supports sign-up and banking exactly when it has their message sets") {
    const auto withSets = profileOf(kAllSets);
    CHECK(withSets->supportsSignUp());
    CHECK(withSets->supportsBanking());
    const auto without = profileOf("<FINAME>Big Bank");
    CHECK_FALSE(without->supportsSignUp());
    CHECK_FALSE(without->supportsBanking());
    const auto bankOnly = profileOf(
        "<MSGSETLIST><BANKMSGSET><BANKMSGSETV1><A>1</BANKMSGSETV1></BANKMSGSET>"
        "<INVSTMTMSGSET><INVSTMTMSGSETV1><A>1</INVSTMTMSGSETV1></INVSTMTMSGSET></MSGSETLIST>");
    CHECK(bankOnly->supportsBanking());
    CHECK_FALSE(bankOnly->supportsSignUp());
    CHECK_FALSE(bankOnly->supportsInvestmentStatements());
}

TEST_CASE("a profile never supports the other services, cards included") {
    // Intended also where the profile has the message set.
    const auto profile = profileOf(kAllSets);
    REQUIRE(profile->messageSetProfileCreditCard());
    CHECK(profile->profileForMessageSet(4) == profile->messageSetProfileCreditCard());
    checkAlwaysFalse(*profile);
}

TEST_CASE("message sets have numbers from 1 to 4") {
    const auto profile = profileOf(kAllSets);
    CHECK(profile->profileForMessageSet(TvOFXMessageSetTypeSignOn) == profile->messageSetProfileSignOn());
    CHECK(profile->profileForMessageSet(TvOFXMessageSetTypeSignUp) == profile->messageSetProfileSignUp());
    CHECK(profile->profileForMessageSet(TvOFXMessageSetTypeBanking) == profile->messageSetProfileBanking());
    CHECK(profile->profileForMessageSet(TvOFXMessageSetTypeCreditCard) ==
          profile->messageSetProfileCreditCard());
    for (std::uint64_t messageSet = 1; messageSet <= 4; ++messageSet)
        CHECK(profile->profileForMessageSet(messageSet));
    CHECK_FALSE(profile->profileForMessageSet(0));
    CHECK_FALSE(profile->profileForMessageSet(static_cast<TvOFXMessageSetType>(5)));
    CHECK_FALSE(profile->profileForMessageSet(5));
    CHECK_FALSE(profile->profileForMessageSet(std::uint64_t{1} << 32 | 1));
}

TEST_CASE("a profile's data is its response's text") {
    const auto profile = profileOf("<FINAME>Bänk<CITY>Springfield");
    REQUIRE(profile->data());
    CHECK(profile->data()->bytes() == "<FINAME>Bänk\n<CITY>Springfield\n");
}

TEST_CASE("a profile that is stored and restored has the same fields") {
    const auto profile = profileOf(kAllSets);
    const auto restored = storedAndRestored(*profile);
    REQUIRE(restored->fiProfileResponse());
    CHECK(restored->description() == profile->description());
    CHECK(shown(restored->fiProfileResponse()->address()) == "1 Main St\nSuite 5");
    CHECK(restored->messageSetProfileSignUp()->serverProvidesAccountInfos());
    CHECK(restored->messageSetProfileCreditCard()->closingStatementInformationAvailable());
    CHECK(restored->fiProfileResponse()->originalParseData() ==
          profile->fiProfileResponse()->originalParseData());
    CHECK(restored->data() == profile->data());
}

TEST_CASE("a single language or day survives storing, several are lost") {
    // Intended: repeated leaves are not written.
    const auto banking = [](std::string_view languages, std::string_view days) {
        const auto profile =
            profileOf("<MSGSETLIST><BANKMSGSET><BANKMSGSETV1><MSGSETCORE><VER>1" + std::string(languages) +
                      "</MSGSETCORE><XFERPROF><MODELWND>3" + std::string(days) +
                      "</XFERPROF></BANKMSGSETV1></BANKMSGSET></MSGSETLIST>");
        return storedAndRestored(*profile)->messageSetProfileBanking();
    };
    const auto one = banking("<LANGUAGE>ENG", "<PROCDAYSOFF>SUNDAY");
    CHECK(one->messageSetCore()->languages() == std::vector<ParseValue>{"ENG"});
    CHECK(one->noProcessingDays() == std::vector<ParseValue>{"SUNDAY"});
    const auto several = banking("<LANGUAGE>ENG<LANGUAGE>FRA", "<PROCDAYSOFF>SATURDAY<PROCDAYSOFF>SUNDAY");
    CHECK_FALSE(several->messageSetCore()->languages());
    CHECK_FALSE(several->noProcessingDays());
    CHECK(several->modelWindow() == 3);
    CHECK(several->messageSetCore()->version() == 1);
}

TEST_CASE("a text with markup does not survive storing unchanged") {
    // Intended: nothing is escaped.
    const auto profile = profileOf("<FINAME>A &amp;lt; B<CITY>C &lt;D&gt; E");
    REQUIRE(shown(profile->fiName()) == "A &lt; B");
    REQUIRE(shown(profile->fiProfileResponse()->city()) == "C <D> E");
    const auto restored = storedAndRestored(*profile);
    CHECK(shown(restored->fiName()) == "A < B");
    CHECK(shown(restored->fiProfileResponse()->city()) != "C <D> E");
}

TEST_CASE("bytes that do not parse give a profile whose response has no fields") {
    const std::vector<std::optional<Data>> inputs{std::nullopt, Data(), Data::copy("\xFF\xFE\xC0"),
                                                  Data::copy("<FINAME>Big Bank</CITY></STATE>")};
    for (const auto& input : inputs) {
        CAPTURE(input ? input->size() : std::size_t{0});
        const auto profile = TvOFXFIProfile::initWithData(input);
        REQUIRE(profile);
        REQUIRE(profile->fiProfileResponse());
        CHECK_FALSE(profile->fiProfileResponse()->originalParseData());
        CHECK(profile->description() == "TvOFXFIProfile\n\n\n");
        REQUIRE(profile->data());
        CHECK(profile->data()->isEmpty());
    }
}

TEST_CASE("the response's text is not changed by what is set on the response") {
    const auto profile = profileOf("<FINAME>Big Bank");
    profile->fiProfileResponse()->setFiName("Small Bank");
    CHECK(shown(profile->fiName()) == "Small Bank");
    CHECK(profile->data()->bytes() == "<FINAME>Big Bank\n");
}
