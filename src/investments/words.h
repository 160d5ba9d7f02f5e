// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investment_records.h>

#include <optional>
#include <span>
#include <string_view>

/// \file
/// The words of closed lists. An enumerator without a word is `unknown`.

namespace brackwell::investments {

template <class Value>
struct Word {
    std::string_view text;
    Value value;
};

// clang-format off
inline constexpr Word<IncomeType> kIncomeTypes[] = {
    {"CGLONG", IncomeType::longTermGain}, {"CGSHORT", IncomeType::shortTermGain},
    {"DIV", IncomeType::dividend}, {"INTEREST", IncomeType::interest}, {"MISC", IncomeType::miscellaneous}};
inline constexpr Word<TradeType> kTradeTypes[] = {
    {"BUY", TradeType::buy}, {"BUYTOCOVER", TradeType::buyToCover}, {"BUYTOOPEN", TradeType::buyToOpen},
    {"BUYTOCLOSE", TradeType::buyToClose}, {"SELL", TradeType::sell}, {"SELLSHORT", TradeType::sellShort},
    {"SELLTOOPEN", TradeType::sellToOpen}, {"SELLTOCLOSE", TradeType::sellToClose}};
inline constexpr Word<OptionAction> kOptionActions[] = {
    {"ASSIGN", OptionAction::assign}, {"EXERCISE", OptionAction::exercise}, {"EXPIRE", OptionAction::expire}};
inline constexpr Word<TransferAction> kTransferActions[] = {
    {"IN", TransferAction::in}, {"OUT", TransferAction::out}};
inline constexpr Word<PositionType> kPositionTypes[] = {
    {"LONG", PositionType::longPosition}, {"SHORT", PositionType::shortPosition}};
inline constexpr Word<SubAccount> kSubAccounts[] = {
    {"CASH", SubAccount::cash}, {"MARGIN", SubAccount::margin}, {"SHORT", SubAccount::shortSale},
    {"OTHER", SubAccount::other}};
inline constexpr Word<Source401k> kSources401k[] = {
    {"PRETAX", Source401k::preTax}, {"AFTERTAX", Source401k::afterTax}, {"MATCH", Source401k::match},
    {"PROFITSHARING", Source401k::profitSharing}, {"ROLLOVER", Source401k::rollover},
    {"OTHERVEST", Source401k::otherVested}, {"OTHERNONVEST", Source401k::otherNonVested}};
inline constexpr Word<RelationType> kRelationTypes[] = {
    {"SPREAD", RelationType::spread}, {"STRADDLE", RelationType::straddle}, {"NONE", RelationType::none},
    {"OTHER", RelationType::other}};
inline constexpr Word<OptionSecurity> kOptionSecurities[] = {
    {"NAKED", OptionSecurity::naked}, {"COVERED", OptionSecurity::covered}};
inline constexpr Word<SellReason> kSellReasons[] = {
    {"CALL", SellReason::call}, {"SELL", SellReason::sell}, {"MATURITY", SellReason::maturity}};
inline constexpr Word<BalanceType> kBalanceTypes[] = {
    {"DOLLAR", BalanceType::dollar}, {"PERCENT", BalanceType::percent}, {"NUMBER", BalanceType::number}};
inline constexpr Word<DebtType> kDebtTypes[] = {{"COUPON", DebtType::coupon}, {"ZERO", DebtType::zero}};
inline constexpr Word<DebtClass> kDebtClasses[] = {
    {"TREASURY", DebtClass::treasury}, {"MUNICIPAL", DebtClass::municipal},
    {"CORPORATE", DebtClass::corporate}, {"OTHER", DebtClass::other}};
inline constexpr Word<CouponFrequency> kCouponFrequencies[] = {
    {"MONTHLY", CouponFrequency::monthly}, {"QUARTERLY", CouponFrequency::quarterly},
    {"SEMIANNUAL", CouponFrequency::semiannual}, {"ANNUAL", CouponFrequency::annual},
    {"OTHER", CouponFrequency::other}};
inline constexpr Word<CallType> kCallTypes[] = {
    {"CALL", CallType::call}, {"PUT", CallType::put}, {"PREFUND", CallType::prefund},
    {"MATURITY", CallType::maturity}};
inline constexpr Word<OptionType> kOptionTypes[] = {{"PUT", OptionType::put}, {"CALL", OptionType::call}};
inline constexpr Word<FundType> kFundTypes[] = {
    {"OPENEND", FundType::openEnd}, {"CLOSEEND", FundType::closeEnd}, {"OTHER", FundType::other}};
inline constexpr Word<StockType> kStockTypes[] = {
    {"COMMON", StockType::common}, {"PREFERRED", StockType::preferred},
    {"CONVERTIBLE", StockType::convertible}, {"OTHER", StockType::other}};
inline constexpr Word<AssetClass> kAssetClasses[] = {
    {"DOMESTICBOND", AssetClass::domesticBond}, {"INTLBOND", AssetClass::internationalBond},
    {"LARGESTOCK", AssetClass::largeStock}, {"SMALLSTOCK", AssetClass::smallStock},
    {"INTLSTOCK", AssetClass::internationalStock}, {"MONEYMRKT", AssetClass::moneyMarket},
    {"OTHER", AssetClass::other}};
inline constexpr Word<LoanPaymentFrequency> kLoanPaymentFrequencies[] = {
    {"WEEKLY", LoanPaymentFrequency::weekly}, {"BIWEEKLY", LoanPaymentFrequency::biweekly},
    {"TWICEMONTHLY", LoanPaymentFrequency::twiceMonthly}, {"MONTHLY", LoanPaymentFrequency::monthly},
    {"FOURWEEKS", LoanPaymentFrequency::fourWeeks}, {"BIMONTHLY", LoanPaymentFrequency::bimonthly},
    {"QUARTERLY", LoanPaymentFrequency::quarterly}, {"SEMIANNUALLY", LoanPaymentFrequency::semiannually},
    {"ANNUALLY", LoanPaymentFrequency::annually}, {"OTHER", LoanPaymentFrequency::other}};

/// The words of an enumeration, by a value of it.
constexpr auto wordsOf(IncomeType) noexcept { return std::span(kIncomeTypes); }
constexpr auto wordsOf(TradeType) noexcept { return std::span(kTradeTypes); }
constexpr auto wordsOf(OptionAction) noexcept { return std::span(kOptionActions); }
constexpr auto wordsOf(TransferAction) noexcept { return std::span(kTransferActions); }
constexpr auto wordsOf(PositionType) noexcept { return std::span(kPositionTypes); }
constexpr auto wordsOf(SubAccount) noexcept { return std::span(kSubAccounts); }
constexpr auto wordsOf(Source401k) noexcept { return std::span(kSources401k); }
constexpr auto wordsOf(RelationType) noexcept { return std::span(kRelationTypes); }
constexpr auto wordsOf(OptionSecurity) noexcept { return std::span(kOptionSecurities); }
constexpr auto wordsOf(SellReason) noexcept { return std::span(kSellReasons); }
constexpr auto wordsOf(BalanceType) noexcept { return std::span(kBalanceTypes); }
constexpr auto wordsOf(DebtType) noexcept { return std::span(kDebtTypes); }
constexpr auto wordsOf(DebtClass) noexcept { return std::span(kDebtClasses); }
constexpr auto wordsOf(CouponFrequency) noexcept { return std::span(kCouponFrequencies); }
constexpr auto wordsOf(CallType) noexcept { return std::span(kCallTypes); }
constexpr auto wordsOf(OptionType) noexcept { return std::span(kOptionTypes); }
constexpr auto wordsOf(FundType) noexcept { return std::span(kFundTypes); }
constexpr auto wordsOf(StockType) noexcept { return std::span(kStockTypes); }
constexpr auto wordsOf(AssetClass) noexcept { return std::span(kAssetClasses); }
constexpr auto wordsOf(LoanPaymentFrequency) noexcept { return std::span(kLoanPaymentFrequencies); }
// clang-format on

/// What a word stands for; nothing for no word.
template <class Value>
std::optional<Value> valueOfWord(OptionalText word) noexcept {
    if (!word) return std::nullopt;
    for (const auto& [text, value] : wordsOf(Value()))
        if (text == *word) return value;
    return Value::unknown;
}

}  // namespace brackwell::investments
