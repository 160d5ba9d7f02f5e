// SPDX-License-Identifier: Apache-2.0
#include "csv/format.h"

#include <algorithm>

namespace tool {

CsvLayout layoutOf(const CsvFormat& format, std::span<const std::string_view> columns) {
    CsvLayout layout{format, {}};
    for (const std::string& name : format.columns)
        layout.places.push_back(static_cast<std::size_t>(std::ranges::find(columns, name) - columns.begin()));
    return layout;
}

std::optional<std::string> unknownColumn(std::span<const std::string> names,
                                         std::span<const std::string_view> columns) {
    for (const std::string& name : names)
        if (std::ranges::find(columns, name) == columns.end()) return name;
    return std::nullopt;
}

}  // namespace tool
