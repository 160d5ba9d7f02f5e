// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>

namespace brackwell {

/// What the bytes from 0x80 on are in an encoding of one byte to a character whose other bytes are ASCII; 0:
/// nothing.
using UpperHalf = std::array<char16_t, 128>;

inline constexpr UpperHalf kISOLatin1 = [] {
    UpperHalf characters{};
    for (std::size_t i = 0; i != characters.size(); ++i) characters[i] = static_cast<char16_t>(0x80 + i);
    return characters;
}();

/// Latin 1 but for eight characters.
inline constexpr UpperHalf kISOLatin9 = [] {
    struct Other {
        unsigned char byte;
        char16_t character;
    };
    UpperHalf characters = kISOLatin1;
    for (const Other& other : {Other{0xA4, u'\u20AC'},
                               {0xA6, u'\u0160'},
                               {0xA8, u'\u0161'},
                               {0xB4, u'\u017D'},
                               {0xB8, u'\u017E'},
                               {0xBC, u'\u0152'},
                               {0xBD, u'\u0153'},
                               {0xBE, u'\u0178'}})
        characters[other.byte - 0x80U] = other.character;
    return characters;
}();

/// Latin 1 with characters instead of the controls; five bytes are none.
inline constexpr UpperHalf kWindows1252 = [] {
    constexpr std::array<char16_t, 32> first = {
        u'\u20AC', 0,         u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
        u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0,         u'\u017D', 0,
        0,         u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
        u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', 0,         u'\u017E', u'\u0178'};
    UpperHalf characters = kISOLatin1;
    for (std::size_t i = 0; i != first.size(); ++i) characters[i] = first[i];
    return characters;
}();

}  // namespace brackwell
