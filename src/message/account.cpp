// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include <utility>

namespace brackwell {
namespace {

/// The answer of a block of a record; the answer's default when the record has no such block.
template <class Block, class Answer>
Answer ask(const std::shared_ptr<Block>& block, Answer (Block::*question)() const noexcept) noexcept {
    return block ? ((*block).*question)() : Answer();
}

}  // namespace

std::shared_ptr<TvOFXAccount> TvOFXAccount::initWithAccountInfos(
    std::shared_ptr<const TvOFXAccountInfo> accountInfo) {
    if (!accountInfo) return nullptr;
    return std::shared_ptr<TvOFXAccount>(new TvOFXAccount(std::move(accountInfo)));
}

std::string TvOFXAccount::description() const {
    std::string text = "TvOFXAccount:\n";
    if (accountDescription()) text.append("description = ").append(*accountDescription()).append("\n");
    return text;
}

void TvOFXAccount::setCountry(TextArgument country) {
    country_ = country ? std::optional<std::string>(*country) : std::nullopt;
}

TvOFXServiceStatus TvOFXAccount::serviceStatus() const noexcept { return accountInfo_->serviceStatus(); }

OptionalText TvOFXAccount::accountDescription() const noexcept { return accountInfo_->accountDescription(); }

OptionalText TvOFXAccount::accountPhone() const noexcept { return accountInfo_->accountPhone(); }

// Everything is asked of the record each time: the record may be shared and is never copied.

std::shared_ptr<TvOFXBankAccount> TvOFXAccount::bankAccount() const {
    const auto& bank = accountInfo_->bankAccountInfo();
    return bank ? bank->bankAcctFrom() : nullptr;
}

TvOFXServiceStatus TvOFXAccount::bankingServiceStatus() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::serviceStatus);
}

bool TvOFXAccount::supportsTransactionDownload() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::supportsTransactionDownload);
}

bool TvOFXAccount::isTransferSourceAccount() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::isTransferSourceAccount);
}

bool TvOFXAccount::isTransferDestinationAccount() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::isTransferDestinationAccount);
}

OptionalText TvOFXAccount::bankingBankID() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::bankID);
}

OptionalText TvOFXAccount::bankingBranchID() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::branchID);
}

OptionalText TvOFXAccount::bankingAccountID() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::accountID);
}

OptionalText TvOFXAccount::bankingAcctKeyChecksum() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::acctKeyChecksum);
}

TvOFXBankAccountType TvOFXAccount::bankingAccountType() const noexcept {
    return ask(accountInfo_->bankAccountInfo(), &TvOFXBankAccountInfo::accountType);
}

TvOFXServiceStatus TvOFXAccount::creditCardServiceStatus() const noexcept {
    return ask(accountInfo_->creditCardAccountInfo(), &TvOFXCreditCardAccountInfo::serviceStatus);
}

TvOFXServiceStatus TvOFXAccount::paymentsServiceStatus() const noexcept {
    return ask(accountInfo_->paymentsAccountInfo(), &TvOFXPaymentsAccountInfo::serviceStatus);
}

TvOFXServiceStatus TvOFXAccount::investmentServiceStatus() const noexcept {
    return ask(accountInfo_->investmentAccountInfo(), &TvOFXInvestmentAccountInfo::serviceStatus);
}

}  // namespace brackwell
