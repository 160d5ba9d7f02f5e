// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

/// A column that is being filled: values in the layout of Arrow. What is appended has to be of the column's
/// kind; false means that it does not fit, and the column ends there.
class ArrowColumn {
public:
    /// For at most so many rows.
    ArrowColumn(ArrowType type, std::size_t rows);

    bool append(const Cell& cell);
    bool appendText(std::string_view text);
    bool appendAmount(const Decimal& number);
    bool appendDay(std::chrono::year_month_day day);
    bool appendMoment(Date moment);
    bool appendInteger(std::int64_t number);
    bool appendFlag(bool flag);
    bool appendNull() { return appendNulls(1); }
    bool appendNulls(std::size_t count);
    std::size_t length() const { return length_; }

    /// Hands the values over; what is written is released by its owner.
    void moveTo(ArrowArray* array) &&;

private:
    struct Appender;
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    /// Zeros at first. Memory that is not written is mostly none: the system hands out pages when they are.
    using Zeros = std::unique_ptr<std::byte, Free>;
    struct Buffers {
        Zeros validity;  ///< a bit for each row
        Zeros
            values;  ///< of a fixed width, or bits of flags; where each text begins, and where the last ends
        std::string text;  ///< all texts of the column, one after the other
        std::vector<const void*> pointers;
    };
    static Zeros zeros(std::size_t size);
    template <class Value>
    bool store(std::size_t place, Value value);
    bool finishValue();

    ArrowType type_;
    std::size_t length_ = 0;
    std::int64_t nulls_ = 0;
    Buffers buffers_;
};

/// The digits after the point that a number needs.
int fractionDigitsOf(const Decimal& number);

}  // namespace brackwell::python
