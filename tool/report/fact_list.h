// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <string>
#include <string_view>
#include <vector>

#include "report/flow.h"

namespace tool {

class HtmlWriter;

/// @{
/// One of the facts of an account; nothing for an empty text.
void writeFact(HtmlWriter& html, std::string_view label, brackwell::OptionalText text);
void writeFlowFacts(HtmlWriter& html, const Flow& flow);
/// @}

}  // namespace tool
