// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace brackwell {

/// The date that a request asks from when the application names none: everything.
inline constexpr std::string_view kDefaultUpdate = "19900101";

}  // namespace brackwell
