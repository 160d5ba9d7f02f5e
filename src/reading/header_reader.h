// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include "reading/name_table.h"

namespace brackwell::reading {

/// Collects header names with their values: a later value of a name replaces an earlier one and keeps
/// its place. The texts are not copied before finish.
class HeaderCollector {
public:
    void set(std::string_view name, std::string_view value);
    ParseDictionary finish() const;

private:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};
    NameTable names_;
    std::vector<std::uint32_t> places_;  ///< by name; kNone: not set
    std::vector<std::pair<NameID, std::string_view>> values_;
};

}  // namespace brackwell::reading
