// SPDX-License-Identifier: Apache-2.0
#include "arrow_column.h"

#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace brackwell::python {
namespace {

__extension__ using Wide = unsigned __int128;

/// The powers of ten that a coefficient of 38 digits may be multiplied with.
constexpr auto kPowers = [] {
    std::array<Wide, Decimal::maximumDigits + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// For each power the largest coefficient that has no more than 38 digits afterwards.
constexpr auto kLargest = [] {
    auto largest = kPowers;
    for (std::size_t i = 0; i < largest.size(); ++i) largest[i] = (kPowers.back() - 1) / kPowers[i];
    return largest;
}();

/// Bytes for each row; 0 for flags, which have a bit.
std::size_t widthOf(Kind kind) {
    switch (kind) {
        case Kind::amount:
            return 16;
        case Kind::moment:
        case Kind::integer:
            return 8;
        case Kind::flag:
            return 0;
        default:
            return 4;
    }
}

bool isTextual(Kind kind) { return kind == Kind::text || kind == Kind::word; }

void setBit(std::byte* bits, std::size_t index) { bits[index / 8] |= std::byte{1} << (index % 8); }

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

ArrowColumn::Zeros ArrowColumn::zeros(std::size_t size) {
    Zeros made(static_cast<std::byte*>(std::calloc(size, 1)));
    if (!made) throw std::bad_alloc();
    return made;
}

ArrowColumn::ArrowColumn(ArrowType type, std::size_t rows) : type_(type) {
    const std::size_t bytesOfBits = rows / 8 + 1;
    const std::size_t width = widthOf(type.kind);
    buffers_.validity = zeros(bytesOfBits);
    // Texts have one place more, for the end of the last.
    buffers_.values = zeros(width == 0 ? bytesOfBits : (rows + 1) * width);
}

template <class Value>
bool ArrowColumn::store(std::size_t place, Value value) {
    std::memcpy(buffers_.values.get() + place * sizeof value, &value, sizeof value);
    return true;
}

/// After the value of a row was stored.
bool ArrowColumn::finishValue() {
    setBit(buffers_.validity.get(), length_);
    ++length_;
    return true;
}

bool ArrowColumn::appendNulls(std::size_t count) {
    nulls_ += static_cast<std::int64_t>(count);
    if (!isTextual(type_.kind) || buffers_.text.empty()) {
        length_ += count;
        return true;
    }
    const auto end = static_cast<std::int32_t>(buffers_.text.size());
    for (; count != 0; --count) store(++length_, end);
    return true;
}

bool ArrowColumn::appendText(std::string_view text) {
    if (buffers_.text.size() + text.size() > std::numeric_limits<std::int32_t>::max()) return false;
    buffers_.text += text;
    store(length_ + 1, static_cast<std::int32_t>(buffers_.text.size()));
    return finishValue();
}

bool ArrowColumn::appendAmount(const Decimal& number) {
    Wide value = (Wide{number.coefficientHigh()} << 64) | number.coefficientLow();
    if (value != 0) {
        const int shift = type_.scale + number.exponent();
        if (shift < 0 || shift > Decimal::maximumDigits) return false;
        const auto power = static_cast<std::size_t>(shift);
        if (value > kLargest[power]) return false;
        value *= kPowers[power];
    }
    // Two's complement, as Arrow has it.
    store(length_, number.isNegative() ? ~value + 1 : value);
    return finishValue();
}

bool ArrowColumn::appendDay(std::chrono::year_month_day day) {
    store(length_, static_cast<std::int32_t>(std::chrono::sys_days(day).time_since_epoch().count()));
    return finishValue();
}

bool ArrowColumn::appendMoment(Date moment) {
    store(length_, std::int64_t{moment.time_since_epoch().count()});
    return finishValue();
}

bool ArrowColumn::appendInteger(std::int64_t number) {
    store(length_, number);
    return finishValue();
}

bool ArrowColumn::appendFlag(bool flag) {
    if (flag) setBit(buffers_.values.get(), length_);
    return finishValue();
}

struct ArrowColumn::Appender {
    ArrowColumn& column;
    bool operator()(std::monostate) const { return column.appendNull(); }
    bool operator()(std::string_view text) const { return column.appendText(text); }
    bool operator()(const std::string& text) const { return column.appendText(text); }
    bool operator()(const Word& word) const { return column.appendText(word.name); }
    bool operator()(const Decimal& number) const { return column.appendAmount(number); }
    bool operator()(Date moment) const { return column.appendMoment(moment); }
    bool operator()(std::int64_t number) const { return column.appendInteger(number); }
    bool operator()(std::chrono::year_month_day day) const { return column.appendDay(day); }
    bool operator()(bool flag) const { return column.appendFlag(flag); }
};

bool ArrowColumn::append(const Cell& cell) { return std::visit(Appender{*this}, cell); }

void ArrowColumn::moveTo(ArrowArray* array) && {
    auto owned = std::make_unique<Buffers>(std::move(buffers_));
    owned->pointers.push_back(nulls_ == 0 ? nullptr : owned->validity.get());
    owned->pointers.push_back(owned->values.get());
    if (isTextual(type_.kind)) owned->pointers.push_back(owned->text.data());
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
