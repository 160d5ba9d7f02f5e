// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "repair/markup.h"

namespace brackwell::repair {

/// What must be changed at the tags of a body so that the body parser finds every close tag's open one.
std::vector<Edit> repairNesting(std::string_view body, const std::vector<Tag>& tags,
                                reading::NameTable& names);

}  // namespace brackwell::repair
