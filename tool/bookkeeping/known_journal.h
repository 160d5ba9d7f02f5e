// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "bookkeeping/book.h"

namespace tool {

/// What stands in journals that exist already, in any of the formats: the identities of entries, and what is
/// declared and used. Nothing else of a journal is understood.
class KnownJournal {
public:
    /// Reads a journal and those that it includes. False with a sentence in `error` when one cannot be read.
    bool read(const std::string& path, std::string& error);

    /// False for a journal in which no entry can be found again.
    bool hasIdentities() const noexcept { return !digests_.empty() || !identifiers_.empty(); }
    /// @{
    /// True when an entry has this digest or identifier; takes it out then, so that of two equal transactions
    /// the second is found only where the journal has two.
    bool takeDigest(const BookIdentity& identity);
    bool takeIdentifier(const BookIdentity& identity);
    /// @}

    /// True when a posting is to the account.
    bool uses(std::string_view account) const { return used_.contains(account); }
    /// True when a directive opens the account, or declares the account or the commodity.
    bool declares(std::string_view name) const { return declared_.contains(name); }
    /// The day of the opening balance that an account has; "" when it has none from the tool.
    std::string_view openingDay(std::string_view account) const;

    /// True when it has this line, but for blanks.
    bool hasPrice(std::string_view line) const;

private:
    /// How often an identity is there, by its digest: a journal may have as many as all documents.
    using Counts = std::unordered_map<std::uint64_t, std::uint32_t>;
    static bool take(Counts& counts, std::string_view identity);

    void takeLine(std::string_view line);
    bool takeIdentity(std::string_view text);
    void takePosting(std::string_view line);
    void takeDirective(std::string_view line);

    Counts identifiers_;
    Counts digests_;
    std::set<std::string, std::less<>> used_;
    std::set<std::string, std::less<>> declared_;
    std::set<std::string, std::less<>> prices_;
    std::map<std::string, std::string, std::less<>> openings_;  ///< days by account
    std::string account_;                                       ///< of the last posting
};

}  // namespace tool
