// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

/// What libFuzzer calls for every input, and what the replayer calls for every file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
