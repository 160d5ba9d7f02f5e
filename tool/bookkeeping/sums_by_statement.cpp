// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/sums_by_statement.h"

#include <algorithm>
#include <utility>

namespace tool {
namespace {

std::size_t lowestBit(std::size_t number) noexcept { return number & (~number + 1); }

}  // namespace

void SumsByStatement::willAsk(std::vector<std::uint32_t> statements) {
    statements_ = std::move(statements);
    std::ranges::sort(statements_);
    statements_.erase(std::unique(statements_.begin(), statements_.end()), statements_.end());
    sums_.assign(statements_.size() + 1, {});
}

/// What comes after all statements that are asked for is in none of the sums.
void SumsByStatement::add(std::uint32_t statement, const brackwell::Decimal& quantity) {
    for (std::size_t i = countBefore(statement) + 1; i < sums_.size(); i += lowestBit(i))
        sums_[i].add(quantity);
}

Sum SumsByStatement::upTo(std::uint32_t statement) const {
    Sum sum;
    for (std::size_t i = countBefore(statement) + 1; i > 0; i -= lowestBit(i)) sum.add(sums_[i]);
    return sum;
}

std::size_t SumsByStatement::countBefore(std::uint32_t statement) const {
    return static_cast<std::size_t>(std::ranges::lower_bound(statements_, statement) - statements_.begin());
}

}  // namespace tool
