// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "investments/transaction.h"
#include "numbers/wide.h"

namespace brackwell {
namespace {

// ---------------------------------------------------------------------------------------------
// Most amounts have few digits and agree to the cent. That is checked first, in whole numbers: it is done for
// every transaction of a document, and decimals take longer.

/// Numbers are whole multiples of 10^-kWholePlaces. Thirty of them can be added without an overflow.
constexpr int kWholePlaces = 12;
constexpr int kMostShift = 18;
constexpr auto kPowers = [] {
    std::array<std::uint64_t, kMostShift + 1> powers{1};
    for (std::size_t i = 1; i != powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();
constexpr Wide kCent = kPowers[kWholePlaces - 2];

/// A sum of signed numbers; it agrees with nothing once a number does not fit.
class WholeSum {
public:
    void add(bool isNegative, std::uint64_t coefficient, int exponent) noexcept {
        const int shift = exponent + kWholePlaces;
        fits_ = fits_ && shift >= 0 && shift <= kMostShift && coefficient >> kMostBits == 0;
        if (!fits_) return;
        (isNegative ? below_ : above_) += Wide{coefficient} * kPowers[static_cast<unsigned>(shift)];
    }
    void add(const Decimal& number, bool isNegated) noexcept {
        fits_ = fits_ && number.coefficientHigh() == 0;
        add(number.isNegative() != isNegated, number.coefficientLow(), number.exponent());
    }
    /// Two magnitudes, as long as each has so few digits that the product fits, too.
    void addProduct(const Decimal& a, const Decimal& b) noexcept {
        constexpr int half = kMostBits / 2;
        fits_ = fits_ && (a.coefficientHigh() | b.coefficientHigh()) == 0 &&
                (a.coefficientLow() | b.coefficientLow()) >> half == 0;
        if (fits_) add(false, a.coefficientLow() * b.coefficientLow(), a.exponent() + b.exponent());
    }
    /// True when the magnitude is another one's to the cent.
    bool agreesWith(const Decimal& number) const noexcept {
        WholeSum other;
        other.add(number, number.isNegative());
        return fits_ && other.fits_ && difference(magnitude(), other.magnitude()) <= kCent;
    }

private:
    static constexpr int kMostBits = 62;

    static Wide difference(Wide a, Wide b) noexcept { return a < b ? b - a : a - b; }
    Wide magnitude() const noexcept { return difference(above_, below_); }

    Wide above_ = 0;  ///< the sum of the positive numbers
    Wide below_ = 0;  ///< that of the negative ones' magnitudes
    bool fits_ = true;
};

// ---------------------------------------------------------------------------------------------
// All else

/// A number; nothing when a part of it is absent, or it has too many digits.
using Number = std::optional<Decimal>;

Number sum(const Number& a, const Number& b) noexcept { return a && b ? a->plus(*b) : std::nullopt; }
Number product(const Number& a, const Number& b) noexcept { return a && b ? a->times(*b) : std::nullopt; }
Number negated(const Number& number) noexcept { return number ? Number(number->negated()) : std::nullopt; }
Number magnitude(const Number& number) noexcept {
    return number && number->isNegative() ? negated(number) : number;
}
Number orZero(const Number& number) noexcept { return number.value_or(Decimal()); }

/// One unit in the last of this many decimal places.
Number unitOfPlaces(int places) noexcept { return Decimal::fromParts(false, 0, 1, -places); }

/// How many digits are after the decimal separator in the text of an amount.
int decimalPlaces(OptionalText text) noexcept {
    const std::size_t point = text ? text->find_last_of(".,") : std::string_view::npos;
    if (point == std::string_view::npos) return 0;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return static_cast<int>(std::ranges::count_if(text->substr(point + 1), isDigit));
}

// Institutions leave out zeros at the end, so a text with fewer places counts as exact to this many. Units
// written as a whole number are exact.
constexpr int kPlacesOfPrice = 2;
constexpr int kPlacesOfUnits = 3;
constexpr int kPlacesOfMoney = 2;

/// How far rounding to this many places may change a number.
Number halfOfPlaces(int places) noexcept { return Decimal::fromParts(false, 0, 5, -places - 1); }

Number roundingOfUnits(OptionalText units) noexcept {
    const int places = decimalPlaces(units);
    return places == 0 ? Decimal() : halfOfPlaces(std::max(kPlacesOfUnits, places));
}

/// Units times price without signs, and how much rounding of the two may have changed it.
struct Gross {
    Number value;
    Number rounding;
};

template <class Object>
Gross grossOf(const Object& object) {
    const Number units = magnitude(object.units());
    const Number price = magnitude(object.unitPrice());
    const Number ofPrice = halfOfPlaces(std::max(kPlacesOfPrice, decimalPlaces(object.text("unitPrice"))));
    return {product(units, price),
            sum(product(units, ofPrice), product(price, roundingOfUnits(object.text("units"))))};
}

/// What units times price have to be multiplied with, the usual reading first.
enum class Quotation : std::uint8_t { plain, perHundred, perShare };

std::vector<Number> factorsOf(Quotation quotation, const Number& sharesPerContract,
                              const Security* security) {
    const Number one = Decimal::fromInteger(1);
    if (quotation == Quotation::plain) return {one};
    // Without the shares for each contract there is nothing to compare with.
    if (quotation == Quotation::perShare) return {sharesPerContract, one};
    // Bonds may be counted by number instead of by their face value, which is usually a thousand.
    const Number stated = security != nullptr ? security->parValue() : std::nullopt;
    const Number face = stated ? stated : Number(Decimal::fromInteger(1000));
    return {unitOfPlaces(2), one, product(face, unitOfPlaces(2)), face};
}

/// True when two magnitudes differ by no more than rounding; also when that cannot be computed.
bool agree(const Number& a, const Number& b, const Number& rounding) noexcept {
    const Number difference = magnitude(sum(magnitude(a), negated(magnitude(b))));
    return !difference || !rounding || *difference <= *rounding;
}

/// What rounding of an amount of money, up or down, and of what it was computed from can explain.
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

/// The sum of the costs as they are written, and, since some institutions write costs as negative amounts,
/// that of their magnitudes.
std::array<Number, 2> sumsOfCosts(const InvestmentTransaction& transaction) noexcept {
    std::array<Number, 2> sums{Decimal(), Decimal()};
    for (const Decimal* cost : investments::tradeAmountsOf(transaction).costs) {
        if (cost == nullptr) continue;
        sums[0] = sum(sums[0], *cost);
        sums[1] = sum(sums[1], magnitude(*cost));
    }
    return sums;
}

/// What the OFX standard counts in two ways, so that it may be in the total or not.
std::vector<Number> doubtfulParts(const InvestmentTransaction& transaction, Side side) {
    const Number accrued = magnitude(orZero(transaction.accruedInterest()));
    const Number perUnit = magnitude(side == Side::buys ? transaction.markup() : transaction.markdown());
    const Number marked = product(magnitude(transaction.units()), orZero(perUnit));
    const Number change = side == Side::buys ? marked : negated(marked);
    return {Decimal(), accrued, change, sum(accrued, change)};
}

/// True when units and price make the market value to the cent.
bool agreesAtOnce(const Position& position, const Decimal& value) noexcept {
    const Number units = position.units();
    const Number price = position.unitPrice();
    if (!units || !price || position.kind() == PositionKind::option) return false;
    WholeSum made;
    made.addProduct(*units, *price);
    return made.agreesWith(value);
}

/// True when the usual reading makes the total to the cent.
bool agreesAtOnce(const InvestmentTransaction& transaction, const Rule& rule) noexcept {
    const investments::TradeAmounts amounts = investments::tradeAmountsOf(transaction);
    const bool isWhole = amounts.units != nullptr && amounts.unitPrice != nullptr && amounts.total != nullptr;
    if (!isWhole || rule.quotation != Quotation::plain) return false;
    WholeSum made;
    made.addProduct(*amounts.units, *amounts.unitPrice);
    for (const Decimal* cost : amounts.costs)
        if (cost != nullptr) made.add(*cost, rule.side == Side::sells);
    return made.agreesWith(*amounts.total);
}

}  // namespace

std::optional<Decimal> contradictingMarketValue(const Position& position, const Security* security) {
    const Number value = position.marketValue();
    if (!value || agreesAtOnce(position, *value)) return std::nullopt;
    const Gross gross = grossOf(position);
    const bool isOption = position.kind() == PositionKind::option;
    const Quotation quotation = isOption                                ? Quotation::perShare
                                : position.kind() == PositionKind::debt ? Quotation::perHundred
                                                                        : Quotation::plain;
    const std::vector<Number> factors =
        factorsOf(quotation, security != nullptr ? security->sharesPerContract() : std::nullopt, security);
    for (const Number& factor : factors) {
        const Number rounding = roundingOf(position.text("marketValue"), product(gross.rounding, factor));
        if (agree(product(gross.value, factor), value, rounding)) return std::nullopt;
    }
    return product(gross.value, factors.front());
}

std::optional<Decimal> contradictingTotal(const InvestmentTransaction& transaction,
                                          const Security* security) {
    const Rule rule = ruleOf(transaction.kind());
    if (rule.side == Side::none || agreesAtOnce(transaction, rule)) return std::nullopt;
    const Gross gross = grossOf(transaction);
    std::array<Number, 2> costs = sumsOfCosts(transaction);
    if (rule.side == Side::sells) std::ranges::transform(costs, costs.begin(), negated);
    const std::vector<Number> factors = factorsOf(rule.quotation, transaction.sharesPerContract(), security);
    for (const Number& factor : factors) {
        const Number value = product(gross.value, factor);
        const Number rounding = roundingOf(transaction.text("total"), product(gross.rounding, factor));
        for (const Number& doubtful : doubtfulParts(transaction, rule.side))
            for (const Number& cost : costs)
                if (agree(sum(sum(value, cost), doubtful), transaction.total(), rounding))
                    return std::nullopt;
    }
    return sum(product(gross.value, factors.front()), costs.front());
}

}  // namespace brackwell
