// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace brackwell::tests {

inline std::string zeros(std::size_t count) { return std::string(count, '0'); }

/// The number that a text must be.
inline Decimal decimal(std::string_view text) {
    const auto number = Decimal::fromString(text);
    INFO("not a number: " << std::string(text));
    REQUIRE(number);
    return *number;
}

}  // namespace brackwell::tests
