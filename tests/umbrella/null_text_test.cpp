// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

constexpr const char* kNull = nullptr;

/// A field that an application may set to a text or to nothing.
template <class Object>
struct Field {
    std::string_view name;
    void (Object::*set)(TextArgument);
    OptionalText (Object::*get)() const noexcept;
};

template <class Object>
void checkFields(Object& object, std::initializer_list<Field<Object>> fields) {
    for (const Field<Object>& field : fields) {
        CAPTURE(object.className());
        CAPTURE(field.name);
        (object.*field.set)("text");
        CHECK(shown((object.*field.get)()) == "text");
        (object.*field.set)(kNull);
        CHECK(shown((object.*field.get)()) == "nothing");
        (object.*field.set)("text");
        (object.*field.set)(nullptr);
        CHECK(shown((object.*field.get)()) == "nothing");
    }
}

/// An application's own text.
struct OwnText {
    std::string text;
    operator std::string_view() const noexcept { return text; }  // NOLINT(google-explicit-constructor)
};

OptionalText taken(TextArgument text) { return text; }

template <class Controller>
concept ImportsFromURLWithZero = requires {
    Controller::importOFXFileFromURL("x", 0);
};
template <class Controller>
concept ImportsFromDataWithZero = requires {
    Controller::importOFXFileFromData(Data(), 0);
};
template <class Controller>
concept ImportsFromZero = requires {
    Controller::importOFXFileFromURL(0);
};
template <class Value>
concept IsMadeOfZero = requires {
    Value(0);
};
template <class Response>
concept TakesZero = requires(Response& response) {
    response.setTransactionUID(0);
};

}  // namespace

TEST_CASE("a null text sets a field to nothing") {
    TvOFXResponse response;
    using Response = TvOFXResponse;
    checkFields<Response>(response,
                          {{"transactionUID", &Response::setTransactionUID, &Response::transactionUID},
                           {"transactionWrapperName", &Response::setTransactionWrapperName,
                            &Response::transactionWrapperName}});
    TvOFXBankAccount account;
    using Account = TvOFXBankAccount;
    checkFields<Account>(account,
                         {{"bankID", &Account::setBankID, &Account::bankID},
                          {"branchID", &Account::setBranchID, &Account::branchID},
                          {"accountID", &Account::setAccountID, &Account::accountID},
                          {"acctKeyChecksum", &Account::setAcctKeyChecksum, &Account::acctKeyChecksum}});
    TvOFXStatementTransaction transaction;
    checkFields<TvOFXStatementTransaction>(
        transaction, {{"fiTransactionID", &TvOFXStatementTransaction::setFiTransactionID,
                       &TvOFXStatementTransaction::fiTransactionID}});
    TvOFXMessageSetCore core;
    using Core = TvOFXMessageSetCore;
    checkFields<Core>(core,
                      {{"serviceProviderName", &Core::setServiceProviderName, &Core::serviceProviderName},
                       {"url", &Core::setUrl, &Core::url},
                       {"signonRealm", &Core::setSignonRealm, &Core::signonRealm}});
    TvOFXMessageSetProfileBanking banking;
    checkFields<TvOFXMessageSetProfileBanking>(
        banking, {{"processingEndTime", &TvOFXMessageSetProfileBanking::setProcessingEndTime,
                   &TvOFXMessageSetProfileBanking::processingEndTime}});
}

TEST_CASE("a null text sets a field of a sign-on or a profile to nothing") {
    TvOFXFinancialInstitutionIdentification institution;
    using Institution = TvOFXFinancialInstitutionIdentification;
    checkFields<Institution>(institution,
                             {{"organization", &Institution::setOrganization, &Institution::organization},
                              {"fid", &Institution::setFid, &Institution::fid}});
    TvOFXSignOnResponse signOn;
    using SignOn = TvOFXSignOnResponse;
    checkFields<SignOn>(signOn, {{"userKey", &SignOn::setUserKey, &SignOn::userKey},
                                 {"language", &SignOn::setLanguage, &SignOn::language},
                                 {"sessionCookie", &SignOn::setSessionCookie, &SignOn::sessionCookie},
                                 {"accessKey", &SignOn::setAccessKey, &SignOn::accessKey}});
    TvOFXSignOnInfo realm;
    checkFields<TvOFXSignOnInfo>(
        realm, {{"signonRealm", &TvOFXSignOnInfo::setSignonRealm, &TvOFXSignOnInfo::signonRealm}});
    TvOFXFIProfileResponse profile;
    using Profile = TvOFXFIProfileResponse;
    checkFields<Profile>(profile, {{"fiName", &Profile::setFiName, &Profile::fiName},
                                   {"address", &Profile::setAddress, &Profile::address},
                                   {"city", &Profile::setCity, &Profile::city},
                                   {"state", &Profile::setState, &Profile::state},
                                   {"postalCode", &Profile::setPostalCode, &Profile::postalCode},
                                   {"country", &Profile::setCountry, &Profile::country},
                                   {"customerServicePhoneNumber", &Profile::setCustomerServicePhoneNumber,
                                    &Profile::customerServicePhoneNumber},
                                   {"technicalSupportPhoneNumber", &Profile::setTechnicalSupportPhoneNumber,
                                    &Profile::technicalSupportPhoneNumber},
                                   {"faxNumber", &Profile::setFaxNumber, &Profile::faxNumber},
                                   {"informationURL", &Profile::setInformationURL, &Profile::informationURL},
                                   {"email", &Profile::setEmail, &Profile::email}});
}

TEST_CASE("an operation that takes a text or nothing takes a null text as nothing") {
    Error error;
    CHECK(TovanaOFXController::importOFXFileFromURL(kNull, &error) == nullptr);
    CHECK(TovanaOFXController::importOFXFileFromURL(nullptr, &error) == nullptr);
    CHECK(TovanaOFXController::importOFXFileFromURL(kNull, TextEncodingUTF8, nullptr, nullptr, &error) ==
          nullptr);
    CHECK(error == Error());  // as without a URL: a missing argument is no error
    CHECK_FALSE(TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(kNull));
    CHECK_FALSE(TvOFXHelper().dateFromOFXDateString(kNull));
    CHECK_FALSE(TvOFXHelper().decimalNumberFromOFXAmountString(kNull));
    CHECK(TvOFXAccountInfoRequest::initWithUpdateDateTime(nullptr)->dateTimeAccountUpdate() == "19900101");
    CHECK(TvOFXFIProfileRequest::initWithUpdateDateTime(kNull)->dateTimeProfileUpdate() == "19900101");
    CHECK(TvOFXAccountInfoRequest(kNull).dateTimeAccountUpdate() == "19900101");
    CHECK(TvOFXFIProfileRequest(nullptr).dateTimeProfileUpdate() == "19900101");
    const auto bank = TvOFXBankAccount::initWithBankID(kNull, nullptr, TvOFXBankAccountTypeSavings);
    CHECK(shown(bank->bankID()) == "nothing");
    CHECK(shown(bank->accountID()) == "nothing");
    CHECK(shown(TvOFXCreditCardAccount::initWithAccountID(kNull)->accountID()) == "nothing");
    CHECK_FALSE(SecurityList().find(kNull, kNull));
    const auto account = TvOFXAccount::initWithAccountInfos(std::make_shared<TvOFXAccountInfo>());
    account->setCountry("DEU");
    CHECK(account->country() == "DEU");
    account->setCountry(kNull);
    CHECK(account->country() == "USA");
}

TEST_CASE("a null text is no value of a tree") {
    CHECK(ParseValue(kNull).isNothing());
    CHECK(ParseValue(nullptr).isNothing());
    CHECK(ParseValue("").text() == "");
    CHECK(ParseDictionary{{"A", kNull}, {"B", nullptr}, {"C", "1"}} == ParseDictionary{{"C", "1"}});
}

TEST_CASE("whatever is a text can be handed over where a text may be absent") {
    const std::string string = "text";
    char array[] = "text";
    char* const pointer = array;
    CHECK(shown(taken("text")) == "text");
    CHECK(shown(taken(string)) == "text");
    CHECK(shown(taken(std::string_view(string))) == "text");
    CHECK(shown(taken(array)) == "text");
    CHECK(shown(taken(pointer)) == "text");
    CHECK(shown(taken(static_cast<char*>(nullptr))) == "nothing");
    CHECK(shown(taken(OptionalText("text"))) == "text");
    CHECK(shown(taken(std::optional<std::string>("text"))) == "text");
    CHECK(shown(taken(std::optional<std::string>())) == "nothing");
    CHECK(shown(taken(OwnText{"text"})) == "text");
    CHECK(shown(taken("")).empty());
    CHECK(shown(taken({})) == "nothing");
    CHECK(shown(taken(std::nullopt)) == "nothing");
}

TEST_CASE("the number 0 is no text, no value and no error place") {
    CHECK_FALSE(ImportsFromURLWithZero<TovanaOFXController>);
    CHECK_FALSE(ImportsFromDataWithZero<TovanaOFXController>);
    CHECK_FALSE(ImportsFromZero<TovanaOFXController>);
    CHECK_FALSE(IsMadeOfZero<ParseValue>);
    CHECK_FALSE(IsMadeOfZero<TextArgument>);
    CHECK_FALSE(TakesZero<TvOFXResponse>);
}

TEST_CASE("an encoding can be handed over without formatters") {
    const auto document = Data::view("<OFX><A><B>\xE9</A></OFX>");
    CHECK(TovanaOFXController::importOFXFileFromData(document, TextEncodingISOLatin1) != nullptr);
    CHECK(TovanaOFXController::importOFXFileFromData(document) == nullptr);
    Error error;
    CHECK(TovanaOFXController::importOFXFileFromURL("/does not exist", TextEncodingNone, nullptr, nullptr,
                                                    &error) == nullptr);
    CHECK(error.code == 1);
}

TEST_CASE("a text of a tree is not handed to a function that is empty") {
    CHECK_FALSE(writeIndentedOFXText(ParseDictionary{{"A", "1"}}, nullptr));
}
