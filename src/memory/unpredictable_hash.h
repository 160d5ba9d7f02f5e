// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace brackwell {

/// A hash that cannot be predicted from outside, so that no document can choose texts that collide.
class UnpredictableHash {
public:
    UnpredictableHash();
    std::uint64_t operator()(std::string_view text) const noexcept;

private:
    std::array<std::uint64_t, 2> key_;
};

}  // namespace brackwell
