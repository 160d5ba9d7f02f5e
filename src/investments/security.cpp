// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include "investments/currency.h"
#include "investments/getters.h"

namespace brackwell {
namespace investments {
namespace {

// clang-format off
constexpr FieldRow kSecurityRows[] = {
    {"id", FieldRule::text, {"UNIQUEID"}},
    {"idType", FieldRule::text, {"UNIQUEIDTYPE"}},
    {"name", FieldRule::text, {"SECNAME"}},
    {"ticker", FieldRule::text, {"TICKER"}},
    {"institutionID", FieldRule::text, {"FIID"}},
    {"rating", FieldRule::text, {"RATING"}},
    {"unitPrice", FieldRule::amount, {"UNITPRICE"}},
    {"priceDate", FieldRule::date, {"DTASOF"}},
    {"memo", FieldRule::text, {"MEMO", "MEMO2"}},
    {"assetClass", FieldRule::word, {"ASSETCLASS"}},
    {"institutionAssetClass", FieldRule::text, {"FIASSETCLASS"}},
    {"typeDescription", FieldRule::text, {"TYPEDESC"}},
    {"optionType", FieldRule::word, {"OPTTYPE"}},
    {"strikePrice", FieldRule::amount, {"STRIKEPRICE"}},
    {"expiryDate", FieldRule::date, {"DTEXPIRE"}},
    {"sharesPerContract", FieldRule::amount, {"SHPERCTRCT"}},
    {"parValue", FieldRule::amount, {"PARVALUE"}},
    {"debtType", FieldRule::word, {"DEBTTYPE"}},
    {"debtClass", FieldRule::word, {"DEBTCLASS"}},
    {"couponRate", FieldRule::amount, {"COUPONRT"}},
    {"couponDate", FieldRule::date, {"DTCOUPON"}},
    {"couponFrequency", FieldRule::word, {"COUPONFREQ"}},
    {"callPrice", FieldRule::amount, {"CALLPRICE"}},
    {"yieldToCall", FieldRule::amount, {"YIELDTOCALL"}},
    {"callDate", FieldRule::date, {"DTCALL"}},
    {"callType", FieldRule::word, {"CALLTYPE"}},
    {"yieldToMaturity", FieldRule::amount, {"YIELDTOMAT"}},
    {"maturityDate", FieldRule::date, {"DTMAT"}},
    {"fundType", FieldRule::word, {"MFTYPE"}},
    {"stockType", FieldRule::word, {"STOCKTYPE"}},
    {"yield", FieldRule::amount, {"YIELD", "YLD"}},
    {"yieldDate", FieldRule::date, {"DTYIELDASOF"}},
    {"currency", FieldRule::currency, {"CURRENCY"}},
    {"originalCurrency", FieldRule::currency, {"ORIGCURRENCY"}},
    {"currencySymbol", FieldRule::part, {"CURSYM"}},
    {"currencyRate", FieldRule::rate, {"CURRATE"}},
};
constexpr PartRow kSecurityParts[] = {"SECINFO", {"SECID", "SECINFO"}};

constexpr FieldRow kPortionRows[] = {
    {"assetClass", FieldRule::word, {"ASSETCLASS"}},
    {"institutionAssetClass", FieldRule::text, {"FIASSETCLASS"}},
    {"percent", FieldRule::amount, {"PERCENT"}},
};
// clang-format on

}  // namespace

constexpr FieldTable kSecurityFields(kSecurityRows, kSecurityParts);
constexpr FieldTable kPortionFields(kPortionRows);

}  // namespace investments

using namespace investments;

namespace {

OptionalText textIn(const reading::NodeRef& aggregate, reading::NameID name) noexcept {
    const reading::NodeRef value = aggregate[name];
    if (!value.isText()) return std::nullopt;
    return value.text();
}

}  // namespace

OptionalText Security::id() const noexcept { return textOf(*this, kSecurityFields.text("id")); }
OptionalText Security::idType() const noexcept { return textOf(*this, kSecurityFields.text("idType")); }
OptionalText Security::name() const noexcept { return textOf(*this, kSecurityFields.text("name")); }
OptionalText Security::ticker() const noexcept { return textOf(*this, kSecurityFields.text("ticker")); }
OptionalText Security::institutionID() const noexcept {
    return textOf(*this, kSecurityFields.text("institutionID"));
}
OptionalText Security::rating() const noexcept { return textOf(*this, kSecurityFields.text("rating")); }
std::optional<Decimal> Security::unitPrice() const noexcept {
    return amountOf(*this, kSecurityFields.amount("unitPrice"));
}
std::optional<Date> Security::priceDate() const noexcept {
    return dateOf(*this, kSecurityFields.date("priceDate"));
}
OptionalText Security::memo() const noexcept { return textOf(*this, kSecurityFields.text("memo")); }
std::optional<AssetClass> Security::assetClass() const noexcept {
    return wordOf<AssetClass>(*this, kSecurityFields.word("assetClass"));
}
OptionalText Security::institutionAssetClass() const noexcept {
    return textOf(*this, kSecurityFields.text("institutionAssetClass"));
}
OptionalText Security::typeDescription() const noexcept {
    return textOf(*this, kSecurityFields.text("typeDescription"));
}
std::optional<OptionType> Security::optionType() const noexcept {
    return wordOf<OptionType>(*this, kSecurityFields.word("optionType"));
}
std::optional<Decimal> Security::strikePrice() const noexcept {
    return amountOf(*this, kSecurityFields.amount("strikePrice"));
}
std::optional<Date> Security::expiryDate() const noexcept {
    return dateOf(*this, kSecurityFields.date("expiryDate"));
}
std::optional<Decimal> Security::sharesPerContract() const noexcept {
    return amountOf(*this, kSecurityFields.amount("sharesPerContract"));
}
std::optional<Decimal> Security::parValue() const noexcept {
    return amountOf(*this, kSecurityFields.amount("parValue"));
}
std::optional<DebtType> Security::debtType() const noexcept {
    return wordOf<DebtType>(*this, kSecurityFields.word("debtType"));
}
std::optional<DebtClass> Security::debtClass() const noexcept {
    return wordOf<DebtClass>(*this, kSecurityFields.word("debtClass"));
}
std::optional<Decimal> Security::couponRate() const noexcept {
    return amountOf(*this, kSecurityFields.amount("couponRate"));
}
std::optional<Date> Security::couponDate() const noexcept {
    return dateOf(*this, kSecurityFields.date("couponDate"));
}
std::optional<CouponFrequency> Security::couponFrequency() const noexcept {
    return wordOf<CouponFrequency>(*this, kSecurityFields.word("couponFrequency"));
}
std::optional<Decimal> Security::callPrice() const noexcept {
    return amountOf(*this, kSecurityFields.amount("callPrice"));
}
std::optional<Decimal> Security::yieldToCall() const noexcept {
    return amountOf(*this, kSecurityFields.amount("yieldToCall"));
}
std::optional<Date> Security::callDate() const noexcept {
    return dateOf(*this, kSecurityFields.date("callDate"));
}
std::optional<CallType> Security::callType() const noexcept {
    return wordOf<CallType>(*this, kSecurityFields.word("callType"));
}
std::optional<Decimal> Security::yieldToMaturity() const noexcept {
    return amountOf(*this, kSecurityFields.amount("yieldToMaturity"));
}
std::optional<Date> Security::maturityDate() const noexcept {
    return dateOf(*this, kSecurityFields.date("maturityDate"));
}
std::optional<FundType> Security::fundType() const noexcept {
    return wordOf<FundType>(*this, kSecurityFields.word("fundType"));
}
std::optional<StockType> Security::stockType() const noexcept {
    return wordOf<StockType>(*this, kSecurityFields.word("stockType"));
}
std::optional<Decimal> Security::yield() const noexcept {
    return amountOf(*this, kSecurityFields.amount("yield"));
}
std::optional<Date> Security::yieldDate() const noexcept {
    return dateOf(*this, kSecurityFields.date("yieldDate"));
}
std::optional<TransactionCurrency> Security::currency() const {
    static constexpr CurrencyFields kCurrencyFields(kSecurityFields);
    return currencyOf(*this, kCurrencyFields);
}

SecurityKind Security::kind() const noexcept { return static_cast<SecurityKind>(recordOf(*this).kind); }

SecurityIdentifier Security::underlying() const noexcept {
    const Records& records = recordsOf(*this);
    const reading::NodeRef node{&records.document, &records.node(recordOf(*this).node), true};
    const reading::NodeRef identifier = node[reading::element("SECID")];
    if (!identifier.isDictionary()) return {};
    return {textIn(identifier, reading::element("UNIQUEID")),
            textIn(identifier, reading::element("UNIQUEIDTYPE"))};
}

std::vector<AssetPortion> Security::assetPortions() const {
    return innerObjects<AssetPortion>(*this, RecordType::portion);
}

std::optional<AssetClass> AssetPortion::assetClass() const noexcept {
    return wordOf<AssetClass>(*this, kPortionFields.word("assetClass"));
}
OptionalText AssetPortion::institutionAssetClass() const noexcept {
    return textOf(*this, kPortionFields.text("institutionAssetClass"));
}
std::optional<Decimal> AssetPortion::percent() const noexcept {
    return amountOf(*this, kPortionFields.amount("percent"));
}

}  // namespace brackwell
