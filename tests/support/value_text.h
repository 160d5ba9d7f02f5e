// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include <string>
#include <string_view>

/// \file
/// Parse trees as text, for whoever has no doctest.

namespace brackwell::tests {

/// A value like JSON, in the order in which it is walked: {"OFX": {"NAME": ["A", "B"]}}. Two trees with
/// the same text are equal and have the same order. Values deeper than 200 levels are cut short.
std::string treeText(const ParseValue& value);
std::string treeText(const ParseDictionary& tree);

/// A text in double quotes, with a backslash before quotes and backslashes in it.
std::string inQuotes(std::string_view text);

}  // namespace brackwell::tests
