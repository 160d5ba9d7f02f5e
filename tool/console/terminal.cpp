// SPDX-License-Identifier: Apache-2.0
#include "console/terminal.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "system/descriptors.h"

namespace tool {
namespace {

constexpr std::size_t kLeastWidth = 20;
constexpr std::size_t kUsualWidth = 100;
constexpr std::size_t kGreatestWidth = 10'000;

std::string_view environment(const char* name) noexcept {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The number of columns in COLUMNS; 0 when there is none.
std::size_t columnsVariable() noexcept {
    const std::string_view text = environment("COLUMNS");
    std::size_t columns = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), columns);
    return failure == std::errc() && end == text.data() + text.size() ? columns : 0;
}

}  // namespace

bool isCapableTerminal(int descriptor) noexcept {
    return system::isTerminal(descriptor) && environment("TERM") != "dumb";
}

bool wantsColour(Colour colour, int descriptor) noexcept {
    if (colour != Colour::automatic) return colour == Colour::always;
    return isCapableTerminal(descriptor) && environment("NO_COLOR").empty();
}

std::size_t terminalWidth(int descriptor) noexcept {
    std::size_t columns = columnsVariable();
    if (columns == 0) columns = system::terminalColumns(descriptor);
    return columns == 0 ? kUsualWidth : std::clamp(columns, kLeastWidth, kGreatestWidth);
}

}  // namespace tool
