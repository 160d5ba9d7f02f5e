// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

namespace tool {

class JsonWriter;

/// Writes a part of a parse tree as it stands: leaf = string, aggregate = object, repeated = array.
/// Trees may be of any depth.
void writeParseValue(JsonWriter& json, const brackwell::ParseValue& value);
void writeParseDictionary(JsonWriter& json, const brackwell::ParseDictionary& dictionary);

}  // namespace tool
