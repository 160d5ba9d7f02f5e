// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "bookkeeping/book.h"
#include "bookkeeping/digest.h"

namespace tool {

struct AccountHistory;
struct InvestmentAccount;

/// @{
/// What an account is by what its institution says of it: the same in every download, whatever name the
/// books have for it.
std::string identityOf(const AccountHistory& account);
std::string identityOf(const InvestmentAccount& account);
/// @}

/// Gives the transactions of one account identities by which a later import finds them again:
///
///   - the identifier is the institution's own (FITID), with a digest of account and amount, since
///     institutions use one identifier for different amounts. It finds a transaction whose texts or day the
///     institution has changed. There is none where the FITID is missing, or where one statement has it with
///     the same amount on several transactions: there it identifies nothing;
///   - the digest is of all that says what was moved when, with the FITID. Transactions with one digest are
///     told apart by counting them.
///
/// Neither has the number of the account in it, so that a journal can be shown.
class Identities {
public:
    explicit Identities(std::string account) : account_(std::move(account)) {}

    /// Notes that a statement has this identifier on a transaction of this amount.
    void meet(std::uint32_t statement, brackwell::OptionalText identifier,
              const std::optional<brackwell::Decimal>& amount);

    BookIdentity of(const brackwell::TvOFXStatementTransaction& transaction) const;
    BookIdentity of(const brackwell::InvestmentTransaction& transaction) const;
    /// Of something else that is said of the account.
    BookIdentity of(std::string_view what, const BookBalance& balance) const;

private:
    struct Met {
        std::uint32_t statement;
        bool isRepeated = false;
    };
    std::string keyOf(std::string_view identifier, const std::optional<brackwell::Decimal>& amount) const;
    std::string identifierOf(brackwell::OptionalText identifier,
                             const std::optional<brackwell::Decimal>& amount) const;

    std::string account_;
    std::unordered_map<std::string, Met> met_;
};

}  // namespace tool
