// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <string>

namespace tool {

/// The months since January of the year 0, so that those between two are a difference.
int numberOf(std::chrono::year_month month) noexcept;
/// The month of a number; from 0 on.
std::chrono::year_month monthOf(int number) noexcept;

/// "Jan 2025"
std::string monthName(std::chrono::year_month month);

}  // namespace tool
