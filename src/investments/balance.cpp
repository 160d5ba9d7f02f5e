// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include "investments/currency.h"
#include "investments/getters.h"

namespace brackwell {
namespace investments {
namespace {

// clang-format off
constexpr FieldRow kBalanceRows[] = {
    {"cash", FieldRule::amount, {"AVAILCASH"}},
    {"margin", FieldRule::amount, {"MARGINBALANCE"}},
    {"shortBalance", FieldRule::amount, {"SHORTBALANCE"}},
    {"buyingPower", FieldRule::amount, {"BUYPOWER"}},
};

constexpr FieldRow kListedBalanceRows[] = {
    {"name", FieldRule::text, {"NAME"}},
    {"explanation", FieldRule::text, {"DESC"}},
    {"type", FieldRule::word, {"BALTYPE"}},
    {"value", FieldRule::amount, {"VALUE"}},
    {"asOf", FieldRule::date, {"DTASOF"}},
    {"currency", FieldRule::currency, {"CURRENCY"}},
    {"originalCurrency", FieldRule::currency, {"ORIGCURRENCY"}},
    {"currencySymbol", FieldRule::part, {"CURSYM"}},
    {"currencyRate", FieldRule::rate, {"CURRATE"}},
};
// clang-format on

}  // namespace

constexpr FieldTable kBalanceFields(kBalanceRows);
constexpr FieldTable kListedBalanceFields(kListedBalanceRows);

}  // namespace investments

using namespace investments;

std::optional<Decimal> InvestmentBalance::cash() const noexcept {
    return amountOf(*this, kBalanceFields.amount("cash"));
}
std::optional<Decimal> InvestmentBalance::margin() const noexcept {
    return amountOf(*this, kBalanceFields.amount("margin"));
}
std::optional<Decimal> InvestmentBalance::shortBalance() const noexcept {
    return amountOf(*this, kBalanceFields.amount("shortBalance"));
}
std::optional<Decimal> InvestmentBalance::buyingPower() const noexcept {
    return amountOf(*this, kBalanceFields.amount("buyingPower"));
}

std::vector<ListedBalance> InvestmentBalance::listed() const {
    return innerObjects<ListedBalance>(*this, RecordType::listedBalance);
}

OptionalText ListedBalance::name() const noexcept { return textOf(*this, kListedBalanceFields.text("name")); }
OptionalText ListedBalance::explanation() const noexcept {
    return textOf(*this, kListedBalanceFields.text("explanation"));
}
std::optional<BalanceType> ListedBalance::type() const noexcept {
    return wordOf<BalanceType>(*this, kListedBalanceFields.word("type"));
}
std::optional<Decimal> ListedBalance::value() const noexcept {
    return amountOf(*this, kListedBalanceFields.amount("value"));
}
std::optional<Date> ListedBalance::asOf() const noexcept {
    return dateOf(*this, kListedBalanceFields.date("asOf"));
}
std::optional<TransactionCurrency> ListedBalance::currency() const {
    static constexpr CurrencyFields kCurrencyFields(kListedBalanceFields);
    return currencyOf(*this, kCurrencyFields);
}

}  // namespace brackwell
