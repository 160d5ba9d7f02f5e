// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace brackwell {

/// What stands between words of one line.
constexpr bool isBlank(char character) noexcept { return character == ' ' || character == '\t'; }

/// U+0009-000D and 0020, the white space that almost every text ends with.
constexpr bool isASCIIWhiteSpace(char character) noexcept {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

}  // namespace brackwell
