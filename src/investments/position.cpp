// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include "investments/currency.h"
#include "investments/getters.h"

namespace brackwell {
namespace investments {
namespace {

// clang-format off
constexpr FieldRow kPositionRows[] = {
    {"securityID", FieldRule::text, {"UNIQUEID"}},
    {"securityIDType", FieldRule::text, {"UNIQUEIDTYPE"}},
    {"subAccount", FieldRule::word, {"HELDINACCT"}},
    {"positionType", FieldRule::word, {"POSTYPE"}},
    {"units", FieldRule::amount, {"UNITS"}},
    {"unitPrice", FieldRule::amount, {"UNITPRICE"}},
    {"marketValue", FieldRule::amount, {"MKTVAL"}},
    {"priceDate", FieldRule::date, {"DTPRICEASOF"}},
    {"averageCostBasis", FieldRule::amount, {"AVGCOSTBASIS"}},
    {"memo", FieldRule::text, {"MEMO", "MEMO2"}},
    {"source401k", FieldRule::word, {"INV401KSOURCE"}},
    {"secured", FieldRule::word, {"SECURED"}},
    {"unitsStreet", FieldRule::amount, {"UNITSSTREET"}},
    {"unitsUser", FieldRule::amount, {"UNITSUSER"}},
    {"reinvestsDividends", FieldRule::flag, {"REINVDIV"}},
    {"reinvestsGains", FieldRule::flag, {"REINVCG"}},
    {"currency", FieldRule::currency, {"CURRENCY"}},
    {"originalCurrency", FieldRule::currency, {"ORIGCURRENCY"}},
    {"currencySymbol", FieldRule::part, {"CURSYM"}},
    {"currencyRate", FieldRule::rate, {"CURRATE"}},
};
constexpr PartRow kPositionParts[] = {"INVPOS", "SECID"};
// clang-format on

}  // namespace

constexpr FieldTable kPositionFields(kPositionRows, kPositionParts);

}  // namespace investments

using namespace investments;

OptionalText Position::securityID() const noexcept {
    return textOf(*this, kPositionFields.text("securityID"));
}
OptionalText Position::securityIDType() const noexcept {
    return textOf(*this, kPositionFields.text("securityIDType"));
}
std::optional<SubAccount> Position::subAccount() const noexcept {
    return wordOf<SubAccount>(*this, kPositionFields.word("subAccount"));
}
std::optional<PositionType> Position::positionType() const noexcept {
    return wordOf<PositionType>(*this, kPositionFields.word("positionType"));
}
std::optional<Decimal> Position::units() const noexcept {
    return amountOf(*this, kPositionFields.amount("units"));
}
std::optional<Decimal> Position::unitPrice() const noexcept {
    return amountOf(*this, kPositionFields.amount("unitPrice"));
}
std::optional<Decimal> Position::marketValue() const noexcept {
    return amountOf(*this, kPositionFields.amount("marketValue"));
}
std::optional<Date> Position::priceDate() const noexcept {
    return dateOf(*this, kPositionFields.date("priceDate"));
}
std::optional<Decimal> Position::averageCostBasis() const noexcept {
    return amountOf(*this, kPositionFields.amount("averageCostBasis"));
}
OptionalText Position::memo() const noexcept { return textOf(*this, kPositionFields.text("memo")); }
std::optional<Source401k> Position::source401k() const noexcept {
    return wordOf<Source401k>(*this, kPositionFields.word("source401k"));
}
std::optional<OptionSecurity> Position::secured() const noexcept {
    return wordOf<OptionSecurity>(*this, kPositionFields.word("secured"));
}
std::optional<Decimal> Position::unitsStreet() const noexcept {
    return amountOf(*this, kPositionFields.amount("unitsStreet"));
}
std::optional<Decimal> Position::unitsUser() const noexcept {
    return amountOf(*this, kPositionFields.amount("unitsUser"));
}
std::optional<bool> Position::reinvestsDividends() const noexcept {
    return flagOf(*this, kPositionFields.flag("reinvestsDividends"));
}
std::optional<bool> Position::reinvestsGains() const noexcept {
    return flagOf(*this, kPositionFields.flag("reinvestsGains"));
}
std::optional<TransactionCurrency> Position::currency() const {
    static constexpr CurrencyFields kCurrencyFields(kPositionFields);
    return currencyOf(*this, kCurrencyFields);
}

PositionKind Position::kind() const noexcept { return static_cast<PositionKind>(recordOf(*this).kind); }

}  // namespace brackwell
