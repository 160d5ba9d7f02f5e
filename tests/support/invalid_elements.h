// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/repair.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell::tests {

/// An element of a document that the standard gives no place where it stands.
struct InvalidElement {
    std::size_t offset;  ///< of its tag
    std::string name;
};

/// The known elements of a document that stand where they may not, or once more than they may; aggregates
/// that have a text; and names that are known in capitals only. In the order of the text, which is read as
/// the body parser reads it, step by step. What may stand where is asked of standard_places.h.
std::vector<InvalidElement> invalidElementsOf(std::string_view document);

/// What a repaired text does not tell of its invalid elements, or tells although it is not so; "" when its
/// remarks are the whole truth.
std::string untold(const RepairedText& repaired);

}  // namespace brackwell::tests
