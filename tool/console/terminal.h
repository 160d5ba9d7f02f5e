// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace tool {

/// True when the descriptor is a terminal that understands escape sequences.
bool isCapableTerminal(int descriptor) noexcept;

/// Where text is coloured.
enum class Colour : unsigned char {
    automatic,  ///< on a capable terminal, unless NO_COLOR is set
    always,
    never,
};

/// True when colour is wanted there.
bool wantsColour(Colour colour, int descriptor) noexcept;

/// How many columns there are to fill: COLUMNS when it is set, what the terminal says, or 100 when it
/// is none. At least 20.
std::size_t terminalWidth(int descriptor) noexcept;

}  // namespace tool
