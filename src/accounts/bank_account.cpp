// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include <array>
#include <tuple>

#include "accounts/account_hash.h"
#include "fields/element_table.h"
#include "fields/ofx_text.h"

namespace brackwell {
namespace {

/// The words of ACCTTYPE. Matching is exact: a word in small letters is an unknown type.
struct TypeText {
    TvOFXBankAccountType type;
    std::string_view text;
};
constexpr std::array<TypeText, 4> kTypeTexts{{{TvOFXBankAccountTypeChecking, "CHECKING"},
                                              {TvOFXBankAccountTypeSavings, "SAVINGS"},
                                              {TvOFXBankAccountTypeMoneyMarket, "MONEYMARKET"},
                                              {TvOFXBankAccountTypeCreditLine, "CREDITLINE"}}};
constexpr std::string_view kTypeKey = "aT";

/// What tells an account from others, in the order in which they are sorted.
auto identityOf(const TvOFXBankAccount& account) noexcept {
    return std::tuple(account.bankID(), account.branchID(), account.accountID(), account.accountType(),
                      account.acctKeyChecksum());
}

}  // namespace

struct BRACKWELL_INTERNAL TvOFXBankAccount::Elements {
    using Self = TvOFXBankAccount;
    static void type(Self& account, const NodeRef& value) {
        if (value.isText()) account.setAccountType(accountTypeFromString(value.text()));
    }
    // The archive keys are in the archives of applications: they can never change.
    static constexpr TextTable<textCount> kTexts{{
        {bankID_, element("BANKID"), "bID"},
        {branchID_, element("BRANCHID"), "branchID"},
        {accountID_, element("ACCTID"), "aID"},
        {acctKeyChecksum_, element("ACCTKEY"), "aKC"},
    }};
    static constexpr auto kTable = elementTable<&Self::texts_, kTexts>({{element("ACCTTYPE"), type}});
};

TvOFXBankAccount::TvOFXBankAccount(const KeyedUnarchiver& coder) {
    decodeTexts(coder, texts_, Elements::kTexts);
    accountType_ = static_cast<TvOFXBankAccountType>(coder.decodeUnsigned(kTypeKey).value_or(0));
}

std::shared_ptr<TvOFXBankAccount> TvOFXBankAccount::initWithBankID(TextArgument bankID,
                                                                   TextArgument accountID,
                                                                   TvOFXBankAccountType type) {
    auto account = std::make_shared<TvOFXBankAccount>();
    account->setBankID(bankID);
    account->setAccountID(accountID);
    account->setAccountType(type);
    return account;
}

std::shared_ptr<TvOFXBankAccount> TvOFXBankAccount::initWithParserDict(
    const std::optional<ParseDictionary>& node) {
    // The base class does not see the node, so the account keeps no parse data: intended.
    auto account = std::make_shared<TvOFXBankAccount>();
    if (node) Elements::kTable.read(*account, NodeRef::of(*node));
    return account;
}

std::string TvOFXBankAccount::description() const {
    // In the order of the OFX standard. Required elements are written even when empty.
    std::string text = "<BANKACCTFROM>\n";
    appendLeaf(text, "BANKID", bankID().value_or(""), ofxVersion());
    if (branchID()) appendLeaf(text, "BRANCHID", *branchID(), ofxVersion());
    appendLeaf(text, "ACCTID", accountID().value_or(""), ofxVersion());
    appendLeaf(text, "ACCTTYPE", accountTypeStringFromAccountType(accountType_), ofxVersion());
    if (acctKeyChecksum()) appendLeaf(text, "ACCTKEY", *acctKeyChecksum(), ofxVersion());
    return text.append("</BANKACCTFROM>\n");
}

void TvOFXBankAccount::encodeWithCoder(KeyedArchiver& coder) const {
    encodeTexts(coder, texts_, Elements::kTexts);
    coder.encodeUnsigned(kTypeKey, accountType_);
}

std::string_view TvOFXBankAccount::className() const noexcept { return "TvOFXBankAccount"; }

TvOFXBankAccountType TvOFXBankAccount::accountTypeFromString(std::string_view text) noexcept {
    for (const TypeText& row : kTypeTexts)
        if (row.text == text) return row.type;
    return TvOFXBankAccountTypeUnknown;
}

std::string_view TvOFXBankAccount::accountTypeStringFromAccountType(TvOFXBankAccountType type) noexcept {
    for (const TypeText& row : kTypeTexts)
        if (row.type == type) return row.text;
    return "";
}

bool TvOFXBankAccount::isEqualToOFXBankAccount(const TvOFXBankAccount* other) const noexcept {
    return other != nullptr && accountType_ == other->accountType_ &&
           agreeOnTexts(texts_, other->texts_, Elements::kTexts);
}

bool TvOFXBankAccount::operator==(const TvOFXBankAccount& other) const noexcept {
    return identityOf(*this) == identityOf(other);
}

std::strong_ordering TvOFXBankAccount::operator<=>(const TvOFXBankAccount& other) const noexcept {
    return identityOf(*this) <=> identityOf(other);
}

}  // namespace brackwell

std::size_t std::hash<brackwell::TvOFXBankAccount>::operator()(
    const brackwell::TvOFXBankAccount& account) const noexcept {
    return brackwell::accountHash(account.accountType(), {account.bankID(), account.branchID(),
                                                          account.accountID(), account.acctKeyChecksum()});
}
