// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "filter/filter.h"
#include "history/investment_history.h"
#include "input/input_file.h"

/// \file
/// What several files say together: files -> accounts -> transactions. The statements of all files are
/// sorted by account, and each transaction knows whether an earlier statement had it already (repeats.h
/// says when two are the same).
///
///     History history;
///     const bool allRead = readHistory(run, history);
///     for (const AccountHistory& account : history.accounts())
///         for (const HistoryEntry& entry : account.entries)
///             if (entry.isOriginal()) ...

namespace tool {

struct Run;

/// A statement, and where it stands.
struct HistoryStatement {
    std::shared_ptr<const brackwell::TvOFXAccountStatement> statement;
    std::string file;         ///< as on the command line
    std::string institution;  ///< the organisation of the file's sign-on; "" when it names none
};

/// A transaction of an account.
struct HistoryEntry {
    const brackwell::TvOFXStatementTransaction* transaction;  ///< the statement owns it
    std::uint32_t statement;                                  ///< in AccountHistory::statements
    /// The first of the entries that are the same transaction, where that is another one.
    std::uint32_t original = kIsOriginal;

    /// False for one that an earlier statement of the account had already.
    bool isOriginal() const noexcept { return original == kIsOriginal; }
};

/// An account in one currency, with everything that the files say of it.
struct AccountHistory {
    std::shared_ptr<const brackwell::TvOFXBankAccount> bankAccount;  ///< one of these, or none where the
    std::shared_ptr<const brackwell::TvOFXCreditCardAccount> card;   ///< statement names no account
    bool isCard = false;
    std::string currency;                      ///< as the first statement has it; "" when that has none
    std::vector<HistoryStatement> statements;  ///< in the order of files, and within one of the document
    std::vector<HistoryEntry> entries;         ///< all transactions of these in their order
    std::size_t repeats = 0;                   ///< how many entries are not original

    /// The entries' transactions that are not original, sorted, for std::ranges::binary_search.
    std::vector<const brackwell::TvOFXStatementTransaction*> repeatedTransactions() const;
    brackwell::OptionalText number() const noexcept;
    /// As the last file that names one has it, since institutions change their names; "" when none does.
    std::string_view institution() const noexcept;
};

/// The accounts of several files in the order in which they come first.
///
/// Two statements are of one account when the library calls their accounts equal and besides the
/// accounts' numbers are the same, or both have none, and so are the statements' currencies, since
/// amounts in different currencies cannot be added. A statement that names no account stands alone. Of
/// the accounts that have the same number, at most 64 are compared with one: no files take quadratic time.
class History {
public:
    /// The statements of a file whose accounts are wanted.
    void add(const InputFile& input, const Filter& filter);
    /// Makes the entries of the accounts, with what several statements have. To be called after the last
    /// file.
    void finish();

    void addUnread(const std::string& file) { unread_.push_back(file); }

    const std::vector<AccountHistory>& accounts() const noexcept { return accounts_; }
    const InvestmentHistory& investments() const noexcept { return investments_; }
    /// The accounts of account lists.
    const std::vector<brackwell::ListedAccount>& listed() const noexcept { return listed_; }
    /// The files, and folders and archives, that could not be read or hold no document.
    const std::vector<std::string>& unread() const noexcept { return unread_; }

private:
    using Key = std::pair<std::string, std::optional<std::string>>;  ///< currency, and number of the account
    std::size_t placeOf(const brackwell::TvOFXAccountStatement& statement);

    std::vector<AccountHistory> accounts_;
    std::map<Key, std::vector<std::size_t>> places_;
    InvestmentHistory investments_;
    std::vector<brackwell::ListedAccount> listed_;
    std::vector<std::string> unread_;
};

/// Reads what the files of the command line say of the accounts that are wanted. All transactions of these
/// are kept, wanted or not, since balances follow from all of them. Each file is handed on after that. False
/// when a file could not be read.
bool readHistory(Run& run, History& history, const std::function<void(const InputFile&)>& use = {});

}  // namespace tool
