// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include <span>

/// \file
/// The texts of a class as data: how they are called in an archive, and in which order they are
/// compared.

namespace brackwell {

/// A text field and its archive key.
struct TextKey {
    std::size_t field;
    std::string_view key;
};

/// Writes the texts that are present.
template <std::size_t Count>
void encodeTexts(KeyedArchiver& coder, const TextFields<Count>& texts, std::span<const TextKey> keys) {
    for (const auto& [field, key] : keys)
        if (const OptionalText text = texts.get(field)) coder.encodeText(key, *text);
}

/// Reads the texts; a missing key leaves its field absent.
template <std::size_t Count>
void decodeTexts(const KeyedUnarchiver& coder, TextFields<Count>& texts, std::span<const TextKey> keys) {
    for (const auto& [field, key] : keys) texts.set(field, coder.decodeText(key));
}

/// Two values agree when they are equal or one of them is absent.
template <class Value>
bool agree(const std::optional<Value>& a, const std::optional<Value>& b) {
    return !a || !b || *a == *b;
}

/// True when all the texts agree.
template <std::size_t Count>
bool agreeOnTexts(const TextFields<Count>& a, const TextFields<Count>& b,
                  std::span<const std::size_t> fields) {
    for (const std::size_t field : fields)
        if (!agree(a.get(field), b.get(field))) return false;
    return true;
}

}  // namespace brackwell
