// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bookkeeping/book.h"

namespace tool {

/// Accounts that books have besides those of documents, and what the names of those begin with.
enum class BookRole : std::uint8_t {
    bank,
    card,
    creditLine,
    investment,
    unknownExpense,
    unknownIncome,
    opening,
    transfers,
    fees,
    commissions,
    taxes,
    interestPaid,
    interest,
    dividends,
    gains,
    otherIncome,
    securities,
};
inline constexpr std::size_t kBookRoles = 17;

/// An account that is the other one of entries: a role, or one that the file names for payees.
enum class CounterAccount : std::uint32_t {};
constexpr CounterAccount counterAccount(BookRole role) noexcept { return static_cast<CounterAccount>(role); }

/// What people call their accounts, payees and commodities. Without a file of theirs it has defaults.
///
///     [accounts]                              # numbers, or their ends; "bank/number" where two are alike
///     "0012345678" = "Assets:Checking"
///     [payees]                                # the first that fits counts: all of its words occur
///     "corner bakery" = "Expenses:Food"
///     [names]                                 # of other accounts
///     unknown-expense = "Expenses:To-Do"
///     [commodities]                           # tickers, identifiers of securities, or currencies
///     "900000101" = "ALDR"
class AccountMap {
public:
    AccountMap();

    /// Reads a file for books in a format. False with a sentence in `error` when it cannot be read, or names
    /// what the format cannot.
    bool read(const std::string& path, BookFormat format, std::string& error);

    /// The name of an account of documents; nothing when the file does not name it.
    std::optional<std::string> nameOf(std::string_view bank, std::string_view number) const;
    /// The account of the first pattern of which all words occur in a payee and a memo; nothing for none.
    std::optional<CounterAccount> counterAccountFor(std::string_view payee, std::string_view memo) const;
    /// @{
    /// Valid as long as the map.
    const std::string& name(BookRole role) const noexcept { return names_[static_cast<std::size_t>(role)]; }
    const std::string& name(CounterAccount account) const noexcept;
    /// @}
    /// The name that is given to a commodity of a document; nothing when the file has none.
    std::optional<std::string> commodity(std::string_view text) const;

private:
    struct Payee {
        std::vector<std::string> words;  ///< as they are searched
        std::string account;
    };
    struct Reader;

    std::map<std::string, std::string, std::less<>> accounts_;
    std::vector<Payee> payees_;
    std::array<std::string, kBookRoles> names_;
    std::map<std::string, std::string, std::less<>> commodities_;
};

}  // namespace tool
