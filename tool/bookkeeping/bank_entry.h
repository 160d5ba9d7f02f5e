// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bookkeeping/account_map.h"
#include "bookkeeping/book.h"
#include "bookkeeping/commodities.h"

namespace tool {

/// What entries are made with.
struct BookContext {
    const AccountMap& map;
    Commodities& commodities;
};

/// The account of documents that an entry is of.
struct BookedAccount {
    std::string name;
    brackwell::OptionalText currency;  ///< of the statement, as given
    std::uint32_t statement = 0;       ///< in the order of time
    std::string defaultDay;            ///< for transactions without one; "" when nothing tells any
};

/// A bank or card transaction as an entry with two postings, the first of which is its account's; nothing
/// when it has no amount or no day, or one that some format does not have. An amount in another currency is
/// converted where its rate is given, and the other posting has it as it was.
std::optional<BookEntry> bankEntry(const brackwell::TvOFXStatementTransaction& transaction,
                                   const BookedAccount& account, const BookIdentity& identity,
                                   const BookContext& context);

/// The same transaction where no entry can be made of it.
BookRemark bankRemark(const brackwell::TvOFXStatementTransaction& transaction, const BookIdentity& identity);

/// A day that all formats have, from the year 1400 on; "" for others and for nothing.
std::string bookDay(std::optional<brackwell::Date> date);

/// True for a number that all formats add up exactly: of at most 24 digits, 15 of them before the point.
bool isBookable(const brackwell::Decimal& number);

/// What a currency beside an amount says.
void addCurrencyFacts(std::vector<BookFact>& facts,
                      const std::optional<brackwell::TransactionCurrency>& currency);

}  // namespace tool
