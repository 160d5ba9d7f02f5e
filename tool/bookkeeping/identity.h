// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

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

    /// Notes that a statement has this identifier on a transaction of this amount. The transactions of one
    /// statement come one after the other.
    void meet(std::uint32_t statement, brackwell::OptionalText identifier,
              const std::optional<brackwell::Decimal>& amount);
    /// To be called after the last of these.
    void finish();

    /// True for an identifier that identifies nothing.
    bool isRepeated(brackwell::OptionalText identifier,
                    const std::optional<brackwell::Decimal>& amount) const;

    /// @{
    /// The digest of the content.
    std::uint64_t digestOf(const brackwell::TvOFXStatementTransaction& transaction) const;
    std::uint64_t digestOf(const brackwell::InvestmentTransaction& transaction) const;
    /// @}
    BookIdentity of(const brackwell::TvOFXStatementTransaction& transaction) const;
    BookIdentity of(const brackwell::InvestmentTransaction& transaction) const;
    /// Of something else that is said of the account.
    BookIdentity of(std::string_view what, const BookBalance& balance) const;

private:
    void finishStatement();
    std::uint64_t keyOf(std::string_view identifier, const std::optional<brackwell::Decimal>& amount) const;
    std::string identifierOf(brackwell::OptionalText identifier,
                             const std::optional<brackwell::Decimal>& amount) const;

    std::string account_;
    std::uint32_t statement_ = 0;          ///< whose transactions are met
    std::vector<std::uint64_t> met_;       ///< keys of that statement
    std::vector<std::uint64_t> repeated_;  ///< keys that a statement has twice; sorted once all are known
};

/// Tells which transactions an earlier statement of the account had already, where only their content tells
/// it: of equal ones the number.
class StatedBefore {
public:
    /// True when earlier statements had as many with this digest as this statement has so far.
    bool has(std::uint64_t digest, std::uint32_t statement);

private:
    struct Equal {
        std::size_t count = 0;  ///< of all statements, each in one statement
        std::size_t met = 0;    ///< in this statement
        std::uint32_t statement = 0;
    };
    std::unordered_map<std::uint64_t, Equal> equals_;
};

}  // namespace tool
