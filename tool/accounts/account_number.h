// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

namespace tool {

/// The number of a bank, card or investment account; nothing for other objects, for null, and without a
/// number.
brackwell::OptionalText accountNumber(const brackwell::TvOFXAggregate* account) noexcept;

}  // namespace tool
