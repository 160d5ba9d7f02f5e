// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "money/sum.h"

namespace tool {

class TextPage;

/// What the transactions of a table come to together.
class Totals {
public:
    /// A transaction's amount as it is written, and in the currency of the sums; nothing where that is not
    /// known.
    void add(const std::optional<brackwell::Decimal>& written, const std::optional<Amount>& amount);
    /// "3 transactions: in 10.00, out -2.50, sum 7.50 USD (1 without an amount)"
    void show(TextPage& page, brackwell::OptionalText currency) const;

private:
    std::size_t count_ = 0;
    std::size_t withoutAmount_ = 0;
    std::size_t foreign_ = 0;
    Sum in_;
    Sum out_;
    Sum all_;
};

/// "7.50"; "not representable" for a sum that does not fit into a number.
std::string shownSum(const Sum& sum, brackwell::OptionalText currency);

}  // namespace tool
