// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// What happens when there is no memory. Until the command line has been understood, the program says so
/// and ends at once: some of what CLI11 does runs before main, and some where nothing may be thrown.

namespace tool {

/// Makes exhausted memory an exception, std::bad_alloc, from here on.
void throwWhenMemoryIsExhausted() noexcept;

/// Says on standard error that there is not enough memory, and needs none for it.
void sayThatMemoryIsExhausted() noexcept;

}  // namespace tool
