// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <algorithm>
#include <vector>

namespace brackwell {
namespace {

/// A number; nothing when a part of it is absent, or it has too many digits.
using Number = std::optional<Decimal>;

Number sum(const Number& a, const Number& b) noexcept { return a && b ? a->plus(*b) : std::nullopt; }
Number product(const Number& a, const Number& b) noexcept { return a && b ? a->times(*b) : std::nullopt; }
Number negated(const Number& number) noexcept { return number ? Number(number->negated()) : std::nullopt; }
Number magnitude(const Number& number) noexcept {
    return number && number->isNegative() ? negated(number) : number;
}
Number orZero(const Number& number) noexcept { return number.value_or(Decimal()); }

/// One in the last of so many decimal places.
Number unitOfPlaces(int places) noexcept { return Decimal::fromParts(false, 0, 1, -places); }

/// How many digits stand after the decimal separator of an amount's text.
int decimalPlaces(OptionalText text) noexcept {
    const std::size_t point = text ? text->find_last_of(".,") : std::string_view::npos;
    if (point == std::string_view::npos) return 0;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return static_cast<int>(std::ranges::count_if(text->substr(point + 1), isDigit));
}

// Institutions leave zeros at the end out: a text with fewer places is taken to be as exact as this.
constexpr int kPlacesOfPrice = 2;
constexpr int kPlacesOfUnits = 3;
constexpr int kPlacesOfMoney = 2;

/// Units times price without signs, and how much rounding of the two may have changed it.
struct Gross {
    Number value;
    Number rounding;
};

template <class Object>
Gross grossOf(const Object& object) {
    const Number units = magnitude(object.units());
    const Number price = magnitude(object.unitPrice());
    const Number unitOfPrice =
        unitOfPlaces(std::max(kPlacesOfPrice, decimalPlaces(object.text("unitPrice"))));
    const Number unitOfUnits = unitOfPlaces(std::max(kPlacesOfUnits, decimalPlaces(object.text("units"))));
    return {product(units, price), sum(product(units, unitOfPrice), product(price, unitOfUnits))};
}

/// What units times price have to be multiplied with, the usual reading first.
enum class Quotation : std::uint8_t { plain, perHundred, perShare };

std::vector<Number> factorsOf(Quotation quotation, const Number& sharesPerContract) {
    const Number one = Decimal::fromInteger(1);
    if (quotation == Quotation::perHundred) return {unitOfPlaces(2), one};
    // Without the shares for each contract there is nothing to compare with.
    if (quotation == Quotation::perShare) return {sharesPerContract, one};
    return {one};
}

/// True when two magnitudes differ by no more than rounding; also when that cannot be said.
bool agree(const Number& a, const Number& b, const Number& rounding) noexcept {
    const Number difference = magnitude(sum(magnitude(a), negated(magnitude(b))));
    return !difference || !rounding || *difference <= *rounding;
}

/// What rounding of an amount of money, and of what it was computed from, can explain.
Number roundingOf(OptionalText money, const Number& ofFactors) noexcept {
    return sum(ofFactors, unitOfPlaces(std::min(kPlacesOfMoney, decimalPlaces(money))));
}

enum class Side : std::uint8_t { none, buys, sells };

struct Rule {
    Side side = Side::none;
    Quotation quotation = Quotation::plain;
};

Rule ruleOf(InvestmentTransactionKind kind) noexcept {
    using enum InvestmentTransactionKind;
    switch (kind) {
        case buyDebt:
            return {Side::buys, Quotation::perHundred};
        case buyOption:
            return {Side::buys, Quotation::perShare};
        case buyFund:
        case buyOther:
        case buyStock:
        case reinvestment:
            return {Side::buys, Quotation::plain};
        case sellDebt:
            return {Side::sells, Quotation::perHundred};
        case sellOption:
            return {Side::sells, Quotation::perShare};
        case sellFund:
        case sellOther:
        case sellStock:
            return {Side::sells, Quotation::plain};
        default:
            return {};
    }
}

/// What a transaction costs beside the securities themselves.
Number costsOf(const InvestmentTransaction& transaction) {
    Number costs = Decimal();
    for (const Number& part :
         {transaction.commission(), transaction.fees(), transaction.taxes(), transaction.load(),
          transaction.withholding(), transaction.stateWithholding(), transaction.penalty()})
        costs = sum(costs, orZero(part));
    return costs;
}

/// What the OFX standard counts in two ways, so that it may be in the total or not.
std::vector<Number> doubtfulParts(const InvestmentTransaction& transaction, Side side) {
    const Number accrued = magnitude(orZero(transaction.accruedInterest()));
    const Number perUnit = magnitude(side == Side::buys ? transaction.markup() : transaction.markdown());
    const Number marked = product(magnitude(transaction.units()), orZero(perUnit));
    const Number change = side == Side::buys ? marked : negated(marked);
    return {Decimal(), accrued, change, sum(accrued, change)};
}

}  // namespace

std::optional<Decimal> contradictingMarketValue(const Position& position, const Security* security) {
    const Number value = position.marketValue();
    const Gross gross = grossOf(position);
    const bool isOption = position.kind() == PositionKind::option;
    const Quotation quotation = isOption                                ? Quotation::perShare
                                : position.kind() == PositionKind::debt ? Quotation::perHundred
                                                                        : Quotation::plain;
    const std::vector<Number> factors =
        factorsOf(quotation, security != nullptr ? security->sharesPerContract() : std::nullopt);
    for (const Number& factor : factors) {
        const Number rounding = roundingOf(position.text("marketValue"), product(gross.rounding, factor));
        if (agree(product(gross.value, factor), value, rounding)) return std::nullopt;
    }
    return product(gross.value, factors.front());
}

std::optional<Decimal> contradictingTotal(const InvestmentTransaction& transaction) {
    const auto [side, quotation] = ruleOf(transaction.kind());
    if (side == Side::none) return std::nullopt;
    const Gross gross = grossOf(transaction);
    const Number costs = side == Side::buys ? costsOf(transaction) : negated(costsOf(transaction));
    const std::vector<Number> factors = factorsOf(quotation, transaction.sharesPerContract());
    for (const Number& factor : factors)
        for (const Number& doubtful : doubtfulParts(transaction, side)) {
            const Number expected = sum(sum(product(gross.value, factor), costs), doubtful);
            const Number rounding = roundingOf(transaction.text("total"), product(gross.rounding, factor));
            if (agree(expected, transaction.total(), rounding)) return std::nullopt;
        }
    return sum(product(gross.value, factors.front()), costs);
}

}  // namespace brackwell
