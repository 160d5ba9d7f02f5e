// SPDX-License-Identifier: Apache-2.0
#include "command_line/filter_options.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <string_view>

#include "command_line/day.h"
#include "text/characters.h"
#include "text/searched_letters.h"

namespace tool {
namespace {

/// The words of a text as they are searched.
std::vector<std::string> wordsOf(std::string_view text) {
    std::string folded;
    appendSearchedLetters(folded, text);
    std::vector<std::string> words;
    bool isInWord = false;
    for (std::string_view rest = folded; !rest.empty();) {
        const Character character = firstCharacter(rest);
        const bool isBlank = brackwell::isWhiteSpace(character.code);
        if (!isBlank && !isInWord) words.emplace_back();
        if (!isBlank) words.back().append(rest.substr(0, character.size));
        isInWord = !isBlank;
        rest.remove_prefix(character.size);
    }
    return words;
}

// ---------------------------------------------------------------------------------------------
// Checks; each returns what is wrong with a text, "" for nothing

std::string checkAccount(const std::string& text) { return text.empty() ? "the number is empty" : ""; }

std::string checkSearch(const std::string& text) {
    return wordsOf(text).empty() ? "the search text is empty" : "";
}

}  // namespace

void declareFilter(CLI::App& command, FilterTexts& texts) {
    const auto add = [&command](const char* name, auto& text, const char* help, const char* type) {
        CLI::Option* option = command.add_option(name, text, help);
        option->type_name(type)->group("Transactions");
        return option;
    };
    add("--since", texts.since, "Only what was posted on this day (YYYY-MM-DD) or later", "DATE")
        ->check(CLI::Validator(checkDay, ""));
    add("--until", texts.until, "Only what was posted on this day or before", "DATE")
        ->check(CLI::Validator(checkDay, ""));
    add("--account", texts.accounts, "Only accounts whose number is or ends with this", "ID")
        ->allow_extra_args(false)
        ->check(CLI::Validator(checkAccount, ""));
    add("--search", texts.search, "Only transactions in which all words of this text occur", "TEXT")
        ->check(CLI::Validator(checkSearch, ""));
    add("--sort", texts.order, "The order of transactions: date or amount", "KEY")
        ->check(CLI::Validator(CLI::IsMember({"date", "amount"})).description(""));
}

Filter understoodFilter(const FilterTexts& texts) {
    Filter filter;
    if (texts.since) filter.since = dayOf(*texts.since);
    if (texts.until) filter.before = *dayOf(*texts.until) + std::chrono::days(1);
    if (filter.since && filter.before && *filter.since >= *filter.before)
        throw CLI::ValidationError("--until", *texts.until + " is before " + *texts.since + " of --since");
    filter.accounts = texts.accounts;
    if (texts.search) filter.words = wordsOf(*texts.search);
    if (texts.order) filter.order = *texts.order == "date" ? Order::date : Order::amount;
    return filter;
}

}  // namespace tool
