// SPDX-License-Identifier: Apache-2.0
#include "arrow_column.h"

#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

namespace brackwell::python {
namespace {

__extension__ using Wide = unsigned __int128;

/// The largest coefficient of 38 digits.
constexpr Wide largestCoefficient() {
    Wide value = 1;
    for (int i = 0; i < Decimal::maximumDigits; ++i) value *= 10;
    return value - 1;
}

/// What has one byte for every eight rows, and what has a fixed width.
std::size_t widthOf(Kind kind) {
    switch (kind) {
        case Kind::amount:
            return 16;
        case Kind::day:
            return 4;
        case Kind::moment:
        case Kind::integer:
            return 8;
        default:
            return 0;
    }
}

bool isTextual(Kind kind) { return kind == Kind::text || kind == Kind::word; }

}  // namespace

std::string ArrowType::format() const {
    switch (kind) {
        case Kind::amount:
            return "d:38," + std::to_string(scale);
        case Kind::day:
            return "tdD";
        case Kind::moment:
            return "tsm:UTC";
        case Kind::flag:
            return "b";
        case Kind::integer:
            return "l";
        default:
            return "u";
    }
}

int fractionDigitsOf(const Decimal& number) { return number.exponent() < 0 ? -number.exponent() : 0; }

ArrowColumn::ArrowColumn(ArrowType type, std::size_t rows) : type_(type) {
    buffers_.validity.reserve(rows / 8 + 1);
    buffers_.bytes.reserve(rows * widthOf(type.kind));
    if (!isTextual(type.kind)) return;
    buffers_.offsets.reserve(rows + 1);
    buffers_.offsets.push_back(0);
}

void ArrowColumn::appendBit(std::vector<std::uint8_t>& bits, bool bit) const {
    if (length_ % 8 == 0) bits.push_back(0);
    if (bit) bits.back() = static_cast<std::uint8_t>(bits.back() | (1U << (length_ % 8)));
}

template <class Value>
bool ArrowColumn::appendValue(Value value) {
    const std::size_t size = buffers_.bytes.size();
    buffers_.bytes.resize(size + sizeof value);
    std::memcpy(buffers_.bytes.data() + size, &value, sizeof value);
    return true;
}

bool ArrowColumn::appendText(std::string_view text) {
    if (buffers_.text.size() + text.size() > std::numeric_limits<std::int32_t>::max()) return false;
    buffers_.text += text;
    buffers_.offsets.push_back(static_cast<std::int32_t>(buffers_.text.size()));
    return true;
}

bool ArrowColumn::appendAmount(const Decimal& number) {
    constexpr Wide limit = largestCoefficient();
    Wide value = (Wide{number.coefficientHigh()} << 64) | number.coefficientLow();
    const int shift = type_.scale + number.exponent();
    if (value != 0 && shift < 0) return false;
    for (int i = 0; value != 0 && i < shift; ++i) {
        if (value > limit / 10) return false;
        value *= 10;
    }
    // Two's complement, as Arrow has it.
    return appendValue(number.isNegative() ? ~value + 1 : value);
}

void ArrowColumn::appendNull() {
    ++nulls_;
    if (isTextual(type_.kind)) buffers_.offsets.push_back(buffers_.offsets.back());
    if (type_.kind == Kind::flag) appendBit(buffers_.bytes, false);
    buffers_.bytes.resize(buffers_.bytes.size() + widthOf(type_.kind));
}

struct ArrowColumn::Appender {
    ArrowColumn& column;
    bool operator()(std::monostate) const {
        column.appendNull();
        return true;
    }
    bool operator()(std::string_view text) const { return column.appendText(text); }
    bool operator()(const std::string& text) const { return column.appendText(text); }
    bool operator()(const Word& word) const { return column.appendText(word.name); }
    bool operator()(const Decimal& number) const { return column.appendAmount(number); }
    bool operator()(Date moment) const {
        return column.appendValue(std::int64_t{moment.time_since_epoch().count()});
    }
    bool operator()(std::int64_t number) const { return column.appendValue(number); }
    bool operator()(std::chrono::year_month_day day) const {
        const auto days = std::chrono::sys_days(day).time_since_epoch().count();
        return column.appendValue(static_cast<std::int32_t>(days));
    }
    bool operator()(bool flag) const {
        column.appendBit(column.buffers_.bytes, flag);
        return true;
    }
};

bool ArrowColumn::append(const Cell& cell) {
    appendBit(buffers_.validity, !std::holds_alternative<std::monostate>(cell));
    if (!std::visit(Appender{*this}, cell)) return false;
    ++length_;
    return true;
}

void ArrowColumn::moveTo(ArrowArray* array) && {
    auto owned = std::make_unique<Buffers>(std::move(buffers_));
    // A buffer must have an address, also where it is empty.
    static const std::uint64_t nothing = 0;
    const auto address = [](const auto& bytes) -> const void* {
        if (bytes.empty()) return &nothing;
        return bytes.data();
    };
    owned->pointers.push_back(nulls_ == 0 ? nullptr : address(owned->validity));
    if (isTextual(type_.kind)) {
        owned->pointers.push_back(address(owned->offsets));
        owned->pointers.push_back(address(owned->text));
    } else {
        owned->pointers.push_back(address(owned->bytes));
    }
    *array = ArrowArray{};
    array->length = static_cast<std::int64_t>(length_);
    array->null_count = nulls_;
    array->n_buffers = static_cast<std::int64_t>(owned->pointers.size());
    array->buffers = owned->pointers.data();
    array->private_data = owned.release();
    array->release = [](ArrowArray* released) {
        delete static_cast<Buffers*>(released->private_data);
        released->release = nullptr;
    };
}

}  // namespace brackwell::python
