// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <cstddef>
#include <string>
#include <vector>

#include "history/history.h"
#include "report/figures.h"

namespace tool {

class FindingList;
struct Filter;

/// All that a page is made of.
struct Report {
    std::vector<AccountFigures> accounts;
    std::vector<InvestmentFigures> investments;
    std::vector<CurrencyFigures> currencies;
    std::vector<std::string> unread;                      ///< files that could not be read
    const FindingList* findings = nullptr;                ///< what is to be said of the others
    std::size_t repeats = 0;                              ///< transactions that were left out
    const brackwell::SecurityList* securities = nullptr;  ///< of all files
    const Filter* filter = nullptr;                       ///< by which the others were chosen
    std::vector<brackwell::Security> otherSecurities;     ///< that no holding or transaction names

    std::size_t accountCount() const noexcept { return accounts.size() + investments.size(); }
};

}  // namespace tool
