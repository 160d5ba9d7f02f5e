// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/internal/text_fields.h>
#include <brackwell/platform.h>

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>

#include "elements/refuse.h"
#include "tree/element_names.h"

/// \file
/// The texts of a class as data, one row for each: which element it comes from, what it is called in an
/// archive, and whether it is compared.
///
///     static constexpr TextTable<textCount> kTexts{{
///         {accountID_, element("ACCTID"), "aID"},
///         {acctKeyChecksum_, element("ACCTKEY"), "aKC"},
///     }};

namespace brackwell {

/// @{
/// What a row says of a text that no element alone fills, that archives do not hold, and in which two equal
/// objects may differ.
inline constexpr reading::NameID kNoElement = reading::kKnownElementCount;
inline constexpr std::string_view kNotArchived;
inline constexpr bool kNotCompared = false;
/// @}

struct TextRow {
    std::size_t field = std::numeric_limits<std::size_t>::max();
    reading::NameID element = kNoElement;
    std::string_view archiveKey = kNotArchived;
    bool isCompared = true;
};

/// Has a row for each text, in their order; one that is missing does not compile.
template <std::size_t Count>
class TextTable {
public:
    consteval explicit TextTable(const TextRow (&rows)[Count]) : rows_(std::to_array(rows)) {
        for (std::size_t field = 0; field < Count; ++field)
            if (rows_[field].field != field) elements::refuse("a text has no row, or one at another place");
    }
    static constexpr std::size_t size() noexcept { return Count; }
    constexpr const TextRow& row(std::size_t field) const noexcept { return rows_[field]; }
    constexpr auto begin() const noexcept { return rows_.begin(); }
    constexpr auto end() const noexcept { return rows_.end(); }

private:
    std::array<TextRow, Count> rows_;
};

/// Writes the texts that are present.
template <std::size_t Count>
void encodeTexts(KeyedArchiver& coder, const internal::TextFields<Count>& texts,
                 const TextTable<Count>& table) {
    for (const TextRow& row : table) {
        if (row.archiveKey == kNotArchived) continue;
        if (const OptionalText text = texts.get(row.field)) coder.encodeText(row.archiveKey, *text);
    }
}

/// Reads the texts; a missing key leaves its field absent.
template <std::size_t Count>
void decodeTexts(const KeyedUnarchiver& coder, internal::TextFields<Count>& texts,
                 const TextTable<Count>& table) {
    for (const TextRow& row : table)
        if (row.archiveKey != kNotArchived) texts.set(row.field, coder.decodeText(row.archiveKey));
}

/// Two values agree when they are equal or one of them is absent.
template <class Value>
bool agree(const std::optional<Value>& a, const std::optional<Value>& b) {
    return !a || !b || *a == *b;
}

/// True when all the texts agree that are compared.
template <std::size_t Count>
bool agreeOnTexts(const internal::TextFields<Count>& a, const internal::TextFields<Count>& b,
                  const TextTable<Count>& table) {
    for (const TextRow& row : table)
        if (row.isCompared && !agree(a.get(row.field), b.get(row.field))) return false;
    return true;
}

}  // namespace brackwell
