// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace brackwell::system {

/// Fills bytes, 256 at most, with numbers that nobody can predict. Waits for them, which takes long only
/// right after a machine has started.
void fillWithRandom(std::span<std::uint8_t> bytes) noexcept;

/// The same without waiting: false when there are no such numbers yet.
bool tryFillWithRandom(std::span<std::uint8_t> bytes) noexcept;

}  // namespace brackwell::system
