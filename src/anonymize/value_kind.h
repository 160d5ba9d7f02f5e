// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "elements/structure.h"

namespace brackwell::anonymizing {

/// What the values of an element are, for somebody who must not learn from them who somebody is.
enum class ValueKind : std::uint8_t {
    text,         ///< says who, or may do so
    amount,       ///< says how much
    date,         ///< stays, or is moved
    time,         ///< of a day: stays
    code,         ///< a word of the standard or a small number: stays, if it looks like one
    institution,  ///< says which institution
};

/// The kind of an element's values; text for elements that are not known.
ValueKind kindOf(elements::Element element) noexcept;

/// The element that a name in a tag means, in whatever case and with whatever prefix of a namespace.
elements::Element elementMeantBy(std::string_view name) noexcept;

/// The element whose name differs from this one in one character: "STMTjRN", "=TATUS". kUnknown when there is
/// none, or the name is that of an element.
elements::Element elementLike(std::string_view name) noexcept;

/// True for a name as the standard and institutions write theirs. What has small letters may be a person's
/// address in brackets.
bool looksLikeElement(std::string_view name) noexcept;

/// True for what can be a code: a word in capitals, or a number too short for an account or a telephone.
bool looksLikeCode(std::string_view text) noexcept;

/// True for what can be a date or a time of day: digits and marks, in an order that a day may have, and words
/// no longer than a month's name cut short or a zone.
bool looksLikeDate(std::string_view text) noexcept;

}  // namespace brackwell::anonymizing
