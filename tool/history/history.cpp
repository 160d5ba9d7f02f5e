// SPDX-License-Identifier: Apache-2.0
#include "history/history.h"

#include <algorithm>
#include <new>
#include <set>

#include "history/repeats.h"
#include "input/run.h"

namespace tool {
namespace {

using namespace brackwell;

/// An account without transactions, with what a statement says of it.
AccountHistory accountFrom(const TvOFXAccountStatement& statement) {
    AccountHistory account;
    if (const auto* bank = dynamic_cast<const TvOFXStatementResponse*>(&statement))
        account.bankAccount = bank->bankAccountFrom();
    if (const auto* card = dynamic_cast<const TvOFXCCStatementResponse*>(&statement)) {
        account.card = card->creditCardAccountFrom();
        account.isCard = true;
    }
    account.currency = trimWhiteSpace(statement.defaultCurrency().value_or(""));
    return account;
}

bool isSameAccount(const AccountHistory& a, const AccountHistory& b) {
    if (a.bankAccount) return a.bankAccount->isEqualToOFXBankAccount(b.bankAccount.get());
    return a.card && a.card->isEqualToOFXCreditCardAccount(b.card.get());
}

std::string institutionOf(const OpenedDocument& document) {
    const auto& signOn = document.signOn();
    const auto institution = signOn ? signOn->financialInstitutionID() : nullptr;
    return institution ? std::string(institution->organization().value_or("")) : std::string();
}

/// Exactly as large as it has to be: a list that grows is there twice.
void enterTransactions(AccountHistory& account) {
    std::size_t count = 0;
    for (const HistoryStatement& held : account.statements)
        count += held.statement->statementTransactions().size();
    account.entries.reserve(count);
    for (std::uint32_t i = 0; i < account.statements.size(); ++i)
        for (const auto& transaction : account.statements[i].statement->statementTransactions())
            account.entries.push_back({transaction.get(), i});
}

}  // namespace

std::vector<const TvOFXStatementTransaction*> AccountHistory::repeatedTransactions() const {
    std::vector<const TvOFXStatementTransaction*> repeated;
    repeated.reserve(repeats);
    for (const HistoryEntry& entry : entries)
        if (!entry.isOriginal()) repeated.push_back(entry.transaction);
    std::ranges::sort(repeated);
    return repeated;
}

OptionalText AccountHistory::number() const noexcept {
    if (bankAccount) return bankAccount->accountID();
    return card ? card->accountID() : std::nullopt;
}

std::string_view AccountHistory::institution() const noexcept {
    const auto named =
        std::find_if(statements.rbegin(), statements.rend(),
                     [](const HistoryStatement& statement) { return !statement.institution.empty(); });
    return named == statements.rend() ? std::string_view() : named->institution;
}

void History::add(const InputFile& input, const Filter& filter) {
    for (const OpenedDocument& opened : input.file.documents()) {
        const std::string institution = institutionOf(opened);
        for (const auto& statement : opened.statements())
            if (filter.takes(*statement))
                accounts_[placeOf(*statement)].statements.push_back({statement, input.name, institution});
        investments_.add(opened, input.name, institution, filter);
        listed_.insert(listed_.end(), opened.accounts().begin(), opened.accounts().end());
    }
}

void History::finish() {
    for (AccountHistory& account : accounts_) {
        enterTransactions(account);
        noteRepeats(account);
    }
    investments_.finish();
}

std::size_t History::placeOf(const TvOFXAccountStatement& statement) {
    AccountHistory account = accountFrom(statement);
    Key key(account.currency, account.number());
    std::vector<std::size_t>& places = places_[std::move(key)];
    const std::size_t count = std::min(places.size(), kMostCompared);
    for (std::size_t i = 0; i < count; ++i)
        if (isSameAccount(account, accounts_[places[i]])) return places[i];
    places.push_back(accounts_.size());
    accounts_.push_back(std::move(account));
    return places.back();
}

bool readHistory(Run& run, History& history, const std::function<void(const InputFile&)>& use) {
    std::set<std::string> read;
    std::size_t begun = 0;
    std::size_t added = 0;
    const bool allRead = forEachFile(run, [&](const InputFile& input) {
        ++begun;
        history.add(input, run.options.filter);
        ++added;
        read.insert(input.name);
        if (use) use(input);
    });
    // With a part of a document in it, whatever is made of the history would be wrong.
    if (added < begun) throw std::bad_alloc();
    history.finish();
    for (const InputSource& file : run.options.named.files)
        if (!read.contains(file.name)) history.addUnread(file.name);
    for (const InputNote& error : run.options.named.errors) history.addUnread(error.subject);
    return allRead;
}

}  // namespace tool
