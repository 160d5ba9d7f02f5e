// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/accounts.h>

#include <array>

#include "fields/element_table.h"

namespace brackwell {

/// The words of SVCSTATUS.
inline constexpr std::array<Choice<TvOFXServiceStatus>, 3> kServiceStatuses{
    {{"AVAIL", TvOFXServiceStatusAvailable},
     {"PEND", TvOFXServiceStatusPending},
     {"ACTIVE", TvOFXServiceStatusActive}}};

}  // namespace brackwell
