// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace brackwell {

/// A hash of what tells an account from others: a number and texts, in this order. Absent is another text
/// than the empty one. Nobody outside of the process can choose accounts that collide.
std::size_t accountHash(std::uint64_t number, std::initializer_list<OptionalText> texts) noexcept;

}  // namespace brackwell
