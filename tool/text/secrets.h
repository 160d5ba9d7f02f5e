// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool {

/// What stands for a secret, whatever its length.
inline constexpr std::string_view kMask = "****";

/// Bytes of a text, from `begin` to before `end`.
struct TextRange {
    std::size_t begin;
    std::size_t end;
};

/// Where in the text of a document passwords, keys and cookies stand: the values of the elements that
/// hold them, from behind the open tag, or behind the name of one that is no proper tag, to the next tag. The
/// document need not be one that reads. In the order of their places; no two overlap.
std::vector<TextRange> secretsIn(std::string_view document);

/// True when a part of the text is, or has in it, a part of a secret.
bool touchesSecret(const std::vector<TextRange>& secrets, TextRange part) noexcept;

}  // namespace tool
