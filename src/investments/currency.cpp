// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include "investments/getters.h"

namespace brackwell {
namespace {

using reading::element;
using reading::NodeRef;

/// The first of the values under a name.
NodeRef first(const NodeRef& aggregate, reading::NameID name) noexcept {
    for (const NodeRef& value : aggregate[name].elements()) return value;
    return {};
}

TransactionCurrency currencyIn(const NodeRef& value, const TvOFXHelper& helper, bool isConverted) {
    TransactionCurrency currency{{}, std::nullopt, isConverted};
    if (value.isText()) {
        currency.symbol = value.text();
        return currency;
    }
    if (const NodeRef symbol = first(value, element("CURSYM")); symbol.isText())
        currency.symbol = symbol.text();
    if (const NodeRef rate = first(value, element("CURRATE")); rate.isText())
        currency.rate = helper.decimalNumberFromOFXAmountString(rate.text());
    return currency;
}

}  // namespace

std::optional<TransactionCurrency> currencyOf(const TvOFXStatementTransaction& transaction) {
    const auto& data = transaction.originalParseData();
    if (!data) return std::nullopt;
    const auto& own = transaction.helperObject();
    const TvOFXHelper& helper = own ? *own : *TvOFXHelper::defaultHelper();
    const NodeRef node = NodeRef::of(*data);
    const NodeRef given = first(node, element("CURRENCY"));
    const NodeRef original = first(node, element("ORIGCURRENCY"));
    if (given && (!original || given.at < original.at)) return currencyIn(given, helper, false);
    if (original) return currencyIn(original, helper, true);
    return std::nullopt;
}

namespace investments {

std::optional<TransactionCurrency> currencyOf(const InvestmentRecord& object, const CurrencyFields& fields) {
    const Records& records = recordsOf(object);
    const Record& record = recordOf(object);
    const std::uint32_t given = records.fieldNode(record, fields.given);
    const std::uint32_t original = records.fieldNode(record, fields.original);
    if (given == 0 && original == 0) return std::nullopt;
    TransactionCurrency currency;
    currency.isConverted = given == 0 || (original != 0 && original < given);
    // The first of the two counts, and so do the first symbol and rate, which stand in it.
    const OptionalText alone = records.text(record, currency.isConverted ? fields.original : fields.given);
    currency.symbol = alone.value_or(records.text(record, fields.symbol).value_or(""));
    if (!alone) currency.rate = records.amount(record, fields.rate);
    return currency;
}

}  // namespace investments
}  // namespace brackwell
