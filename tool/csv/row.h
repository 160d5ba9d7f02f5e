// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "csv/format.h"

namespace tool {

class Output;

/// One row of a table of comma-separated values (RFC 4180), field after field, of all columns of the table.
/// Unless the values are wanted raw, a field that a spreadsheet might take for a formula begins with an
/// apostrophe.
class Row {
public:
    /// The layout has to live as long as the row.
    explicit Row(const CsvLayout& layout) noexcept : layout_(layout) {}

    /// Begins anew, with the fields of another row.
    void beginWith(const Row& other);
    void clear() noexcept;

    /// @{
    /// The next field; an empty one for nothing.
    void add(brackwell::OptionalText field);
    void add(const std::optional<brackwell::Date>& date);
    void add(const std::optional<brackwell::Decimal>& amount) { add(amount, std::nullopt); }
    /// @}
    /// An amount, and its text in the document.
    void add(const std::optional<brackwell::Decimal>& amount, brackwell::OptionalText written);
    /// From now on texts have what is shown of an account's number in the place of the number.
    void hide(brackwell::OptionalText number, std::string_view shown);
    /// So many empty fields.
    void addEmpty(std::size_t count);

    /// Writes the columns that are wanted, and the end of the row.
    void write(Output& output) const;
    /// All fields, with the delimiter between them; valid until the row is changed.
    std::string_view text() const noexcept { return text_; }

private:
    void begin();
    void end() { ends_.push_back(text_.size()); }
    void addText(std::string_view text, bool isGuarded);
    std::string_view field(std::size_t place) const noexcept;

    const CsvLayout& layout_;
    std::string hidden_;  ///< the number; "" when there is none to hide
    std::string shown_;
    std::string text_;               ///< the fields, with the delimiter between them
    std::vector<std::size_t> ends_;  ///< where each of them ends
};

}  // namespace tool
