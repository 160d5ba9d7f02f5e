// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "lines.h"
#include "support/documents.h"
#include "support/transcript.h"
#include "target.h"

/// \file
/// Three lines are texts that an application sets, the fourth is a version: what is set is answered, kept by
/// archives, and written so that it is read as the same.

namespace brackwell::fuzz {
namespace {

/// What an application hands in.
struct Texts {
    std::string_view first;
    std::string_view second;
    std::string_view third;
    std::uint64_t ofxVersion;
};

/// True when a text is one that is read as it is written: UTF-8 without characters of markup, which are not
/// escaped, and without what reading trims.
bool isPlain(std::string_view text) {
    return !text.empty() && isValidUTF8(text) && trimWhiteSpace(text) == text &&
           text.find_first_of("<>&") == std::string_view::npos;
}

ParseDictionary readBack(std::string_view text) {
    const std::optional<ParseDictionary> tree = TvOFXParser::parseOFXDataString(text);
    require(tree.has_value(), "what is written can be read");
    return *tree;
}

void requireWritten(TvOFXBankAccount& account, const Texts& texts, bool arePlain) {
    account.setOfxVersion(texts.ofxVersion);
    account.setBankID(texts.first);
    account.setBranchID(texts.second);
    account.setAccountID(texts.third);
    require(account.bankID() == texts.first && account.branchID() == texts.second &&
                account.accountID() == texts.third,
            "an account answers what was set");
    if (isValidUTF8(texts.first) && isValidUTF8(texts.second) && isValidUTF8(texts.third)) {
        const auto again = tests::restored(account);
        require(again && tests::transcriptOf(*again) == tests::transcriptOf(account),
                "an account comes back from its archive");
    }
    if (!arePlain) return;
    const ParseDictionary tree = readBack(account.description());
    const auto read = TvOFXBankAccount::initWithParserDict(tree["BANKACCTFROM"].dictionary());
    require(account.isEqualToOFXBankAccount(read.get()) && read->accountID() == texts.third,
            "an account's text is read as that account");
}

void requireSwept(TvOFXBankAccount& account) {
    account.setBankID(std::nullopt);
    account.setBranchID(std::nullopt);
    account.setAccountID(std::nullopt);
    require(!account.bankID() && !account.branchID() && !account.accountID(),
            "what was set can be taken away");
    require(account.isEqualToOFXBankAccount(&account), "an account without texts is equal to itself");
}

void requireWritten(TvOFXSignOnResponse& response, const Texts& texts, bool arePlain) {
    const auto institution = std::make_shared<TvOFXFinancialInstitutionIdentification>();
    institution->setOfxVersion(texts.ofxVersion);
    institution->setOrganization(texts.first);
    institution->setFid(texts.second);
    response.setOfxVersion(texts.ofxVersion);
    // Without a status a text would stand in its place, and take what follows for its own.
    response.setStatus(TvOFXStatus::initWithParseDict(ParseDictionary{{"CODE", "0"}, {"SEVERITY", "INFO"}}));
    response.setFinancialInstitutionID(institution);
    response.setLanguage(texts.first);
    response.setUserKey(texts.second);
    response.setSessionCookie(texts.third);
    const std::string transcript = tests::transcriptOf(response);
    require(transcript == tests::transcriptOf(response), "asking changes nothing");
    if (!arePlain) return;
    const ParseDictionary tree = readBack(response.ofxString());
    const auto read = TvOFXSignOnResponse::initWithParseDict(tree["SONRS"].dictionary());
    require(read->language() == texts.first && read->userKey() == texts.second &&
                read->sessionCookie() == texts.third,
            "a reply's text is read as that reply");
    const auto& fi = read->financialInstitutionID();
    require(fi && fi->organization() == texts.first && fi->fid() == texts.second,
            "an institution's text is read as that institution");
}

void requireWritten(TvOFXRequest& request, const Texts& texts, std::string_view date, bool arePlain) {
    request.setOfxVersion(texts.ofxVersion);
    require(request.ofxString() == request.ofxString(), "a request is written the same twice");
    if (!arePlain) return;
    const ParseDictionary tree = readBack(request.ofxString());
    const ParseValue wrapper = tree[*request.transactionWrapperName()];
    require(wrapper["TRNUID"].text() == request.transactionUID(), "a request's identifier is read back");
    const ParseValue read = wrapper[request.requestIdentifier()];
    require(read[date].text() == texts.first, "a request's date is read back");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    Lines lines(bytes);
    Texts texts{lines.next(), lines.next(), lines.next(), 0};
    texts.ofxVersion = static_cast<std::uint64_t>(leadingInteger(lines.rest()));
    const bool arePlain = isPlain(texts.first) && isPlain(texts.second) && isPlain(texts.third);

    const auto account = TvOFXBankAccount::initWithBankID(
        std::nullopt, std::nullopt, TvOFXBankAccount::accountTypeFromString(texts.second));
    requireWritten(*account, texts, arePlain && account->accountType() != TvOFXBankAccountTypeUnknown);
    requireSwept(*account);
    TvOFXSignOnResponse response;
    requireWritten(response, texts, arePlain);
    TvOFXAccountInfoRequest accounts(texts.first);
    requireWritten(accounts, texts, "DTACCTUP", arePlain);
    TvOFXFIProfileRequest profile(texts.first);
    profile.setClientRouting(static_cast<std::int32_t>(texts.third.size() % 3));
    requireWritten(profile, texts, "DTPROFUP", arePlain);
}

}  // namespace brackwell::fuzz
