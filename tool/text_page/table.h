// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

class TextPage;

/// One column of a table.
struct Column {
    enum class Kind : unsigned char {
        text,    ///< starts at the left
        amount,  ///< stands on its decimal point; negative ones are red where there is colour
    };
    std::string_view title;
    Kind kind = Kind::text;
    std::size_t least = 0;  ///< how narrow it may be cut; 0: never cut
    int worth = 0;          ///< when all are cut and still too wide, the columns of least worth go
};

/// A table whose columns are as wide as what stands in them, but fit into the page together. Made in
/// two goes over the rows, so that none are kept: measure each, fit, then write each.
class Table {
public:
    /// A cell for each column. Their texts are visible already.
    using Row = std::vector<std::string>;

    explicit Table(const std::vector<Column>& columns);

    void measure(const Row& row);
    /// Fixes the widths. Columns without any text are left out.
    void fit(std::size_t width);
    /// The titles, and before them which columns there is no room for.
    void writeTitles(TextPage& page) const;
    void writeRow(TextPage& page, const Row& row) const;

private:
    /// A column with the widths of its cells; those of amounts before and from the decimal point on.
    struct Place {
        Column column;
        std::size_t natural = 0;
        std::size_t whole = 0;
        std::size_t fraction = 0;
        std::size_t width = 0;
        bool isShown = false;
    };

    std::size_t total() const noexcept;
    void setNaturalWidths();
    bool narrow();
    bool dropOne();
    std::string leftOut() const;
    std::string cell(const Place& place, const std::string& text, bool hasColour) const;

    std::vector<Place> places_;
};

}  // namespace tool
