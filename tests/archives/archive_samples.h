// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/decimals.h"

/// \file
/// Short ways to write archives, for their tests.

namespace brackwell::tests {

using Item = ArchiveListItem;
using Kind = ArchiveListItem::Kind;

inline Item text(std::string_view text) { return {Kind::text, text, 0}; }
inline Item begin(std::size_t count) { return {Kind::beginList, {}, count}; }
inline Item end() { return {Kind::endList, {}, 0}; }

inline Date dateOf(std::int64_t milliseconds) { return Date(std::chrono::milliseconds(milliseconds)); }

inline std::string bytesOf(const KeyedArchiver& archiver) {
    return std::string(archiver.archivedData().bytes());
}

inline std::optional<KeyedUnarchiver> open(std::string_view bytes) {
    return KeyedUnarchiver::open(Data::copy(bytes));
}

/// An archive of one entry under the key "k", its value given in CBOR.
inline std::optional<KeyedUnarchiver> openValue(std::string_view value) {
    return open("\xA1\x61k" + std::string(value));
}

/// An archive with a value of every kind.
inline KeyedArchiver sample() {
    KeyedArchiver inner;
    inner.encodeText("name", "Caf\u00E9");
    inner.encodeDecimal("d", decimal("-12.50"));
    KeyedArchiver archiver;
    archiver.encodeText("text", "Lorem ipsum dolor sit amet");
    archiver.encodeText("", "");
    archiver.encodeUnsigned("aT", 1000);
    archiver.encodeDate("whole", dateOf(1706720700000));
    archiver.encodeDate("ms", dateOf(1706720700250));
    archiver.encodeDecimal("amount", decimal("99999999999999999999999999999999999999"));
    archiver.encodeList("list", {text("a"), begin(3), text(""), begin(0), end(), text("b"), end()});
    archiver.encodeObject("object", inner);
    archiver.encodeObject("none", {});
    return archiver;
}

}  // namespace brackwell::tests
