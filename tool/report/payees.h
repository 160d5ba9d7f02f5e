// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "filter/filter.h"
#include "history/period.h"
#include "report/flow.h"

namespace tool {

/// What came and went with how many transactions.
struct PayeeFlow {
    std::size_t count = 0;
    Flow money;

    void add(const std::optional<Amount>& amount) {
        ++count;
        if (amount) money.add(*amount);
    }
};

/// All that has one name, but for case and accents.
struct Payee {
    std::string name;  ///< as it is written first, or a memo in its place; "" for transactions without either
    PayeeFlow total;
    std::map<std::string, PayeeFlow> months;  ///< "2024-03"; "" for what has no date
    Period period;
};

/// The payees of all accounts in one currency, since amounts in different ones are never added.
struct Payees {
    std::map<std::string, Payee> byName;
    std::size_t foreign = 0;  ///< amounts in another currency, which are in no sum

    void add(const brackwell::TvOFXStatementTransaction& transaction, const std::string& currency);
};

/// Those that got most first, or as --sort says.
std::vector<const Payee*> sortedPayees(const Payees& payees, Order order);

}  // namespace tool
