// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "anonymize/shape_cipher.h"

namespace brackwell::anonymizing {

/// The letters of a document that are not ASCII, by the number of bytes that they take. What replaces a
/// letter is one of them, so the document's encoding has it, and it takes as much room there.
class Letters {
public:
    explicit Letters(std::string_view text);

    /// Another letter that takes as many bytes, chosen by a number; the same one when there is no other.
    char32_t another(char32_t letter, std::uint64_t number) const noexcept;

private:
    static constexpr std::size_t kKinds = 5;
    /// The number of bytes in UTF-8 less 2. The katakana of half the width, which take three like other
    /// characters of Japanese but only one in its own encodings, are a kind of their own.
    static std::size_t kindOf(char32_t letter) noexcept;

    std::array<std::vector<char32_t>, kKinds> letters_;  ///< each once, in order
};

/// Writes what takes the place of values.
class Replacement {
public:
    /// Both must outlive this object.
    Replacement(const ShapeCipher& cipher, const Letters& letters) : cipher_(cipher), letters_(letters) {}

    /// Appends a text with other words. Whatever is no letter and no digit stays, and so do entities.
    void appendWords(std::string& to, std::string_view text) const;

    /// Appends an amount with other digits. Its zeros at the front stay, and short words such as currencies.
    void appendAmount(std::string& to, std::string_view text) const;

private:
    void appendWord(std::string& to, std::string_view word) const;
    std::vector<Symbol> digitsFor(std::string_view amount) const;
    void appendReference(std::string& to, std::string_view reference) const;

    const ShapeCipher& cipher_;
    const Letters& letters_;
};

}  // namespace brackwell::anonymizing
