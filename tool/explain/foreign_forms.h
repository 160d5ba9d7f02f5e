// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

#include <string>
#include <vector>

#include "options.h"

namespace tool {

/// What a person should know of a document in whose transactions dates or amounts are written as a country
/// does it and OFX does not: a decimal comma is read as a mark between thousands, or not at all. The same
/// of a decimal point where the caller has named other marks. One sentence for each option that helps, and
/// for those that harm.
std::vector<std::string> explainForms(const brackwell::TvOFXInterpreter& content, const Options& options);

}  // namespace tool
