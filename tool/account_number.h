// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

namespace tool {

/// The number of a bank, card or investment account; nothing for other objects, for null, and without a
/// number.
brackwell::OptionalText accountNumber(const brackwell::TvOFXAggregate* account) noexcept;

/// The number of a record's bank account, the only kind that the library reads there.
brackwell::OptionalText accountNumber(const brackwell::TvOFXAccountInfo& record) noexcept;

/// The account that a statement is of; null when it names none.
const brackwell::TvOFXAggregate* accountOf(const brackwell::TvOFXAccountStatement& statement) noexcept;

}  // namespace tool
