// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace brackwell {

/// A number of 64 bits as a size: one that is known to be no larger, or a hash, of which any bits will do. (A
/// cast would be one to the same type on machines of 64 bits, which compilers warn of.)
template <class Number>
constexpr std::size_t asSize(Number number) noexcept {
    return static_cast<std::size_t>(number);
}

}  // namespace brackwell
