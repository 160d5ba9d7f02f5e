// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "filter/filter.h"
#include "investments/named_securities.h"

/// \file
/// What several files say together of investments: files -> accounts -> transactions, as history.h has it of
/// bank accounts.

namespace tool {

/// Stands for itself in the place of an original.
inline constexpr std::uint32_t kIsOriginal = std::numeric_limits<std::uint32_t>::max();

/// A statement, and where it stands.
struct InvestmentSource {
    brackwell::InvestmentStatement statement;
    std::string file;         ///< as on the command line
    std::string institution;  ///< the organisation of the file's sign-on; "" when it names none
    std::shared_ptr<const brackwell::SecurityList> securities;  ///< of its document
};

/// A transaction of an investment account.
struct InvestmentEntry {
    brackwell::InvestmentTransaction transaction;
    std::uint32_t statement;  ///< in InvestmentAccount::statements
    /// The first of the entries that are the same transaction, where that is another one.
    std::uint32_t original = kIsOriginal;

    bool isOriginal() const noexcept { return original == kIsOriginal; }
};

/// An investment account in one currency.
struct InvestmentAccount {
    std::string broker;
    std::string number;
    std::string currency;
    std::vector<InvestmentSource> statements;  ///< in the order of files, and within one of the document
    std::vector<InvestmentEntry> entries;      ///< all transactions of these in their order
    std::size_t repeats = 0;                   ///< how many entries an earlier statement had already

    /// As the last file that names one has it; "" when none does.
    std::string_view institution() const noexcept;
    /// The statement with the latest date; of several, and where none has a date, the last.
    const brackwell::InvestmentStatement& latest() const noexcept { return latestSource().statement; }
    const InvestmentSource& latestSource() const noexcept;
};

/// The investment accounts of several files in the order in which they come first. Statements are of one
/// account when broker, number and currency are the same; one without a number stands alone, and one that
/// says nothing but that it was refused is left out.
///
/// Two transactions of different statements are the same when they have the same identifier of the
/// institution (FITID), kind, security, units, total and currency. Equal ones of one statement are different
/// ones.
class InvestmentHistory {
public:
    void add(const brackwell::OpenedDocument& document, const std::string& file,
             const std::string& institution, const Filter& filter);
    /// Makes the entries of the accounts, with what several statements have. To be called after the last
    /// document.
    void finish();

    const std::vector<InvestmentAccount>& accounts() const noexcept { return accounts_; }
    /// Of all files.
    const std::vector<brackwell::Security>& securities() const noexcept { return securities_; }
    /// Those that are wanted and that no statement of any file names, each once.
    std::vector<brackwell::Security> otherSecurities() const;

private:
    std::size_t placeOf(const brackwell::InvestmentStatement& statement);

    std::vector<InvestmentAccount> accounts_;
    std::map<std::string, std::size_t> places_;
    std::vector<brackwell::Security> securities_;
    std::vector<brackwell::Security> wantedSecurities_;
    NamedSecurities named_;
};

}  // namespace tool
