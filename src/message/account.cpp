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

TvOFXServiceStatus TvOFXAccount::serviceStatus() const noexcept { return record().serviceStatus(); }

OptionalText TvOFXAccount::accountDescription() const noexcept { return record().accountDescription(); }

OptionalText TvOFXAccount::accountPhone() const noexcept { return record().accountPhone(); }

// Everything is asked of the record each time: the record may be shared and is never copied.

/// The record, or an empty one once the view was moved from.
const TvOFXAccountInfo& TvOFXAccount::record() const noexcept {
    static const TvOFXAccountInfo kEmpty;
    return accountInfo_ ? *accountInfo_ : kEmpty;
}

std::shared_ptr<TvOFXBankAccount> TvOFXAccount::bankAccount() const {
    const auto& bank = record().bankAccountInfo();
    return bank ? bank->bankAcctFrom() : nullptr;
}

TvOFXServiceStatus TvOFXAccount::bankingServiceStatus() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::serviceStatus);
}

bool TvOFXAccount::supportsTransactionDownload() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::supportsTransactionDownload);
}

bool TvOFXAccount::isTransferSourceAccount() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::isTransferSourceAccount);
}

bool TvOFXAccount::isTransferDestinationAccount() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::isTransferDestinationAccount);
}

OptionalText TvOFXAccount::bankingBankID() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::bankID);
}

OptionalText TvOFXAccount::bankingBranchID() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::branchID);
}

OptionalText TvOFXAccount::bankingAccountID() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::accountID);
}

OptionalText TvOFXAccount::bankingAcctKeyChecksum() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::acctKeyChecksum);
}

TvOFXBankAccountType TvOFXAccount::bankingAccountType() const noexcept {
    return ask(record().bankAccountInfo(), &TvOFXBankAccountInfo::accountType);
}

TvOFXServiceStatus TvOFXAccount::creditCardServiceStatus() const noexcept {
    return ask(record().creditCardAccountInfo(), &TvOFXCreditCardAccountInfo::serviceStatus);
}

TvOFXServiceStatus TvOFXAccount::paymentsServiceStatus() const noexcept {
    return ask(record().paymentsAccountInfo(), &TvOFXPaymentsAccountInfo::serviceStatus);
}

TvOFXServiceStatus TvOFXAccount::investmentServiceStatus() const noexcept {
    return ask(record().investmentAccountInfo(), &TvOFXInvestmentAccountInfo::serviceStatus);
}

}  // namespace brackwell
