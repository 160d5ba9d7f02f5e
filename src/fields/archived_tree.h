// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include <optional>
#include <string_view>

namespace brackwell {

/// Writes a parse dictionary under a key: a list of names, each followed by its text or by the list of
/// its entries; a repeated name is repeated. The order of the entries so is kept.
void encodeTree(KeyedArchiver& coder, std::string_view key, const ParseDictionary& tree);

/// Reads what encodeTree wrote; nothing when the key is missing or holds anything else.
std::optional<ParseDictionary> decodeTree(const KeyedUnarchiver& coder, std::string_view key);

}  // namespace brackwell
