// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <memory>
#include <string_view>
#include <vector>

#include "open/written_dates.h"

namespace brackwell::opening {

/// What stands behind an OpenedDocument. It does not change once it is made.
struct DocumentState {
    OpenError error;
    TextEncoding encoding = TextEncodingNone;
    std::string_view mark;  ///< a part of the bytes
    Data bytes;
    Data text;
    Data readText;
    std::vector<RepairChange> changes;
    TvOFXParserResult content;
    std::shared_ptr<TvOFXInterpreter> interpreter;  ///< null when the document was not read
    std::vector<std::shared_ptr<TvOFXAccountStatement>> statements;
    std::vector<InvestmentStatement> investmentStatements;
    std::vector<Security> securities;
    std::vector<ListedAccount> accounts;
    WrittenDates dates;  ///< how those of the document are written
    std::vector<Finding> findings;
};

}  // namespace brackwell::opening
