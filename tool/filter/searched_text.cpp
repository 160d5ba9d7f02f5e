// SPDX-License-Identifier: Apache-2.0
#include "filter/searched_text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <variant>
#include <vector>

#include "accounts/account_number.h"
#include "text/searched_letters.h"

namespace tool {

using brackwell::OptionalText;

namespace {

using Transaction = brackwell::TvOFXStatementTransaction;
using TextGetter = OptionalText (Transaction::*)() const noexcept;

/// Words that many transactions share, codes, and texts of which the other fields are parts: searching them
/// would find what nobody looks for.
constexpr auto kNotSearched = std::to_array<std::string_view>(
    {"transactionType", "correctionAction", "standardIndustrialCode", "currency", "origCurrency",
     "originalDataString", "originalDatePostedString"});

std::vector<TextGetter> searchedTexts() {
    std::vector<TextGetter> getters;
    for (const Transaction::Field& field : Transaction::fields()) {
        const TextGetter* get = std::get_if<TextGetter>(&field.get);
        if (get != nullptr && std::ranges::find(kNotSearched, field.name) == kNotSearched.end())
            getters.push_back(*get);
    }
    return getters;
}

}  // namespace

void appendSearchedText(std::string& text, OptionalText field) {
    if (!field) return;
    appendSearchedLetters(text, *field);
    text += '\n';
}

void appendSearchedText(std::string& text, const Transaction& transaction) {
    static const std::vector<TextGetter> getters = searchedTexts();
    for (const TextGetter get : getters) appendSearchedText(text, (transaction.*get)());
    if (const auto payee = transaction.payee()) appendSearchedText(text, payee->name());
    appendSearchedText(text, accountNumber(transaction.bankAccountTo().get()));
    appendSearchedText(text, accountNumber(transaction.creditCardAccountTo().get()));
}

bool hasAllWords(const std::string& text, const std::vector<std::string>& words) noexcept {
    return std::ranges::all_of(words,
                               [&text](const std::string& word) { return text.find(word) != text.npos; });
}

}  // namespace tool
