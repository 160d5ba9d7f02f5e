// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

namespace tool {

class JsonWriter;

/// Whether "TVOFX_ORIGINAL_STRING" is written, which the parser adds to each transaction. Those of
/// transactions that are not closed overlap, and make the output far longer than the document.
enum class OriginalStrings { leftOut, written };

/// Writes a part of a parse tree as it stands: leaf = string, aggregate = object, repeated = array. Trees
/// may be of any depth.
void writeParseValue(JsonWriter& json, const brackwell::ParseValue& value, OriginalStrings originalStrings);

}  // namespace tool
