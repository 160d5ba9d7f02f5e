// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brackwell {

/// The name of the response inside a wrapper: "STMTTRNRS" holds "STMTRS".
inline std::string innerResponseName(std::string_view wrapperName) {
    constexpr std::size_t fromEnd = 5;
    constexpr std::size_t deleted = 3;
    return std::string(wrapperName).erase(wrapperName.size() - fromEnd, deleted);
}

}  // namespace brackwell
