// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

namespace brackwell::tests {

/// Reads all that an archive, whose bytes begin with `map`, holds and writes it anew. Nothing when a value
/// is of no kind or of several. Recurses into objects.
std::optional<KeyedArchiver> copyOf(const KeyedUnarchiver& archive, std::string_view map);

}  // namespace brackwell::tests
