// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "filter/filter.h"

namespace CLI {
class App;
}

namespace tool {

/// The texts of the options that choose transactions, before they are understood.
struct FilterTexts {
    std::optional<std::string> since;
    std::optional<std::string> until;
    std::vector<std::string> accounts;
    std::optional<std::string> search;
    std::optional<std::string> order;
};

/// What the help of a command with these options says of them.
inline constexpr const char* kFilterHelp =
    "Dates are those on which a transaction was posted or traded, both inclusive, in UTC, as they are\n"
    "shown; a transaction without one is left out where dates are asked for. --account may be given\n"
    "several times; statements and listed accounts with other numbers are left out. --search looks in the\n"
    "payee, the memo, all identifiers and the name and ticker of the security, without regard to case and\n"
    "accents; it chooses positions and securities, too. --sort orders the transactions of each statement,\n"
    "earliest or least first; equal ones keep their order, and those without date or amount come last.\n\n";

/// Declares --since, --until, --account, --search and --sort.
void declareFilter(CLI::App& command, FilterTexts& texts);

/// Throws a CLI::ValidationError for texts that are wrong only together.
Filter understoodFilter(const FilterTexts& texts);

}  // namespace tool
