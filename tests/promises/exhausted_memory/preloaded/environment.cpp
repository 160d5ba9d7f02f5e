// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "../failing_allocator.h"

/// \file
/// The failing allocator as a library that is loaded into another program. BRACKWELL_REFUSE tells it the
/// allocation to be refused; with a "+" after the number all that follow are refused as well. The
/// allocations are those from the loading of the program on. The file that BRACKWELL_ALLOCATIONS names gets
/// their number.

using namespace brackwell::tests;

namespace {

const char* const kCountFile = std::getenv("BRACKWELL_ALLOCATIONS");

[[gnu::constructor]] void begin() {
    const char* const refused = std::getenv("BRACKWELL_REFUSE");
    if (refused == nullptr) return;
    const bool stays = std::strchr(refused, '+') != nullptr;
    refuseAllocation(std::strtoul(refused, nullptr, 10), stays ? Refusal::fromThenOn : Refusal::once);
}

[[gnu::destructor]] void end() {
    stopRefusing();
    const std::size_t count = allocations();
    std::FILE* const file = kCountFile != nullptr ? std::fopen(kCountFile, "w") : nullptr;
    if (file == nullptr) return;
    std::fprintf(file, "%zu", count);
    std::fclose(file);
}

}  // namespace
