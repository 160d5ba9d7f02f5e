// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <optional>
#include <string>
#include <string_view>

namespace tool {

class Output;

/// One row of a table of comma-separated values (RFC 4180), field after field. A field that a spreadsheet
/// might take for a formula begins with an apostrophe.
class Row {
public:
    void clear() noexcept { text_.clear(); }
    std::string_view text() const noexcept { return text_; }

    /// @{
    /// The next field; an empty one for nothing.
    void add(brackwell::OptionalText field);
    void add(const std::optional<brackwell::Date>& date);
    void add(const std::optional<brackwell::Decimal>& amount);
    /// @}
    /// Fields that have been made before, each with its comma.
    void addMade(std::string_view fields) { text_.append(fields); }

    /// Writes the row and its end.
    void write(Output& output) const;

private:
    void separate();
    void addQuoted(std::string_view text);

    std::string text_;
};

}  // namespace tool
