// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "repair/markup.h"

namespace brackwell::repair {

inline constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

/// By the number of a name: the number of the name that is this one after the extension prefix "INTU.",
/// and that a close tag of this name closes, too; kNone when no tag has it.
std::vector<std::uint32_t> extendedNames(const std::vector<Tag>& tags, reading::NameTable& names);

/// For each open tag its close tag, and the other way round; kNone where there is none. A close tag finds
/// the innermost open tag that it closes; what was opened after that one is then left without.
std::vector<std::uint32_t> partnersOf(const std::vector<Tag>& tags,
                                      const std::vector<std::uint32_t>& extended);

}  // namespace brackwell::repair
