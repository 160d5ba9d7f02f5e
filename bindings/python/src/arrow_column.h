// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "arrow_interface.h"
#include "cell.h"

namespace brackwell::python {

/// How a column's values are laid out in Arrow.
struct ArrowType {
    Kind kind;
    int scale = 0;  ///< of amounts: digits after the point

    /// Arrow's format string, such as "d:38,10".
    std::string format() const;
};

/// A column that is being filled: values in the layout of Arrow.
class ArrowColumn {
public:
    ArrowColumn(ArrowType type, std::size_t rows);

    /// Appends a value of the column's kind, or a null. False when it does not fit.
    bool append(const Cell& cell);

    /// Hands the values over; what is written is released by its owner.
    void moveTo(ArrowArray* array) &&;

private:
    struct Appender;
    struct Buffers {
        std::vector<std::uint8_t> validity;  ///< a bit for each row
        std::vector<std::uint8_t> bytes;     ///< values, or bits of flags
        std::vector<std::int32_t> offsets;   ///< of texts
        std::string text;                    ///< all texts of the column, one after the other
        std::vector<const void*> pointers;
    };
    bool appendText(std::string_view text);
    bool appendAmount(const Decimal& number);
    template <class Value>
    bool appendValue(Value value);
    void appendNull();
    void appendBit(std::vector<std::uint8_t>& bits, bool bit) const;

    ArrowType type_;
    std::size_t length_ = 0;
    std::int64_t nulls_ = 0;
    Buffers buffers_;
};

/// The digits after the point that a number needs.
int fractionDigitsOf(const Decimal& number);

}  // namespace brackwell::python
