// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "memory/unpredictable_hash.h"

namespace brackwell::anonymizing {

/// One place of a text: which of how many characters may stand there.
struct Symbol {
    std::uint8_t value = 0;
    std::uint8_t count = 1;  ///< `value` is below this
};

/// Replaces texts by others of the same shape, which means that each place keeps its count.
///
/// Each text of a shape becomes another one, and no two become the same, without a list of what was replaced,
/// by a Feistel network in mixed radix: half of the places are one number, the others a second one, and each
/// in turn is moved by a keyed hash of the other one.
class ShapeCipher {
public:
    /// Replaces the symbols in place. `purpose` makes shapes of different kinds independent.
    void replace(std::span<Symbol> symbols, std::uint64_t purpose) const noexcept;

    /// A number that the key and the text decide.
    std::uint64_t numberFor(std::string_view text) const noexcept { return hash_(text); }

private:
    UnpredictableHash hash_;
};

}  // namespace brackwell::anonymizing
