// SPDX-License-Identifier: Apache-2.0
#include "money/foreign_amount.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tool {

using namespace brackwell;

namespace {

/// The three letters of a currency as a number, in their order; all amounts that are shown ask for it.
constexpr std::uint32_t packed(std::string_view code) noexcept {
    const auto letter = [code](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(code[i])}; };
    return letter(0) << 16 | letter(1) << 8 | letter(2);
}
constexpr std::size_t kLetters = 3;

struct Decimals {
    constexpr Decimals(std::string_view code, int decimals) noexcept
        : currency(packed(code)), count(decimals) {}

    std::uint32_t currency;
    int count;
};

/// Those that have not two, sorted.
constexpr auto kDecimals = std::to_array<Decimals>({
    {"BHD", 3}, {"BIF", 0}, {"CLF", 4}, {"CLP", 0}, {"DJF", 0}, {"GNF", 0}, {"IQD", 3},
    {"ISK", 0}, {"JOD", 3}, {"JPY", 0}, {"KMF", 0}, {"KRW", 0}, {"KWD", 3}, {"LYD", 3},
    {"OMR", 3}, {"PYG", 0}, {"RWF", 0}, {"TND", 3}, {"UGX", 0}, {"UYI", 0}, {"UYW", 4},
    {"VND", 0}, {"VUV", 0}, {"XAF", 0}, {"XOF", 0}, {"XPF", 0},
});
static_assert(std::ranges::is_sorted(kDecimals, {}, &Decimals::currency));

}  // namespace

int decimalsOf(OptionalText currency) noexcept {
    constexpr int usual = 2;
    const std::string_view code = currency.value_or("");
    if (code.size() != kLetters) return usual;
    const std::uint32_t wanted = packed(code);
    const auto* const found = std::ranges::lower_bound(kDecimals, wanted, {}, &Decimals::currency);
    return found != kDecimals.end() && found->currency == wanted ? found->count : usual;
}

bool isForeign(const std::optional<TransactionCurrency>& currency, OptionalText statementCurrency) noexcept {
    return currency && !currency->isConverted && currency->symbol != statementCurrency;
}

std::optional<Amount> inStatementCurrency(const std::optional<Decimal>& amount,
                                          const std::optional<TransactionCurrency>& currency,
                                          OptionalText statementCurrency) {
    if (!amount) return std::nullopt;
    if (!isForeign(currency, statementCurrency)) return *amount;
    const auto converted = currency->rate ? amount->times(*currency->rate) : std::nullopt;
    if (!converted) return std::nullopt;
    return Amount(*converted, decimalsOf(statementCurrency));
}

std::optional<Amount> amountIn(const TvOFXStatementTransaction& transaction, OptionalText statementCurrency) {
    if (!transaction.amount()) return std::nullopt;
    return inStatementCurrency(transaction.amount(), currencyOf(transaction), statementCurrency);
}

std::string foreignSymbol(const std::optional<TransactionCurrency>& currency,
                          OptionalText statementCurrency) {
    return isForeign(currency, statementCurrency) ? std::string(currency->symbol) : std::string();
}

}  // namespace tool
