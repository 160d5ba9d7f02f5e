// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// Where the texts of options begin in a help.
inline constexpr std::size_t kHelpColumn = 32;

/// A help for a terminal so many columns wide, without a word that is parted at its edge. Paragraphs fill the
/// width; the text of an option goes on below itself. Examples stay as they are, since they are for copying.
std::string wrappedHelp(std::string_view help, std::size_t width);

}  // namespace tool
