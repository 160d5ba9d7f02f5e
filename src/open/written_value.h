// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

namespace brackwell::opening {

/// How the value of a text was found.
enum class ReadingKind : std::uint8_t {
    prescribed,  ///< the prescribed reading is right
    byEvidence,  ///< the prescribed reading finds nothing or something else; the text and its document decide
    doubtful,    ///< there is a value, but the text may just as well mean another one
    ambiguous,   ///< no value: the text can mean two, and nothing tells which
    unreadable,  ///< no value
};

/// A value and how it was found. There is a value unless the text is ambiguous or unreadable.
template <class Value>
struct WrittenValue {
    std::optional<Value> value;
    ReadingKind how = ReadingKind::unreadable;

    bool operator==(const WrittenValue&) const = default;
};

}  // namespace brackwell::opening
