// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <string>
#include <string_view>
#include <vector>

#include "history/period.h"
#include "report/flow.h"

namespace tool {

class HtmlWriter;

/// @{
/// One of the facts of an account; nothing for an empty text or period.
void writeFact(HtmlWriter& html, std::string_view label, brackwell::OptionalText text);
void writeFact(HtmlWriter& html, std::string_view label, const Period& period);
void writeFlowFacts(HtmlWriter& html, const Flow& flow, brackwell::OptionalText currency);
/// @}

}  // namespace tool
