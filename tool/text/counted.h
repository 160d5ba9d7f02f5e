// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// "1 transaction has", "2 transactions have": the part of a sentence that a number changes.
inline std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count).append(" ").append(count == 1 ? one : several);
}

}  // namespace tool
