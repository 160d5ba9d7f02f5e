// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "money/sum.h"

namespace tool {

/// Sums of what the statements up to one have (a binary indexed tree). Only some statements are asked for, so
/// it is as large as these are many.
class SumsByStatement {
public:
    /// To be called before anything is added.
    void willAsk(std::vector<std::uint32_t> statements);

    void add(std::uint32_t statement, const brackwell::Decimal& quantity);
    /// The statement must be one that is asked for.
    Sum upTo(std::uint32_t statement) const;

private:
    std::size_t countBefore(std::uint32_t statement) const;

    std::vector<std::uint32_t> statements_;  ///< sorted
    std::vector<Sum> sums_;
};

}  // namespace tool
