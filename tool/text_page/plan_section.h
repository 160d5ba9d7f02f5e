// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

namespace tool {

class TextPage;

/// What a statement says of a retirement plan; nothing when it does not.
void showPlan(TextPage& page, const brackwell::InvestmentStatement& statement);

}  // namespace tool
