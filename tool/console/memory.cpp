// SPDX-License-Identifier: Apache-2.0
#include "console/memory.h"

#include <cstdlib>
#include <new>
#include <string_view>

#include "system/descriptors.h"

namespace tool {
namespace {

[[noreturn]] void end() {
    sayThatMemoryIsExhausted();
    std::_Exit(1);
}

/// Comes before the objects that are made before main.
[[gnu::constructor(101)]] void endWhenMemoryIsExhausted() noexcept { std::set_new_handler(end); }

}  // namespace

void throwWhenMemoryIsExhausted() noexcept { std::set_new_handler(nullptr); }

void sayThatMemoryIsExhausted() noexcept {
    constexpr std::string_view line = "brackwell: There is not enough memory.\n";
    static_cast<void>(system::writeTo(system::kStandardError, line));
}

}  // namespace tool
