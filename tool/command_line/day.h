// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <optional>
#include <string>
#include <string_view>

/// \file
/// Days as they are given on the command line: the same forms in all commands.

namespace tool {

/// The beginning of the day that "2024-01-31" or "20240131" names; nothing for other texts and days that no
/// calendar has.
std::optional<brackwell::Date> dayOf(std::string_view text);

/// What is wrong with the text of a day; "" for nothing.
std::string checkDay(const std::string& text);

}  // namespace tool
