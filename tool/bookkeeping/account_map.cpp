// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/account_map.h"

// The header alone, and errors as values.
#define TOML_HEADER_ONLY 1
#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <utility>

#include "bookkeeping/book_text.h"
#include "text/characters.h"
#include "text/searched_letters.h"

namespace tool {
namespace {

struct RoleName {
    BookRole role;
    std::string_view key;  ///< in the table "names"
    const char* name;
};

/// In the order of BookRole.
constexpr RoleName kRoleNames[] = {
    {BookRole::bank, "bank", "Assets:Bank"},
    {BookRole::card, "card", "Liabilities:Card"},
    {BookRole::creditLine, "credit-line", "Liabilities:Credit-Line"},
    {BookRole::investment, "investment", "Assets:Investments"},
    {BookRole::unknownExpense, "unknown-expense", "Expenses:Unknown"},
    {BookRole::unknownIncome, "unknown-income", "Income:Unknown"},
    {BookRole::opening, "opening", "Equity:Opening-Balances"},
    {BookRole::transfers, "transfers", "Equity:Transfers"},
    {BookRole::fees, "fees", "Expenses:Fees"},
    {BookRole::commissions, "commissions", "Expenses:Commissions"},
    {BookRole::taxes, "taxes", "Expenses:Taxes"},
    {BookRole::interestPaid, "interest-paid", "Expenses:Interest"},
    {BookRole::interest, "interest", "Income:Interest"},
    {BookRole::dividends, "dividends", "Income:Dividends"},
    {BookRole::gains, "gains", "Income:Capital-Gains"},
    {BookRole::otherIncome, "other-income", "Income:Investments"},
    {BookRole::securities, "securities", "Equity:Securities"},
};
static_assert(std::size(kRoleNames) == kBookRoles);

/// The words of a text in searched letters.
std::vector<std::string> searchedWords(std::string_view text) {
    std::string letters;
    appendSearchedLetters(letters, text);
    std::vector<std::string> words(1);
    for (std::string_view rest = letters; !rest.empty();) {
        const Character character = firstCharacter(rest);
        if (!brackwell::isWhiteSpace(character.code))
            words.back().append(rest.substr(0, character.size));
        else if (!words.back().empty())
            words.emplace_back();
        rest.remove_prefix(character.size);
    }
    if (words.back().empty()) words.pop_back();
    return words;
}

std::string trimmedText(std::string_view text) { return std::string(brackwell::trimWhiteSpace(text)); }

}  // namespace

/// Takes the tables of a file one after the other; the first fault ends it.
struct AccountMap::Reader {
    AccountMap& map;
    BookFormat format;
    std::string error = {};

    bool fail(const toml::node& node, const std::string& text) {
        error = "line " + std::to_string(node.source().begin.line) + ": " + text;
        return false;
    }

    /// The text of an entry.
    const std::string* textOf(const toml::node& node, std::string_view key) {
        if (const auto* text = node.as_string()) return &text->get();
        fail(node, "\"" + std::string(key) + "\" is not a text in quotes.");
        return nullptr;
    }
    const std::string* accountOf(const toml::node& node, std::string_view key) {
        const std::string* account = textOf(node, key);
        if (account == nullptr) return nullptr;
        const std::string fault = faultOfAccountName(*account, format);
        if (fault.empty()) return account;
        fail(node, "The account name \"" + *account + "\" " + fault + ".");
        return nullptr;
    }

    bool takeAccount(std::string_view key, const toml::node& node) {
        const std::string* account = accountOf(node, key);
        if (account != nullptr) map.accounts_.insert_or_assign(trimmedText(key), *account);
        return account != nullptr;
    }
    bool takePayee(std::string_view key, const toml::node& node) {
        const std::string* account = accountOf(node, key);
        if (account == nullptr) return false;
        Payee payee{searchedWords(key), *account};
        if (payee.words.empty()) return fail(node, "A payee is empty.");
        map.payees_.push_back(std::move(payee));
        return true;
    }
    bool takeName(std::string_view key, const toml::node& node) {
        const auto* const role = std::ranges::find(kRoleNames, key, &RoleName::key);
        if (role == std::end(kRoleNames)) {
            std::string known;
            for (const RoleName& each : kRoleNames) known.append(known.empty() ? "" : ", ").append(each.key);
            return fail(node, "No account is called \"" + std::string(key) + "\"; there are " + known + ".");
        }
        const std::string* account = accountOf(node, key);
        if (account != nullptr) map.names_[static_cast<std::size_t>(role->role)] = *account;
        return account != nullptr;
    }
    bool takeCommodity(std::string_view key, const toml::node& node) {
        const std::string* name = textOf(node, key);
        if (name == nullptr) return false;
        if (!isCommodityName(*name))
            return fail(node, "The commodity \"" + *name +
                                  "\" is not 2 to 24 capital letters, digits and \"-._\" between them.");
        map.commodities_.insert_or_assign(trimmedText(key), *name);
        return true;
    }

    using Take = bool (Reader::*)(std::string_view, const toml::node&);

    /// The entries in the order of the file, which the table itself does not keep.
    bool takeTable(const toml::table& table, Take take) {
        std::vector<std::pair<std::string_view, const toml::node*>> entries;
        for (const auto& [key, node] : table) entries.emplace_back(key.str(), &node);
        std::ranges::stable_sort(entries, [](const auto& a, const auto& b) {
            const auto& first = a.second->source().begin;
            const auto& second = b.second->source().begin;
            return std::pair(first.line, first.column) < std::pair(second.line, second.column);
        });
        return std::ranges::all_of(
            entries, [&](const auto& entry) { return (this->*take)(entry.first, *entry.second); });
    }

    bool takeFile(const toml::table& file) {
        constexpr std::pair<std::string_view, Take> tables[] = {{"accounts", &Reader::takeAccount},
                                                                {"payees", &Reader::takePayee},
                                                                {"names", &Reader::takeName},
                                                                {"commodities", &Reader::takeCommodity}};
        for (const auto& [key, node] : file) {
            const auto* const known = std::ranges::find(
                tables, key.str(), [](const auto& table) -> const std::string_view& { return table.first; });
            if (known == std::end(tables) || node.as_table() == nullptr)
                return fail(node, "\"" + std::string(key.str()) +
                                      "\" is none of the tables [accounts], [payees], [names] and "
                                      "[commodities].");
            if (!takeTable(*node.as_table(), known->second)) return false;
        }
        return true;
    }
};

AccountMap::AccountMap() { std::ranges::transform(kRoleNames, names_.begin(), &RoleName::name); }

bool AccountMap::read(const std::string& path, BookFormat format, std::string& error) {
    const auto bytes = std::filesystem::is_directory(path) ? std::nullopt : brackwell::Data::fromFile(path);
    if (!bytes) {
        error = "The file cannot be read.";
        return false;
    }
    const toml::parse_result parsed = toml::parse(bytes->bytes(), path);
    if (!parsed) {
        error = "line " + std::to_string(parsed.error().source().begin.line) + ": " +
                std::string(parsed.error().description()) + ".";
        return false;
    }
    Reader reader{*this, format};
    if (reader.takeFile(parsed.table())) return true;
    error = std::move(reader.error);
    return false;
}

std::optional<std::string> AccountMap::nameOf(std::string_view bank, std::string_view number) const {
    if (number.empty() || accounts_.empty()) return std::nullopt;
    std::string both(bank);
    both.append("/").append(number);
    if (const auto exact = accounts_.find(both); exact != accounts_.end()) return exact->second;
    // The longest end of the number, the number itself first.
    for (std::size_t begin = 0; begin < number.size(); ++begin) {
        const auto found = accounts_.find(number.substr(begin));
        if (found != accounts_.end()) return found->second;
    }
    return std::nullopt;
}

std::optional<CounterAccount> AccountMap::counterAccountFor(std::string_view payee,
                                                            std::string_view memo) const {
    if (payees_.empty()) return std::nullopt;
    std::string searched;
    appendSearchedLetters(searched, payee);
    searched += '\n';
    appendSearchedLetters(searched, memo);
    const auto found = std::ranges::find_if(payees_, [&searched](const Payee& each) {
        return std::ranges::all_of(each.words, [&searched](const std::string& word) {
            return searched.find(word) != searched.npos;
        });
    });
    if (found == payees_.end()) return std::nullopt;
    return static_cast<CounterAccount>(kBookRoles + static_cast<std::size_t>(found - payees_.begin()));
}

const std::string& AccountMap::name(CounterAccount account) const noexcept {
    const auto number = static_cast<std::size_t>(account);
    if (number < kBookRoles) return names_[number];
    return payees_[number - kBookRoles].account;
}

std::optional<std::string> AccountMap::commodity(std::string_view text) const {
    const auto found = commodities_.find(brackwell::trimWhiteSpace(text));
    if (found == commodities_.end()) return std::nullopt;
    return found->second;
}

}  // namespace tool
