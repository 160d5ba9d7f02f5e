// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/ascii_case.h"
#include "text/ascii_digit.h"

namespace brackwell {

/// True for what names of elements consist of in ASCII: letters, digits, and the four marks that XML allows
/// in them.
constexpr bool isInASCIIName(char character) noexcept {
    return isASCIILetter(character) || digitValue(character) <= 9 || character == '.' || character == '_' ||
           character == '-' || character == ':';
}

}  // namespace brackwell
