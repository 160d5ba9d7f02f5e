// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace brackwell::system {

/// Asks the system to back large new memory with large pages. Handing out 120 MB in pages of 4 KiB takes
/// the system as long as importing a document of 40 MB into them takes the library; in large pages it takes
/// about half of that. Small memory, and systems that know no such wish, are left as they are.
void preferLargePages(void* memory, std::size_t size) noexcept;

}  // namespace brackwell::system
