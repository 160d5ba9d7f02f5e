// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// A text of which lines are shown.
struct ExcerptSource {
    std::string_view text;
    std::vector<brackwell::TextRange> secrets;  ///< shown as a mask
    std::size_t width;                          ///< how many columns a line may take
};

/// The line of a place with its number and a mark under the place, with so many lines around it. What is
/// too long is cut around the place; what a terminal might obey becomes visible.
std::string excerpt(const ExcerptSource& source, std::size_t place, std::size_t linesBefore,
                    std::size_t linesAfter);

}  // namespace tool
