// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace brackwell::benchmarks {

/// The bytes of a file, from now to the end of the program and without a call of the allocator, whose
/// later behaviour would depend on it. Ends the program when the file cannot be read.
std::string_view mappedFile(const std::string& path);

}  // namespace brackwell::benchmarks
