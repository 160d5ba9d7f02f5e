// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace tool::system {

/// The files that a pattern with "*" and "?" names, in the order of their names; the pattern itself where it
/// names none. On Windows such marks count in the last part of a path only.
std::vector<std::string> filesMatching(const std::string& pattern);

}  // namespace tool::system
