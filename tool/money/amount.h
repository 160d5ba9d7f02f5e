// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <compare>
#include <limits>

namespace tool {

/// An exact amount, and how many decimals are worth showing: all of one that a document has, those of the
/// currency of one that a rate has converted.
struct Amount {
    static constexpr int kAllPlaces = std::numeric_limits<int>::max();

    /// As a document has it.
    explicit(false) Amount(const brackwell::Decimal& amount) noexcept : exact(amount) {}
    Amount(const brackwell::Decimal& amount, int shownPlaces) noexcept : exact(amount), places(shownPlaces) {}

    bool isNegative() const noexcept { return exact.isNegative(); }
    Amount negated() const noexcept { return {exact.negated(), places}; }
    /// Rounded to its places, half away from zero.
    brackwell::Decimal shown() const;

    auto operator<=>(const Amount& other) const noexcept { return exact <=> other.exact; }

    brackwell::Decimal exact;
    int places = kAllPlaces;
};

}  // namespace tool
