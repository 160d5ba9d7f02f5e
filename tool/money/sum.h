// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <optional>

#include "money/amount.h"

namespace tool {

/// An exact sum; nothing once it does not fit into a number.
class Sum {
public:
    void add(const Amount& amount) {
        if (sum_) sum_ = sum_->plus(amount.exact);
        places_ = std::min(places_, amount.places);
    }
    void add(const Sum& other) {
        if (other.sum_)
            add(Amount(*other.sum_, other.places_));
        else
            sum_.reset();
    }
    void subtract(const Sum& other) {
        if (other.sum_)
            add(Amount(*other.sum_, other.places_).negated());
        else
            sum_.reset();
    }
    const std::optional<brackwell::Decimal>& value() const noexcept { return sum_; }
    std::optional<Amount> amount() const {
        return sum_ ? std::optional(Amount(*sum_, places_)) : std::nullopt;
    }
    /// With the decimals that are worth showing of all that was added.
    std::optional<brackwell::Decimal> shown() const {
        return sum_ ? std::optional(Amount(*sum_, places_).shown()) : std::nullopt;
    }

private:
    std::optional<brackwell::Decimal> sum_ = brackwell::Decimal();
    int places_ = Amount::kAllPlaces;
};

}  // namespace tool
