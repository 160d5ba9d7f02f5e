// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

namespace tool {

/// An exact sum; nothing once it does not fit into a number.
class Sum {
public:
    void add(const brackwell::Decimal& amount) {
        if (sum_) sum_ = sum_->plus(amount);
    }
    void add(const Sum& other) {
        if (other.sum_)
            add(*other.sum_);
        else
            sum_.reset();
    }
    void subtract(const Sum& other) {
        if (other.sum_)
            add(other.sum_->negated());
        else
            sum_.reset();
    }
    const std::optional<brackwell::Decimal>& value() const noexcept { return sum_; }

private:
    std::optional<brackwell::Decimal> sum_ = brackwell::Decimal();
};

}  // namespace tool
