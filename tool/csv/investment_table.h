// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "command_line/options.h"

namespace tool {

struct InputFile;
struct Run;

/// The columns of one of these tables.
std::vector<std::string_view> investmentColumns(TableKind kind);

/// The table of investment transactions, positions or securities that the options ask for; false when a file
/// could not be read.
bool writeInvestmentTable(Run& run);

/// Says how many investment transactions, positions and securities a table of bank transactions does not
/// have.
void sayWhatIsLeftOut(Run& run, const InputFile& input);

/// Says that a table does not have something of a file; a finding like those of reading.
void sayNotInTable(Run& run, const std::string& file, const std::string& sentence);

}  // namespace tool
