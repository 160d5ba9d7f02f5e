// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// What plain-text accounting makes of documents, before it is written in one of its formats: entries with
/// postings, balances, prices, and what none of the formats can hold. Days are texts like "2024-01-31", so
/// that their order is that of the texts; those of drafts, of which there are many, are numbers. Names of
/// accounts and commodities belong to Drafts, and names of files to the History.

namespace tool {

class Drafts;

/// The formats of plain-text accounting.
enum class BookFormat : std::uint8_t { hledger, ledger, beancount };

/// Something that a document says and no number or account of an entry does. Names are those of the
/// getters ("transactionType"), which all formats take for names; texts are those of the document.
struct BookFact {
    std::string_view name;  ///< never destroyed
    std::string text;
};

/// The names under which a journal keeps what its entries are made from, and by which a later import finds
/// them (identity.h).
inline constexpr std::string_view kIdentifierName = "ofxid";
inline constexpr std::string_view kDigestName = "ofxdigest";
/// The name under which it keeps the day from which on an account has what it began with.
inline constexpr std::string_view kOpeningName = "ofxopening";

/// How a transaction is found again in a journal.
struct BookIdentity {
    std::string identifier;  ///< of the institution, with a digest; "" where it has none that tells
    std::string digest;      ///< of the content

    bool isEmpty() const noexcept { return digest.empty(); }
};

/// A part of an entry: so much goes to an account.
struct Posting {
    std::string_view account;
    brackwell::Decimal quantity;
    std::string_view commodity;
    std::uint32_t statement = 0;  ///< the first that has it, in the order of time
    /// What all of the quantity was exchanged for, never negative; none: for nothing.
    std::optional<brackwell::Decimal> cost = {};
    std::string_view costCommodity = {};
    BookIdentity identity = {};  ///< of the transaction of the account; empty for other accounts
    std::vector<BookFact> facts = {};
};

/// A transaction of a journal. Postings add up to nothing, with what they cost in the place of what has a
/// cost.
struct BookEntry {
    std::string day;
    std::string payee;
    std::string memo;
    std::string code;  ///< the number of a cheque
    std::vector<BookFact> facts;
    std::vector<Posting> postings;
};

/// What an account has at the end of a day, as a document says it.
struct BookBalance {
    std::string day;
    std::string_view account;
    brackwell::Decimal amount;
    std::string_view commodity;
    BookIdentity identity;
    std::uint32_t statement = 0;  ///< that says it, in the order of time
    std::string_view file;        ///< of the statement, as on the command line
    bool isCovered = true;        ///< the documents have the transactions up to this day
    std::string objection;        ///< why a journal must not rely on it; "" when it may
    std::vector<BookFact> facts;
};

/// What a unit of a security is worth at the end of a day.
struct BookPrice {
    std::string day;
    std::string_view commodity;
    brackwell::Decimal price;
    std::string_view currency;

    bool operator==(const BookPrice&) const = default;
};

/// What has a place in a journal only as a comment: a transaction without an amount or a day.
struct BookRemark {
    std::string day;  ///< "" for none
    std::string text;
    BookIdentity identity;
    std::vector<BookFact> facts;
};

/// A commodity with what documents say of it.
struct BookCommodity {
    std::string name;
    bool isCurrency = false;
    int decimals = 0;  ///< that its amounts have at least
    std::vector<BookFact> facts;
};

/// An account that entries need.
struct BookAccount {
    std::string_view name;
    std::string day;  ///< from which on it is open
};

/// All of it, each list in the order in which it is written. What a journal has already is not in it. There
/// may be millions of entries, so each is made when it is written, and only its draft is kept.
struct Book {
    const Drafts* drafts = nullptr;                    ///< they have to live as long as the book
    std::map<std::string, int, std::less<>> decimals;  ///< of the amounts of a commodity, at least
    std::vector<BookAccount> accounts;
    std::vector<BookCommodity> commodities;
    std::vector<BookEntry> openings;
    std::vector<std::uint32_t> entries;  ///< the numbers of drafts
    std::vector<BookBalance> balances;
    std::vector<BookPrice> prices;
};

}  // namespace tool
