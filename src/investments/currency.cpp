// SPDX-License-Identifier: Apache-2.0
#include "investments/currency.h"

#include <algorithm>
#include <cstdint>

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

/// Whether a transaction has an element that may name a currency. Most have none, which its nodes tell sooner
/// than a lookup of each name.
bool mayNameCurrency(const NodeRef& transaction) noexcept {
    const reading::Document& document = transaction.document();
    const reading::Node* const end = document.endOf(&transaction.node());
    for (const reading::Node* at = &transaction.node() + 1; at < end; at = document.endOf(at))
        if (at->name() == element("CURRENCY") || at->name() == element("ORIGCURRENCY")) return true;
    return false;
}

/// Nothing for an aggregate that names neither currency nor rate.
std::optional<TransactionCurrency> currencyIn(const NodeRef& value, const TvOFXHelper& helper,
                                              bool isConverted) {
    TransactionCurrency currency{{}, std::nullopt, isConverted};
    if (value.isText()) {
        currency.symbol = value.text();
        return currency.symbol.empty() ? std::nullopt : std::optional(currency);
    }
    const NodeRef symbol = first(value, element("CURSYM"));
    const NodeRef rate = first(value, element("CURRATE"));
    if (!symbol.isText() && !rate.isText()) return std::nullopt;
    if (symbol.isText()) currency.symbol = symbol.text();
    if (rate.isText()) currency.rate = helper.decimalNumberFromOFXAmountString(rate.text());
    return currency;
}

}  // namespace

std::optional<TransactionCurrency> currencyOf(const TvOFXStatementTransaction& transaction) {
    const auto& data = transaction.originalParseData();
    if (!data) return std::nullopt;
    const auto& own = transaction.helperObject();
    const TvOFXHelper& helper = own ? *own : *TvOFXHelper::defaultHelper();
    const NodeRef node = NodeRef::of(*data);
    if (!node || !mayNameCurrency(node)) return std::nullopt;
    const NodeRef given = first(node, element("CURRENCY"));
    const NodeRef original = first(node, element("ORIGCURRENCY"));
    // The one that comes first in the document counts, as for investments; an empty one does not count.
    const bool isGivenFirst = given && (!original || given.at < original.at);
    for (const bool isGiven : {isGivenFirst, !isGivenFirst})
        if (const NodeRef& value = isGiven ? given : original)
            if (auto currency = currencyIn(value, helper, !isGiven)) return currency;
    return std::nullopt;
}

namespace investments {

std::optional<TransactionCurrency> currencyOf(const InvestmentRecord& object, const CurrencyFields& fields) {
    const Records& records = recordsOf(object);
    const Record& record = recordOf(object);
    const std::uint32_t given = records.fieldNode(record, fields.given);
    const std::uint32_t original = records.fieldNode(record, fields.original);
    for (const std::uint32_t node : {std::min(given, original), std::max(given, original)}) {
        if (node == 0) continue;
        TransactionCurrency currency{{}, std::nullopt, node == original};
        if (!records.node(node).isAggregate()) {
            currency.symbol = records.document->text(records.node(node));
            if (currency.symbol.empty()) continue;
            return currency;
        }
        // A record keeps only the first symbol and rate, which may be those of the other aggregate.
        const auto isIn = [&records, node](std::uint32_t leaf) {
            return leaf > node && leaf < records.document->endOf(node);
        };
        const bool hasSymbol = isIn(records.fieldNode(record, fields.symbol));
        const bool hasRate = isIn(records.fieldNode(record, fields.rate));
        if (!hasSymbol && !hasRate) continue;
        if (hasSymbol) currency.symbol = records.text(record, fields.symbol).value_or("");
        if (hasRate) currency.rate = records.amount(record, fields.rate);
        return currency;
    }
    return std::nullopt;
}

}  // namespace investments
}  // namespace brackwell
