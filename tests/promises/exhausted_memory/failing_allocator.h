// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// \file
/// The allocator of this program: it counts, and refuses what it is told to refuse. It takes the place of
/// the C library's malloc, so that memory that the C library needs for itself (text encodings, zones,
/// files) is refused as well. Under a sanitizer, whose own allocator must stay, it takes the place of
/// operator new only.

namespace brackwell::tests {

/// How long memory is exhausted: for one allocation, or from then on.
enum class Refusal { once, fromThenOn };

/// Refuses the n-th allocation from here on (1 is the next one) until stopRefusing.
void refuseAllocation(std::size_t n, Refusal refusal) noexcept;
/// True when an allocation was refused since refuseAllocation.
bool stopRefusing() noexcept;

/// How many allocations have been granted or refused since refuseAllocation.
std::size_t allocations() noexcept;

/// How many blocks have been allocated and not been released.
std::ptrdiff_t liveBlocks() noexcept;

/// False where only operator new is seen.
bool seesMalloc() noexcept;

}  // namespace brackwell::tests
