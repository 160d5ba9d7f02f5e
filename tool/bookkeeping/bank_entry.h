// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <cstdint>
#include <optional>
#include <string_view>
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
    std::string_view name;
    brackwell::OptionalText currency;  ///< of the statement, as given
    std::uint32_t statement = 0;       ///< in the order of time
};

/// The other account of an entry of a transaction, which must have an amount.
CounterAccount counterAccountOf(const brackwell::TvOFXStatementTransaction& transaction,
                                const AccountMap& map);

/// The two postings of a bank or card transaction, which must have an amount. The first is its account's. An
/// amount in another currency is converted where its rate is given, and the other posting has it as it was.
std::vector<Posting> bankPostings(const brackwell::TvOFXStatementTransaction& transaction,
                                  const BookedAccount& account, std::string_view counterAccount,
                                  Commodities& commodities);

/// Names the currency of the amount, so that names do not depend on when postings are made.
void nameCurrencies(const brackwell::TvOFXStatementTransaction& transaction,
                    brackwell::OptionalText statementCurrency, Commodities& commodities);

/// What the transaction says besides day and postings.
BookEntry bankTexts(const brackwell::TvOFXStatementTransaction& transaction, const BookIdentity& identity);

/// The same transaction where no entry can be made of it.
BookRemark bankRemark(const brackwell::TvOFXStatementTransaction& transaction, const BookIdentity& identity);

/// True for a number that all formats add up exactly: of at most 24 digits, 15 of them before the point.
bool isBookable(const brackwell::Decimal& number);

/// What a currency beside an amount says.
void addCurrencyFacts(std::vector<BookFact>& facts,
                      const std::optional<brackwell::TransactionCurrency>& currency);

}  // namespace tool
