// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

/// \file
/// An application of somebody else: reads a folder of downloads with several threads into structs of its own,
/// which outlive all documents, and prints a ledger: each transaction once, however many downloads have it,
/// what is held, and what went wrong. It knows the public headers and the pages of the library, and nothing
/// else.
///
///     ledger FOLDER

namespace {

namespace fs = std::filesystem;
namespace bw = brackwell;

// ---------------------------------------------------------------------------------------------
// What the application keeps

enum class AccountKind { bank, card, investment };

/// What makes two accounts the same one.
struct AccountKey {
    AccountKind kind = AccountKind::bank;
    std::string institution;  ///< of a bank its number, of a broker its identifier
    std::string number;
    std::string currency;

    auto operator<=>(const AccountKey&) const = default;
};

struct Entry {
    std::optional<bw::Date> date;
    bw::Decimal amount;
    std::string foreign;  ///< the currency of the amount; empty: that of the account
    std::string id;
    std::string text;
    std::shared_ptr<bw::TvOFXStatementTransaction> source;  ///< a copy that holds no document

    bool comesBefore(const Entry& other) const { return date < other.date; }
};

struct Balance {
    bw::Date date;
    bw::Decimal amount;
};

struct Holding {
    std::string security;
    std::optional<bw::Decimal> units;
    std::optional<bw::Decimal> value;
    std::string foreign;  ///< like that of an entry
};

/// One account as one download has it.
struct AccountPart {
    AccountKey key;
    std::vector<Entry> entries;
    std::size_t incomplete = 0;  ///< transactions that have no amount
    std::optional<Balance> balance;
    std::optional<bw::Date> asOf;  ///< of the holdings
    std::vector<Holding> holdings;
};

/// All that is known of a download when its document is gone.
struct Download {
    std::string name;
    std::string failure;  ///< empty when it was read
    std::vector<std::string> remarks;
    std::vector<AccountPart> accounts;
};

/// One account of all downloads.
struct Account {
    std::vector<Entry> entries;
    std::size_t repeated = 0;
    std::optional<Balance> balance;
    std::optional<bw::Date> asOf;
    std::vector<Holding> holdings;
};

using Ledger = std::map<AccountKey, Account>;

// ---------------------------------------------------------------------------------------------
// From the library's objects to those of the application

std::string owned(bw::OptionalText text) { return std::string(text.value_or("")); }

AccountKey keyOf(const bw::TvOFXAccountStatement& statement) {
    const bw::StatementAccount account = bw::accountOf(statement);
    AccountKey key;
    key.kind = account.card ? AccountKind::card : AccountKind::bank;
    if (account.bank) key.institution = owned(account.bank->bankID());
    key.number = owned(account.accountID());
    key.currency = owned(statement.defaultCurrency());
    return key;
}

/// What a person wants to see of a transaction: the payee, who may have an aggregate, or else the memo.
std::string textOf(const bw::TvOFXStatementTransaction& transaction) {
    if (const bw::OptionalText name = transaction.payeeName()) return owned(name);
    if (const auto payee = transaction.payee(); payee && payee->name()) return owned(payee->name());
    return owned(transaction.memo());
}

/// The currency that an amount is in when it is not the account's. One that was converted is in the
/// account's.
std::string foreignOf(const std::optional<bw::TransactionCurrency>& currency) {
    return currency && !currency->isConverted ? currency->symbol : std::string();
}

void addTransaction(AccountPart& part, const std::shared_ptr<bw::TvOFXStatementTransaction>& transaction) {
    const std::optional<bw::Decimal> amount = transaction->amount();
    if (!amount) {
        ++part.incomplete;
        return;
    }
    part.entries.push_back({transaction->datePosted(), *amount, foreignOf(bw::currencyOf(*transaction)),
                            owned(transaction->fiTransactionID()), textOf(*transaction),
                            bw::detached(transaction)});
}

AccountPart partOf(const bw::TvOFXAccountStatement& statement) {
    AccountPart part;
    part.key = keyOf(statement);
    for (const auto& transaction : statement.statementTransactions()) addTransaction(part, transaction);
    if (statement.ledgerBalanceAmount() && statement.ledgerBalanceDateTime())
        part.balance = Balance{*statement.ledgerBalanceDateTime(), *statement.ledgerBalanceAmount()};
    return part;
}

AccountPart partOf(const bw::InvestmentStatement& statement, const bw::SecurityList& securities) {
    AccountPart part;
    part.key.kind = AccountKind::investment;
    part.key.currency = owned(statement.currency());
    if (const auto account = statement.account()) {
        part.key.institution = owned(account->brokerID().text());
        part.key.number = owned(account->accountID().text());
    }
    part.asOf = statement.asOf();
    for (const bw::Position position : statement.positions()) {
        const std::optional<bw::Security> security = securities.find(position);
        const bw::OptionalText name = security ? security->name() : std::nullopt;
        part.holdings.push_back({name ? owned(name) : owned(position.securityID()), position.units(),
                                 position.marketValue(), foreignOf(position.currency())});
    }
    for (const bw::InvestmentTransaction transaction : statement.transactions()) {
        if (const auto money = transaction.bankTransaction()) {
            addTransaction(part, money);
            continue;
        }
        const std::optional<bw::Decimal> total = transaction.total();
        if (!total) continue;  // moves securities, and no money
        const std::optional<bw::Security> security = securities.find(transaction);
        part.entries.push_back({transaction.tradeDate(), *total, foreignOf(transaction.currency()),
                                owned(transaction.fiTransactionID()),
                                std::string(transaction.elementName()) + " " +
                                    (security ? owned(security->name()) : owned(transaction.securityID())),
                                nullptr});
    }
    return part;
}

std::string sentenceFor(const bw::Finding& finding) {
    std::string sentence(bw::nameOf(finding.severity));
    if (finding.line != 0) sentence += ", line " + std::to_string(finding.line);
    return sentence + ": " + finding.text;
}

Download read(const fs::path& path) {
    Download download;
    download.name = path.filename().string();
    const bw::OpenedFile file =
        bw::openFile(path, {.maximumSize = std::size_t{32} << 20, .maximumDepth = 200});
    for (const bw::Finding& finding : file.findings()) download.remarks.push_back(sentenceFor(finding));
    if (!file) {
        download.failure = file.error().description();
        return download;
    }
    for (const auto& statement : file.statements()) download.accounts.push_back(partOf(*statement));
    for (const bw::InvestmentStatement& statement : file.investmentStatements())
        download.accounts.push_back(partOf(statement, file.securities()));
    // A refusal is a statement without anything; the remarks tell of it.
    std::erase_if(download.accounts, [](const AccountPart& part) {
        return part.key.number.empty() && part.entries.empty() && part.holdings.empty() &&
               part.incomplete == 0;
    });
    // Statements that name no account may be of any, so those of two downloads must not become one.
    for (AccountPart& part : download.accounts)
        if (part.key.number.empty()) part.key.number = "without a number in " + download.name;
    return download;
}

// ---------------------------------------------------------------------------------------------
// Threads

std::vector<fs::path> downloadsIn(const fs::path& folder, std::error_code& error) {
    std::vector<fs::path> paths;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string kind = entry->path().extension().string();
        std::error_code ignored;
        if ((kind == ".ofx" || kind == ".qfx") && entry->is_regular_file(ignored))
            paths.push_back(entry->path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// Each thread takes the next download that nobody has, and has a place of its own for each result.
std::vector<Download> readAll(const std::vector<fs::path>& paths) {
    std::vector<Download> downloads(paths.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < paths.size(); i = next++) downloads[i] = read(paths[i]);
    };
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < std::min<std::size_t>(4, paths.size()); ++i) threads.emplace_back(work);
    for (std::thread& thread : threads) thread.join();
    return downloads;
}

// ---------------------------------------------------------------------------------------------
// The ledger

/// True when both are the same transaction. Identifiers are unique within one account at best, so the
/// library's comparison, which looks at amounts first, has the last word where it can be asked.
bool isSame(const Entry& a, const Entry& b) {
    if (a.source && b.source) return a.source->isEqualOFXStatementTransaction(b.source.get());
    return !a.source && !b.source && !a.id.empty() && a.id == b.id && a.amount == b.amount;
}

/// Adds what is new. Only transactions that earlier downloads brought count as known: two that are alike in
/// one download are two.
void addEntries(Account& account, const std::vector<Entry>& entries) {
    std::multimap<std::pair<std::string, std::string>, std::size_t> known;
    const auto slot = [](const Entry& entry) { return std::pair(entry.id, entry.amount.toString()); };
    for (std::size_t i = 0; i < account.entries.size(); ++i) known.emplace(slot(account.entries[i]), i);
    for (const Entry& entry : entries) {
        const auto [begin, end] = known.equal_range(slot(entry));
        const bool isKnown = std::any_of(
            begin, end, [&](const auto& other) { return isSame(entry, account.entries[other.second]); });
        if (isKnown)
            ++account.repeated;
        else
            account.entries.push_back(entry);
    }
}

void add(Ledger& ledger, const AccountPart& part) {
    Account& account = ledger[part.key];
    addEntries(account, part.entries);
    if (part.balance && (!account.balance || account.balance->date < part.balance->date))
        account.balance = part.balance;
    if (!part.holdings.empty() && (!account.asOf || account.asOf < part.asOf)) {
        account.asOf = part.asOf;
        account.holdings = part.holdings;
    }
}

// ---------------------------------------------------------------------------------------------
// The page

std::string shown(const std::optional<bw::Decimal>& number) { return number ? number->toString() : "?"; }

std::string shown(const std::optional<bw::Date>& date) {
    static const bw::PatternDateFormatter day("yyyy-MM-dd");
    return date ? day.stringFromDate(*date) : "no date";
}

/// One sum for each currency; what does not fit into a number is none.
std::string sumsOf(const std::vector<Entry>& entries, const std::string& currency) {
    std::map<std::string, std::optional<bw::Decimal>> sums{{currency, bw::Decimal()}};
    for (const Entry& entry : entries) {
        const std::string& own = entry.foreign.empty() ? currency : entry.foreign;
        std::optional<bw::Decimal>& sum = sums.try_emplace(own, bw::Decimal()).first->second;
        if (sum) sum = sum->plus(entry.amount);
    }
    std::string text;
    for (const auto& [symbol, sum] : sums) text += (text.empty() ? "" : " and ") + shown(sum) + " " + symbol;
    return text;
}

void print(const AccountKey& key, Account& account) {
    static constexpr std::string_view kinds[] = {"Bank account", "Card", "Investment account"};
    std::cout << kinds[static_cast<std::size_t>(key.kind)] << ' ' << key.number << ", " << key.currency
              << '\n';
    std::stable_sort(account.entries.begin(), account.entries.end(),
                     [](const Entry& a, const Entry& b) { return a.comesBefore(b); });
    std::cout << "  " << account.entries.size() << " transactions, " << account.repeated << " repeated, sum "
              << sumsOf(account.entries, key.currency) << '\n';
    if (!account.entries.empty()) {
        const Entry& last = account.entries.back();
        std::cout << "  last: " << shown(last.date) << ' ' << last.amount.toString() << ' ' << last.text
                  << '\n';
    }
    if (account.balance)
        std::cout << "  balance " << account.balance->amount.toString() << " on "
                  << shown(account.balance->date) << '\n';
    for (const Holding& holding : account.holdings)
        std::cout << "  " << shown(holding.units) << " of " << holding.security << ", worth "
                  << shown(holding.value) << (holding.foreign.empty() ? "" : " " + holding.foreign) << '\n';
}

void print(const Download& download) {
    std::cout << download.name << (download.failure.empty() ? "" : ": " + download.failure) << '\n';
    for (const std::string& remark : download.remarks) std::cout << "  " << remark << '\n';
    for (const AccountPart& part : download.accounts)
        if (part.incomplete != 0) std::cout << "  " << part.incomplete << " transactions have no amount\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: ledger FOLDER\n";
        return 2;
    }
    std::error_code error;
    const std::vector<fs::path> paths = downloadsIn(argv[1], error);
    if (error) {
        std::cerr << argv[1] << ": " << error.message() << '\n';
        return 1;
    }
    const std::vector<Download> downloads = readAll(paths);

    Ledger ledger;
    for (const Download& download : downloads) {
        print(download);
        for (const AccountPart& part : download.accounts) add(ledger, part);
    }
    for (auto& [key, account] : ledger) print(key, account);
    return std::cout.flush() ? 0 : 1;
}
