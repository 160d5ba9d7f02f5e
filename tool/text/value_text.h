// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

/// A date as "YYYY-MM-DDThh:mm:ss.sssZ" in UTC. Made by hand: statements have hundreds of thousands.
class DateText {
public:
    explicit DateText(brackwell::Date date) noexcept;
    operator std::string_view() const noexcept { return {text_.data(), text_.size()}; }
    /// "YYYY-MM-DD"
    std::string_view day() const noexcept { return {text_.data(), 10}; }
    /// "hh:mm", of the same moment
    std::string_view minute() const noexcept { return {text_.data() + 11, 5}; }

private:
    std::array<char, 24> text_;
};

/// "2024-01-31", in UTC; "" for nothing.
std::string dayText(std::optional<brackwell::Date> date);

}  // namespace tool
