// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <optional>
#include <string>
#include <vector>

#include "bookkeeping/bank_entry.h"
#include "bookkeeping/book.h"

namespace tool {

/// The two accounts of an investment account.
struct InvestmentNames {
    std::string securities;
    std::string cash;
};

/// The postings of an investment transaction that is no bank transaction; none when it says neither what
/// money nor what units were moved. Securities have what was paid for them, without the costs, as their
/// price; which of the units were sold, documents do not say, so that there are no lots. Amounts in another
/// currency are converted where the rate is given.
///
/// Signs are those of the document, except where units and total of a trade have the same one: then what the
/// trade is decides.
std::vector<Posting> investmentPostings(const brackwell::InvestmentTransaction& transaction,
                                        const std::optional<brackwell::Security>& security,
                                        const InvestmentNames& names, const BookedAccount& account,
                                        const BookContext& context);

/// What the transaction says besides day and postings.
BookEntry investmentTexts(const brackwell::InvestmentTransaction& transaction,
                          const std::optional<brackwell::Security>& security, const BookIdentity& identity);

/// The same transaction where no entry can be made of it.
BookRemark investmentRemark(const brackwell::InvestmentTransaction& transaction,
                            const BookIdentity& identity);

/// What a unit of a position is worth: its price, which of a bond is for 100 of face value and of an option
/// for one of the shares, such that units and price make the market value; nothing when none does.
std::optional<brackwell::Decimal> pricePerUnit(const brackwell::Position& position,
                                               const std::optional<brackwell::Security>& security);

}  // namespace tool
