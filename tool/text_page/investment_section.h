// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

namespace tool {

class SecurityLookup;
class TextPage;
struct Options;

/// The statement of an investment account: balances, holdings and transactions. Nothing for that of an
/// account that is not wanted.
void showInvestments(TextPage& page, const brackwell::InvestmentStatement& statement,
                     const SecurityLookup& securities, const Options& options);

}  // namespace tool
